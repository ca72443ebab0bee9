#include "com/md5file.h"

#include <bit>
#include <cstdlib>
#include <cstring>

namespace
{

// RFC 1321, 3.4: the table T, 2^32 * |sin(i)| for i from 1 to 64.
constexpr uint32_t kSines[64] = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

// The rotations of the four rounds, each repeated four times.
constexpr int kRotations[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};

// Mixes one 64-byte block into the state (RFC 1321, 3.4).
void addBlock(uint32_t state[4], const unsigned char* block)
{
    uint32_t words[16];
    for (size_t i = 0; i < 16; ++i)
        words[i] = static_cast<uint32_t>(block[4 * i]) | static_cast<uint32_t>(block[4 * i + 1]) << 8 |
                   static_cast<uint32_t>(block[4 * i + 2]) << 16 | static_cast<uint32_t>(block[4 * i + 3]) << 24;
    uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    for (unsigned i = 0; i < 64; ++i) {
        uint32_t mixed;
        unsigned word;
        switch (i / 16) {
        case 0:
            mixed = (b & c) | (~b & d);
            word = i;
            break;
        case 1:
            mixed = (b & d) | (c & ~d);
            word = 5 * i + 1;
            break;
        case 2:
            mixed = b ^ c ^ d;
            word = 3 * i + 5;
            break;
        default:
            mixed = c ^ (b | ~d);
            word = 7 * i;
        }
        const uint32_t rotated = std::rotl(a + mixed + kSines[i] + words[word % 16], kRotations[i / 16][i % 4]);
        a = d;
        d = c;
        c = b;
        b += rotated;
    }
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
}

} // namespace

void md5file_clear(md5file_context* context)
{
    *context = {{0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476}, 0, {}};
}

void md5file_addn(md5file_context* context, const void* bytes, size_t count)
{
    const auto* next = static_cast<const unsigned char*>(bytes);
    while (count > 0) {
        const size_t used = context->length % sizeof context->block;
        const size_t room = sizeof context->block - used;
        const size_t taken = count < room ? count : room;
        memcpy(context->block + used, next, taken);
        context->length += taken;
        next += taken;
        count -= taken;
        if (taken == room)
            addBlock(context->state, context->block);
    }
}

void md5file_add(md5file_context* context, const char* text)
{
    md5file_addn(context, text, strlen(text));
}

void md5file_hash(md5file_context* context, unsigned char digest[16])
{
    // RFC 1321, 3.1 and 3.2: one 1 bit, 0 bits up to 8 bytes before a block's end, the length in bits.
    const uint64_t bits = context->length * 8;
    static constexpr unsigned char padding[64] = {0x80};
    const size_t used = context->length % 64;
    md5file_addn(context, padding, used < 56 ? 56 - used : 120 - used);
    unsigned char lengthBytes[8];
    for (int i = 0; i < 8; ++i)
        lengthBytes[i] = static_cast<unsigned char>(bits >> (8 * i));
    md5file_addn(context, lengthBytes, sizeof lengthBytes);
    for (int i = 0; i < 16; ++i)
        digest[i] = static_cast<unsigned char>(context->state[i / 4] >> (8 * (i % 4)));
}

void md5file_sprint_hash(md5file_context* context, char* out)
{
    static constexpr char kHexDigits[] = "0123456789abcdef";
    unsigned char digest[16];
    md5file_hash(context, digest);
    for (unsigned char byte : digest) {
        *out++ = kHexDigits[byte >> 4];
        *out++ = kHexDigits[byte & 15];
    }
    *out = '\0';
}

char* md5_checksum(const char* text)
{
    if (text == nullptr || *text == '\0')
        return nullptr;
    auto* digest = static_cast<char*>(malloc(36));
    if (digest == nullptr)
        return nullptr;
    md5file_context context;
    md5file_clear(&context);
    md5file_add(&context, text);
    md5file_sprint_hash(&context, digest);
    return digest;
}
