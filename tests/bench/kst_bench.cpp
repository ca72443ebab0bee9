// Throughput of the code-set conversions of every family, each beside iconv(3) on the same text.

#include <benchmark/benchmark.h>
#include <filesystem>
#include <iconv.h>
#include <string>
#include <vector>

#include "codeset/kst.h"

namespace
{

struct Text {
    const char* family;
    const char* table;
    const char* iconvName;
    const char* sentence; // UTF-8, of the script that the code set is for
};

constexpr const char* kLatin = "Größe des Gerätes: überprüft, Länge 40 µm, Preis 12 £ für den Käufer. ";
constexpr const char* kJapanese = "日本語の文字列を変換する。ファイルシステム /dev/sda1 の空き容量。";
constexpr const char* kChinese = "简体中文系统信息报告：处理器、内存、磁盘分区 /dev/sda1。";
constexpr const char* kAscii = "Intel(R) Xeon(R) CPU E5-2670 v3 @ 2.30GHz, 16384 kB, /dev/sda1 on / type ext4. ";

constexpr Text kTexts[] = {
    {"AsciiSbcs", "ISO88591", "ISO-8859-1", kLatin},
    {"AsciiDbcs", "GBK", "GBK", kChinese},
    {"AsciiDbcs", "SHIFTJIS", "SHIFT_JIS", kJapanese},
    {"AsciiMbcs", "EUCJP", "EUC-JP", kJapanese},
    {"Gb18030", "GB18030", "GB18030", "简体中文系统信息报告：处理器、内存 /dev/sda1。Größe øß 𠀀𠀁 "},
    {"EbcdicSbcs", "IBM500", "IBM500", kLatin},
    {"EbcdicDbcs", "IBM939", "IBM939", kJapanese},
    {"Utf8", "UTF8", "UTF-8", kJapanese},
    {"AsciiText", "ISO88591", "ISO-8859-1", kAscii},
    {"AsciiText", "GB18030", "GB18030", kAscii},
    {"AsciiText", "UTF8", "UTF-8", kAscii},
};

enum class Direction { ToUtf8, FromUtf8, ToUcs2, FromUcs2 };

constexpr const char* kDirectionNames[] = {"to_utf8", "from_utf8", "to_ucs2", "from_ucs2"};

std::string convertWithIconv(const char* to, const char* from, const std::string& text)
{
    const iconv_t descriptor = iconv_open(to, from);
    std::string out(text.size() * 4 + 16, '\0');
    char* src = const_cast<char*>(text.data());
    char* dst = out.data();
    size_t left = text.size();
    size_t room = out.size();
    iconv(descriptor, &src, &left, &dst, &room);
    iconv(descriptor, nullptr, nullptr, &dst, &room);
    iconv_close(descriptor);
    out.resize(out.size() - room);
    return out;
}

// The text of 64 KiB that a direction starts from.
std::string inputOf(const Text& text, Direction direction)
{
    std::string utf8;
    while (utf8.size() < 65536)
        utf8 += text.sentence;
    switch (direction) {
    case Direction::ToUtf8:
    case Direction::ToUcs2:
        return convertWithIconv(text.iconvName, "UTF-8", utf8);
    case Direction::FromUcs2:
        return convertWithIconv("UTF-16LE", "UTF-8", utf8);
    case Direction::FromUtf8:
        break;
    }
    return utf8;
}

void setUpTables()
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    setenv("BINDIR", program.parent_path().c_str(), 1);
}

void convertWithKst(benchmark::State& state, const Text& text, Direction direction)
{
    setUpTables();
    const kst_handle handle = kst_cs_new(text.table);
    const std::string input = inputOf(text, direction);
    const long length = static_cast<long>(input.size());
    const kst_wchar* wide = reinterpret_cast<const kst_wchar*>(input.data());
    std::vector<kst_wchar> buffer(input.size() * 3);
    char* bytes = reinterpret_cast<char*>(buffer.data());
    const size_t room = buffer.size() * sizeof(kst_wchar);
    for (auto _ : state) {
        size_t written = 0;
        switch (direction) {
        case Direction::ToUtf8:
            written = kst_to_utf8(handle, input.data(), length, bytes, room);
            break;
        case Direction::FromUtf8:
            written = kst_from_utf8(handle, input.data(), length, bytes, room);
            break;
        case Direction::ToUcs2:
            written = kst_to_ucs2(handle, input.data(), length, buffer.data(), buffer.size());
            break;
        case Direction::FromUcs2:
            written = kst_from_ucs2(handle, wide, length / 2, bytes, room);
            break;
        }
        benchmark::DoNotOptimize(written);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * length);
    kst_cs_free(handle);
}

void convertWithIconvRepeatedly(benchmark::State& state, const Text& text, Direction direction)
{
    std::string input = inputOf(text, direction);
    const bool toCodeSet = direction == Direction::FromUtf8 || direction == Direction::FromUcs2;
    const bool ucs2 = direction == Direction::ToUcs2 || direction == Direction::FromUcs2;
    const char* const unicode = ucs2 ? "UTF-16LE" : "UTF-8"; // its UCS-2 stops at characters above U+FFFF
    const iconv_t descriptor = toCodeSet ? iconv_open(text.iconvName, unicode) : iconv_open(unicode, text.iconvName);
    std::vector<char> buffer(input.size() * 6);
    for (auto _ : state) {
        char* src = input.data();
        char* dst = buffer.data();
        size_t left = input.size();
        size_t room = buffer.size();
        benchmark::DoNotOptimize(iconv(descriptor, &src, &left, &dst, &room));
        benchmark::DoNotOptimize(iconv(descriptor, nullptr, nullptr, &dst, &room));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(input.size()));
    iconv_close(descriptor);
}

// One name for each pair, so that they stand side by side: codeset/<family>/<table>/<direction>/<kst or iconv>.
const bool kRegistered = [] {
    for (const Text& text : kTexts) {
        for (const Direction direction :
             {Direction::ToUtf8, Direction::FromUtf8, Direction::ToUcs2, Direction::FromUcs2}) {
            const std::string name = std::string("codeset/") + text.family + "/" + text.table + "/" +
                                     kDirectionNames[static_cast<int>(direction)];
            benchmark::RegisterBenchmark((name + "/kst").c_str(), convertWithKst, text, direction);
            benchmark::RegisterBenchmark((name + "/iconv").c_str(), convertWithIconvRepeatedly, text, direction);
        }
    }
    return true;
}();

} // namespace
