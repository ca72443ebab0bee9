#include "host/root/BoundedRead.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace host
{
static constexpr size_t kFirstPiece = 4096 + 1; // an attribute of a page, and room to see its end

// Drivers let this one out, which is the kernel's own and has no text.
static constexpr int kKernelNotSupported = 524;

static ssize_t readSome(int file, char* bytes, size_t size)
{
    ssize_t got;
    do
        got = read(file, bytes, size);
    while (got < 0 && errno == EINTR);
    return got;
}

// Bytes for the first piece: a file of a true size is read in one go, one of a false size costs at most limit.
static size_t firstPiece(int file, size_t limit)
{
    struct stat status;
    const bool told = fstat(file, &status) == 0 && status.st_size > 0;
    const size_t size =
        told ? static_cast<size_t>(std::min<uint64_t>(static_cast<uint64_t>(status.st_size), limit)) : 0;
    return std::min(std::max(size + 1, kFirstPiece), limit + 1);
}

Answer<std::string> readBounded(int file, size_t limit)
{
    Answer<std::string> answer;
    std::string& bytes = answer.value;
    size_t size = 0;
    bytes.resize(firstPiece(file, limit));
    while (size <= limit) {
        if (size == bytes.size())
            bytes.resize(std::min(2 * size, limit + 1));
        const ssize_t got = readSome(file, bytes.data() + size, bytes.size() - size);
        if (got < 0)
            return Answer<std::string>::failed(errno == kKernelNotSupported ? EOPNOTSUPP : errno);
        if (got == 0)
            break;
        size += static_cast<size_t>(got);
    }
    answer.isCut = size > limit;
    bytes.resize(std::min(size, limit));
    return answer;
}

namespace
{
// Cuts a stream of pieces into lines.
class LineChooser
{
public:
    LineChooser(const LineChoice& isWanted, const LineLimits& limits) : isWanted_(isWanted), limits_(limits) {}

    void add(std::string_view piece)
    {
        while (!piece.empty()) {
            const size_t end = piece.find('\n');
            const std::string_view text = piece.substr(0, end);
            if (end == std::string_view::npos)
                return append(text);
            if (line_.empty() && !isTooLong_) {
                take(text); // whole in this piece, as nearly all are: nothing is copied
            } else {
                append(text);
                finishLine();
            }
            piece.remove_prefix(end + 1);
        }
    }
    void finishLine()
    {
        if (!isTooLong_)
            take(line_);
        line_.clear();
        isTooLong_ = false;
    }
    bool hasLine() const { return !line_.empty(); }
    bool isFull() const { return isFull_; }
    std::vector<std::string> chosen() { return std::move(chosen_); }

private:
    void append(std::string_view text)
    {
        isTooLong_ = isTooLong_ || line_.size() + text.size() > limits_.line;
        if (!isTooLong_)
            line_ += text;
    }
    void take(std::string_view line)
    {
        if (line.size() > limits_.line || !isWanted_(line))
            return;
        isFull_ = isFull_ || chosenBytes_ + line.size() > limits_.chosen;
        if (isFull_)
            return;
        chosenBytes_ += line.size() + sizeof(std::string);
        chosen_.emplace_back(line);
    }

    const LineChoice& isWanted_;
    const LineLimits& limits_;
    std::string line_;
    bool isTooLong_ = false;
    bool isFull_ = false;
    size_t chosenBytes_ = 0;
    std::vector<std::string> chosen_;
};
} // namespace

Answer<std::vector<std::string>> chooseLines(int file, const LineChoice& isWanted, const LineLimits& limits)
{
    LineChooser chooser(isWanted, limits);
    std::vector<char> piece(size_t{64} * 1024);
    size_t size = 0;
    ssize_t got = 1;
    while (size < limits.file && !chooser.isFull() && (got = readSome(file, piece.data(), piece.size())) > 0) {
        size += static_cast<size_t>(got);
        chooser.add({piece.data(), static_cast<size_t>(got)});
    }
    if (got < 0)
        return Answer<std::vector<std::string>>::failed(errno);
    if (chooser.hasLine() && got == 0)
        chooser.finishLine();
    const bool isCut = chooser.isFull() || got > 0;
    return {0, chooser.chosen(), isCut};
}
} // namespace host
