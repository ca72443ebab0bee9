#pragma once

#include <memory>

/// The bytes of a structure table, with zeros round them: a record may start at any byte of the table and claim 255
/// bytes, and its fields, the string behind them and that string's end still lie in the buffer. The very last byte is
/// not 0, so that a search for the next byte that is not 0 ends.
class TableBuffer
{
public:
    TableBuffer() = default;
    /// length is at least 0 and at most kMaxLength.
    explicit TableBuffer(int length);

    /// More than any firmware's table: entry points declare up to 0xFFFF bytes.
    static constexpr int kMaxLength = 0x1000000;

    /// The first byte of the table; null when there is none.
    unsigned char* bytes() { return bytes_ == nullptr ? nullptr : bytes_.get() + kBefore; }
    const unsigned char* bytes() const { return bytes_ == nullptr ? nullptr : bytes_.get() + kBefore; }

private:
    static constexpr int kBefore = 16; // the trace of a walk shows the bytes before a structure
    static constexpr int kBehind = 1024;

    std::unique_ptr<unsigned char[]> bytes_;
};
