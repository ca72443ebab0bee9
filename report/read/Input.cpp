#include "report/read/Input.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "report/TemporaryFile.h"

namespace report
{
namespace
{
bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(written < 0 ? 0 : static_cast<size_t>(written));
    }
    return true;
}
} // namespace

Input::Input(std::string_view text) : text_(text), rest_(text), isAtEnd_(true) {}

Input::~Input()
{
    if (isOwned_)
        close(descriptor_);
}

std::unique_ptr<Input> Input::open(const std::string& path, std::string& reason)
{
    if (path == "-")
        return std::unique_ptr<Input>(new Input(STDIN_FILENO, false));
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor == -1) {
        reason = strerror(errno);
        return nullptr;
    }
    return std::unique_ptr<Input>(new Input(descriptor, true));
}

// Reads one block behind what is there, which moves to the front. False at the end.
bool Input::fill()
{
    if (isAtEnd_)
        return false;
    buffer_.resize(2 * kBlock);
    if (!rest_.empty())
        memmove(buffer_.data(), rest_.data(), rest_.size());
    ssize_t got = 0;
    do {
        got = read(descriptor_, buffer_.data() + rest_.size(), kBlock);
    } while (got < 0 && errno == EINTR);
    if (got < 0)
        error_ = errno;
    isAtEnd_ = got <= 0;
    rest_ = {buffer_.data(), rest_.size() + static_cast<size_t>(std::max<ssize_t>(got, 0))};
    return !isAtEnd_;
}

std::string_view Input::peek(size_t least)
{
    while (rest_.size() < std::min(least, kBlock) && fill()) {
    }
    return rest_;
}

void Input::skip(size_t bytes)
{
    rest_.remove_prefix(bytes);
    hasSkipped_ = hasSkipped_ || bytes > 0;
}

bool Input::copyToFile()
{
    if (hasSkipped_) {
        errno = ESPIPE;
        return false;
    }
    const int copy = temporaryFile();
    if (copy == -1)
        return false;
    bool isCopied = true;
    while (isCopied && !peek().empty()) {
        isCopied = writeAll(copy, rest_);
        rest_ = {};
    }
    if (isOwned_)
        close(descriptor_);
    descriptor_ = copy;
    isOwned_ = true;
    return isCopied && error_ == 0;
}

bool Input::keep()
{
    return descriptor_ == -1 || lseek(descriptor_, 0, SEEK_CUR) != -1 || (copyToFile() && rewind());
}

bool Input::rewind()
{
    if (descriptor_ == -1) {
        rest_ = text_;
        return true;
    }
    const bool isFile = lseek(descriptor_, 0, SEEK_CUR) != -1;
    if ((!isFile && !copyToFile()) || lseek(descriptor_, 0, SEEK_SET) == -1)
        return false;
    rest_ = {};
    isAtEnd_ = false;
    hasSkipped_ = false;
    return true;
}
} // namespace report
