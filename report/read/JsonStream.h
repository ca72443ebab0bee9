#pragma once

#include <cstdint>
#include <streambuf>

#include "report/read/Input.h"

namespace report
{
/// An input as a JSON parser takes it, which knows its line, and ends when the parser has taken more bytes than the
/// bound since the last mark: a text without end stays no longer in memory.
class JsonStream : public std::streambuf
{
public:
    /// Nothing is owned.
    explicit JsonStream(Input& input) : input_(input) {}

    /// The line of the byte that was taken last.
    uint64_t line();
    /// A value was taken whole.
    void mark()
    {
        sinceMark_ = 0;
        begin_ = gptr();
    }
    /// Whether the bound ended the stream.
    bool isTooLong() const { return isTooLong_; }
    /// Whether all bytes were taken.
    bool isAtEnd() const { return isAtEnd_; }

protected:
    int_type underflow() override;

private:
    Input& input_;
    const char* counted_ = nullptr; // lines before here are in line_
    const char* begin_ = nullptr;   // of the bytes of this block since the last mark
    uint64_t line_ = 1;
    size_t sinceMark_ = 0; // in blocks before
    bool isTooLong_ = false;
    bool isAtEnd_ = false;
};
} // namespace report
