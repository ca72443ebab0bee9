// Any bytes as a table file: opening and converting in all directions reads nothing outside of it, and what is written
// as UTF-8 is UTF-8.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "codeset/kst.h"

// Bytes of every kind behind each other, and characters of every plane.
static std::string codeSetText()
{
    std::string text;
    for (unsigned first = 0; first < 256; ++first)
        for (const unsigned second : {0x0Eu, 0x31u, 0x40u, 0xA1u, 0xFEu})
            text += {static_cast<char>(first), static_cast<char>(second), '\x81', static_cast<char>(0x30 + first % 10)};
    return text;
}

static std::u16string unicodeText()
{
    std::u16string text;
    for (unsigned c = 0; c < 0x10000; c += c < 0x500 ? 1 : 0x55)
        text += static_cast<char16_t>(c);
    return text;
}

static void expectUtf8(const std::string& text)
{
    const kst_handle utf8 = kst_cs_new("UTF8");
    std::vector<char> out(text.size() + 1);
    kst_to_utf8(utf8, text.data(), static_cast<long>(text.size()), out.data(), out.size());
    if (kst_get_subst_count(utf8) != 0)
        abort();
    kst_cs_free(utf8);
}

static void convertAll(kst_handle handle)
{
    static const std::string text = codeSetText();
    static const std::u16string unicode = unicodeText();
    std::vector<char16_t> wide(text.size());
    std::vector<char> out(text.size() * 4);
    const auto length = static_cast<long>(text.size());
    kst_to_ucs2(handle, text.data(), length, wide.data(), wide.size());
    const size_t written = kst_to_utf8(handle, text.data(), length, out.data(), out.size());
    const std::string utf8(out.data(), written);
    kst_from_utf8(handle, utf8.data(), static_cast<long>(utf8.size()), out.data(), out.size());
    kst_from_ucs2(handle, unicode.data(), static_cast<long>(unicode.size()), out.data(), out.size());
    // Families without a converter pass their bytes through, whatever they are.
    const auto* table = static_cast<const unsigned char*>(kst_cs_table(handle));
    const int family = table[48] | table[49] << 8;
    const bool ebcdic = table[50] == 0 && table[51] == 0x11;
    const bool converts = ebcdic || (family >= 1 && family <= 4) || family == 6 || family == 8 || family == 10;
    if (converts)
        expectUtf8(utf8);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    unsetenv("BINDIR");
    const int file = memfd_create("table", 0);
    if (file == -1 || write(file, data, size) != static_cast<ssize_t>(size))
        abort();
    const kst_handle handle = kst_cs_new(("/proc/self/fd/" + std::to_string(file)).c_str());
    if (handle != nullptr)
        convertAll(handle);
    kst_cs_free(handle);
    close(file);
    return 0;
}
