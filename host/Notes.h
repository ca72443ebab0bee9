#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host
{
/// What went otherwise than hoped while a group was collected: told as the group's Reason in Scan Status. At most
/// kMost notes are kept, each once; the rest are counted.
class Notes
{
public:
    static constexpr size_t kMost = 8;

    /// A file or call that exists and failed: "PATH: Input/output error". What was not allowed (EACCES, EPERM) is a
    /// refusal.
    void failed(std::string_view what, int error);

    /// Anything else that cost facts: "PATH: longer than 65536 bytes", "/sys/block: more than 65536 names".
    void note(std::string text);

    /// A source that was there, whatever it said: tells Empty from No Source.
    void found() { found_ = true; }

    bool wasRefused() const { return refused_; }
    bool wasFound() const { return found_; }

    /// All notes in one line, separated by "; "; empty without notes.
    std::string text() const;

private:
    std::vector<std::string> notes_;
    size_t more_ = 0;
    bool refused_ = false;
    bool found_ = false;
};
} // namespace host
