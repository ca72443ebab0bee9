// Throughput of the code-set conversions of every family, each beside iconv(3) on the same text: a sentence that is
// repeated, and random text, which no branch prediction can learn. codesets.py makes a table of their ratios.

#include <benchmark/benchmark.h>
#include <filesystem>
#include <iconv.h>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "codeset/kst.h"

namespace
{

struct CodeSet {
    const char* family;
    const char* table;
    const char* iconvName;
    const char* sentence; // UTF-8, of the script that the code set is for
};

constexpr const char* kLatin = "Größe des Gerätes: überprüft, Länge 40 µm, Preis 12 £ für den Käufer. ";
constexpr const char* kJapanese = "日本語の文字列を変換する。ファイルシステム /dev/sda1 の空き容量。";
constexpr const char* kChinese = "简体中文系统信息报告：处理器、内存、磁盘分区 /dev/sda1。";

constexpr CodeSet kCodeSets[] = {
    {"AsciiSbcs", "ISO88591", "ISO-8859-1", kLatin},
    {"AsciiDbcs", "GBK", "GBK", kChinese},
    {"AsciiDbcs", "SHIFTJIS", "SHIFT_JIS", kJapanese},
    {"AsciiMbcs", "EUCJP", "EUC-JP", kJapanese},
    {"Gb18030", "GB18030", "GB18030", "简体中文系统信息报告：处理器、内存 /dev/sda1。Größe øß 𠀀𠀁 "},
    {"EbcdicSbcs", "IBM500", "IBM500", kLatin},
    {"EbcdicDbcs", "IBM930", "IBM930", kJapanese},
    {"EbcdicDbcs", "IBM939", "IBM939", kJapanese},
    {"Utf8", "UTF8", "UTF-8", kJapanese},
};

enum class Text { Sentence, Ascii, Foreign, Mixed };

constexpr const char* kTextNames[] = {"sentence", "ascii", "foreign", "mixed"};

constexpr size_t kTextSize = 65536;

enum class Direction { ToUtf8, FromUtf8, ToUcs2, FromUcs2 };

constexpr const char* kDirectionNames[] = {"to_utf8", "from_utf8", "to_ucs2", "from_ucs2"};

/// A conversion by iconv of whole texts.
class Iconv
{
public:
    Iconv(const char* to, const char* from) : descriptor(iconv_open(to, from)) {}
    ~Iconv() { iconv_close(descriptor); }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    std::string convert(const std::string& text) const
    {
        std::string out(text.size() * 4 + 16, '\0');
        char* src = const_cast<char*>(text.data());
        char* dst = out.data();
        size_t left = text.size();
        size_t room = out.size();
        iconv(descriptor, nullptr, nullptr, nullptr, nullptr);
        iconv(descriptor, &src, &left, &dst, &room);
        iconv(descriptor, nullptr, nullptr, &dst, &room);
        out.resize(out.size() - room);
        return out;
    }

private:
    const iconv_t descriptor;
};

// The characters beyond ASCII that the code set has and that come back as themselves. (iconv stops at others.)
std::vector<std::string> foreignCharacters(const CodeSet& codeSet)
{
    const Iconv fromUcs2("UTF-8", "UTF-16LE");
    const Iconv there(codeSet.iconvName, "UTF-8");
    const Iconv back("UTF-8", codeSet.iconvName);
    std::vector<std::string> characters;
    for (unsigned c = 0x80; c < 0xFFFE; ++c) {
        if (c >= 0xD800 && c < 0xE000)
            continue;
        const std::string ucs2 = {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
        const std::string utf8 = fromUcs2.convert(ucs2);
        if (back.convert(there.convert(utf8)) == utf8)
            characters.push_back(utf8);
    }
    return characters;
}

// The same text in every run: the engine's numbers are fixed by the standard.
std::string randomText(const CodeSet& codeSet, Text kind)
{
    constexpr std::string_view kAscii =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 .,:;/()-+*%&<>=?";
    const std::vector<std::string> foreign = foreignCharacters(codeSet);
    std::mt19937 engine(20260101);
    std::string text;
    while (text.size() < kTextSize) {
        if (kind == Text::Foreign || (kind == Text::Mixed && engine() % 2 == 0))
            text += foreign[engine() % foreign.size()];
        else
            text += kAscii[engine() % kAscii.size()];
    }
    return text;
}

std::string repeatedSentence(const CodeSet& codeSet)
{
    std::string text;
    while (text.size() < kTextSize)
        text += codeSet.sentence;
    return text;
}

// The text of 64 KiB in UTF-8. Made once, since every turn of a benchmark asks for it.
const std::string& textOf(const CodeSet& codeSet, Text kind)
{
    static std::map<std::pair<const CodeSet*, Text>, std::string> texts;
    std::string& text = texts[{&codeSet, kind}];
    if (text.empty())
        text = kind == Text::Sentence ? repeatedSentence(codeSet) : randomText(codeSet, kind);
    return text;
}

// The same text as a direction takes it.
std::string inputOf(const CodeSet& codeSet, Text kind, Direction direction)
{
    const std::string& utf8 = textOf(codeSet, kind);
    switch (direction) {
    case Direction::ToUtf8:
    case Direction::ToUcs2:
        return Iconv(codeSet.iconvName, "UTF-8").convert(utf8);
    case Direction::FromUcs2:
        return Iconv("UTF-16LE", "UTF-8").convert(utf8);
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

void convertWithKst(benchmark::State& state, const CodeSet* codeSet, Text kind, Direction direction)
{
    setUpTables();
    const kst_handle handle = kst_cs_new(codeSet->table);
    const std::string input = inputOf(*codeSet, kind, direction);
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

void convertWithIconvRepeatedly(benchmark::State& state, const CodeSet* codeSet, Text kind, Direction direction)
{
    std::string input = inputOf(*codeSet, kind, direction);
    const bool toCodeSet = direction == Direction::FromUtf8 || direction == Direction::FromUcs2;
    const bool ucs2 = direction == Direction::ToUcs2 || direction == Direction::FromUcs2;
    const char* const unicode = ucs2 ? "UTF-16LE" : "UTF-8"; // its UCS-2 stops at characters above U+FFFF
    const iconv_t descriptor =
        toCodeSet ? iconv_open(codeSet->iconvName, unicode) : iconv_open(unicode, codeSet->iconvName);
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

// One name for each pair, so that they stand side by side: codeset/<family>/<table>/<text>/<direction>/<kst or iconv>.
const bool kRegistered = [] {
    for (const CodeSet& codeSet : kCodeSets) {
        for (const Text kind : {Text::Sentence, Text::Ascii, Text::Foreign, Text::Mixed}) {
            for (const Direction direction :
                 {Direction::ToUtf8, Direction::FromUtf8, Direction::ToUcs2, Direction::FromUcs2}) {
                const std::string name = std::string("codeset/") + codeSet.family + "/" + codeSet.table + "/" +
                                         kTextNames[static_cast<int>(kind)] + "/" +
                                         kDirectionNames[static_cast<int>(direction)];
                benchmark::RegisterBenchmark((name + "/kst").c_str(), convertWithKst, &codeSet, kind, direction);
                benchmark::RegisterBenchmark((name + "/iconv").c_str(), convertWithIconvRepeatedly, &codeSet, kind,
                                             direction);
            }
        }
    }
    return true;
}();

} // namespace
