// What needs no table: the pass-through of the families that have no converter, and ASCII alone.

#include "codeset/TableText.h"

namespace
{

// Every byte is a character of its own, with the same number; those of limit and above are unknown.
template <uint32_t kLimit>
struct ByteReader {
    using Unit = unsigned char;
    static constexpr bool kAscii = true;
    static constexpr size_t kLongest = 1;
    static constexpr bool kSteady = true;
    explicit ByteReader(const kst_code_set&) {}
    Decoded read(const Unit* in, const Unit*) const { return {*in < kLimit ? *in : kUnmapped, 1}; }
};

struct SameByte {
    explicit SameByte(const kst_code_set&) {}
    uint32_t find(uint32_t c) const { return c < 0x100 ? c : 0; }
};

// Bytes as they are, whatever characters they are part of.
using ByteWriter = TableWriter<SameByte, 1>;

constexpr auto os_to_utf8_r = convert<ByteReader<0x100>, ByteWriter>;
constexpr auto os_from_utf8_r = os_to_utf8_r;
constexpr auto os_to_ucs2_r = convert<ByteReader<0x100>, Ucs2Writer>;
constexpr auto os_from_ucs2_r = convert<Ucs2Reader, ByteWriter>;

constexpr auto ascii_to_utf8_r = convert<ByteReader<0x80>, ByteWriter>;
constexpr auto ascii_to_ucs2_r = convert<ByteReader<0x80>, Ucs2Writer>;

struct NoneAboveAscii {
    explicit NoneAboveAscii(const kst_code_set&) {}
    uint32_t find(uint32_t c) const { return c < 0x80 ? c : 0; }
};

constexpr auto ascii_from_ucs2_r = convert<Ucs2Reader, TableWriter<NoneAboveAscii, 1>>;

} // namespace

const ConverterFamily kOsPassThrough = {os_to_utf8_r, os_from_utf8_r, os_to_ucs2_r, os_from_ucs2_r};
// From UTF-8 every byte of an unknown character is replaced, as to UTF-8.
const ConverterFamily kAsciiOnly = {ascii_to_utf8_r, ascii_to_utf8_r, ascii_to_ucs2_r, ascii_from_ucs2_r};
