#include "codeset/kst.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "codeset/CodeSet.h"

namespace
{

// The code set of a handle. Without any the text is taken for ASCII, and what gets lost is counted nowhere.
kst_code_set& codeSetBehind(kst_handle handle)
{
    static kst_code_set asciiOnly;
    asciiOnly.converters = &kAsciiOnly;
    kst_code_set* const resolved = resolveHandle(handle);
    return resolved != nullptr ? *resolved : asciiOnly;
}

size_t lengthOf(const char* text)
{
    return strlen(text);
}

size_t lengthOf(const kst_wchar* text)
{
    return kst_wcslen(text);
}

const unsigned char* units(const char* text)
{
    return reinterpret_cast<const unsigned char*>(text);
}

const kst_wchar* units(const kst_wchar* text)
{
    return text;
}

unsigned char* units(char* text)
{
    return reinterpret_cast<unsigned char*>(text);
}

kst_wchar* units(kst_wchar* text)
{
    return text;
}

// One conversion from the initial shift state back to it.
template <class In, class Out, class Text, class Buffer>
size_t convertWhole(Converter<In, Out> ConverterFamily::*direction, kst_handle handle, const Text* src, long srcLen,
                    Buffer* dst, size_t dstLen)
{
    if (dstLen == 0)
        return 0;
    kst_code_set& codeSet = codeSetBehind(handle);
    const Converter<In, Out> converter = codeSet.converters->*direction;
    const bool terminated = srcLen < 0;
    const size_t length = src == nullptr ? 0 : terminated ? lengthOf(src) : static_cast<size_t>(srcLen);
    const In* in = units(src);
    Out* out = units(dst);
    Out* const outEnd = out + dstLen - terminated;
    codeSet.shiftState = 0;
    converter(codeSet, in, in + length, out, outEnd);
    in = nullptr;
    converter(codeSet, in, in, out, outEnd);
    codeSet.shiftState = 0;
    if (terminated)
        *out++ = 0;
    return static_cast<size_t>(out - units(dst));
}

template <class In, class Out, class Text, class Buffer>
int convertPart(Converter<In, Out> ConverterFamily::*direction, kst_handle handle, const Text** src, size_t* srcLeft,
                Buffer** dst, size_t* dstLeft)
{
    kst_code_set& codeSet = codeSetBehind(handle);
    const bool ends = src == nullptr || *src == nullptr;
    Out* const outStart = dst == nullptr ? nullptr : units(*dst);
    const In* const inStart = ends ? nullptr : units(*src);
    const In* in = inStart;
    Out* out = outStart;
    const In* const inEnd = ends ? nullptr : in + *srcLeft;
    Out* const outEnd = outStart == nullptr ? nullptr : out + *dstLeft;
    const int result = (codeSet.converters->*direction)(codeSet, in, inEnd, out, outEnd);
    if (!ends) {
        *src += in - inStart;
        *srcLeft -= static_cast<size_t>(in - inStart);
    }
    if (outStart != nullptr) {
        *dst += out - outStart;
        *dstLeft -= static_cast<size_t>(out - outStart);
    }
    return result;
}

using BytesToBytes = int (*)(kst_handle, const char**, size_t*, char**, size_t*);

// Doubles the buffer; false, the buffer freed, when there is no memory for that.
bool grow(char*& text, size_t& capacity)
{
    char* const larger = capacity > SIZE_MAX / 2 ? nullptr : static_cast<char*>(realloc(text, capacity * 2));
    if (larger == nullptr)
        free(text);
    text = larger;
    capacity *= 2;
    return larger != nullptr;
}

// Converts with a buffer that grows as long as the next character does not fit. One byte stays for the terminator.
char* convertToNew(BytesToBytes converter, kst_handle handle, const char* src, long srcLen, size_t* length)
{
    static constexpr size_t kSpare = 16;
    size_t left = src == nullptr ? 0 : srcLen < 0 ? strlen(src) : static_cast<size_t>(srcLen);
    size_t capacity = left + kSpare;
    auto* text = static_cast<char*>(malloc(capacity));
    if (text == nullptr)
        return nullptr;
    codeSetBehind(handle).shiftState = 0;
    char* dst = text;
    size_t room = capacity - 1;
    while (src != nullptr && converter(handle, &src, &left, &dst, &room) == KST_OUTPUT_FULL) {
        const auto used = static_cast<size_t>(dst - text);
        if (!grow(text, capacity))
            return nullptr;
        dst = text + used;
        room = capacity - used - 1;
    }
    converter(handle, nullptr, nullptr, &dst, &room);
    codeSetBehind(handle).shiftState = 0;
    *dst = '\0';
    if (length != nullptr)
        *length = static_cast<size_t>(dst - text);
    return text;
}

} // namespace

size_t kst_to_utf8(kst_handle handle, const char* src, long srcLen, char* dst, size_t dstLen)
{
    return convertWhole(&ConverterFamily::toUtf8, handle, src, srcLen, dst, dstLen);
}

size_t kst_from_utf8(kst_handle handle, const char* src, long srcLen, char* dst, size_t dstLen)
{
    return convertWhole(&ConverterFamily::fromUtf8, handle, src, srcLen, dst, dstLen);
}

size_t kst_to_ucs2(kst_handle handle, const char* src, long srcLen, kst_wchar* dst, size_t dstLen)
{
    return convertWhole(&ConverterFamily::toUcs2, handle, src, srcLen, dst, dstLen);
}

size_t kst_from_ucs2(kst_handle handle, const kst_wchar* src, long srcLen, char* dst, size_t dstLen)
{
    return convertWhole(&ConverterFamily::fromUcs2, handle, src, srcLen, dst, dstLen);
}

int kst_to_utf8_r(kst_handle handle, const char** src, size_t* srcLeft, char** dst, size_t* dstLeft)
{
    return convertPart(&ConverterFamily::toUtf8, handle, src, srcLeft, dst, dstLeft);
}

int kst_from_utf8_r(kst_handle handle, const char** src, size_t* srcLeft, char** dst, size_t* dstLeft)
{
    return convertPart(&ConverterFamily::fromUtf8, handle, src, srcLeft, dst, dstLeft);
}

int kst_to_ucs2_r(kst_handle handle, const char** src, size_t* srcLeft, kst_wchar** dst, size_t* dstLeft)
{
    return convertPart(&ConverterFamily::toUcs2, handle, src, srcLeft, dst, dstLeft);
}

int kst_from_ucs2_r(kst_handle handle, const kst_wchar** src, size_t* srcLeft, char** dst, size_t* dstLeft)
{
    return convertPart(&ConverterFamily::fromUcs2, handle, src, srcLeft, dst, dstLeft);
}

char* kst_tou_alloc(kst_handle handle, const char* src, long srcLen, size_t* length)
{
    return convertToNew(kst_to_utf8_r, handle, src, srcLen, length);
}

char* kst_fromu_alloc(kst_handle handle, const char* src, long srcLen, size_t* length)
{
    return convertToNew(kst_from_utf8_r, handle, src, srcLen, length);
}

void kst_free(void* text)
{
    free(text);
}
