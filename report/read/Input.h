#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace report
{
/// The bytes of a file or of standard input, in blocks of bounded size. Owns its descriptor.
class Input
{
public:
    /// A text in memory, which must live as long as the input.
    explicit Input(std::string_view text);
    ~Input();
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// Opens a file, or standard input for "-". Null, with the system's reason, when it cannot be read.
    static std::unique_ptr<Input> open(const std::string& path, std::string& reason);

    /// The bytes that follow, at least so many unless the input ends before; they live until the next call of a
    /// function that is not const. A number above kBlock counts as kBlock.
    std::string_view peek(size_t least = 1);

    /// Goes over the first bytes of what peek gave.
    void skip(size_t bytes);

    /// Back to the first byte. What is no file is copied into a temporary one first, which works as long as no byte of
    /// it was skipped. False, with errno, when it cannot be done.
    bool rewind();

    /// Makes sure that rewind() works however many bytes are skipped before. False, with errno, when it cannot.
    bool keep();

    /// The error number of a read that failed; the input then ends there. 0 when none did.
    int error() const { return error_; }

    static constexpr size_t kBlock = size_t{64} * 1024;

private:
    Input(int descriptor, bool isOwned) : descriptor_(descriptor), isOwned_(isOwned) {}
    bool fill();
    bool copyToFile();

    int descriptor_ = -1; // -1 for a text in memory
    bool isOwned_ = false;
    std::string_view text_; // of a text in memory: all of it
    std::string_view rest_; // bytes that were read and not skipped
    std::vector<char> buffer_;
    bool isAtEnd_ = false;
    bool hasSkipped_ = false;
    int error_ = 0;
};
} // namespace report
