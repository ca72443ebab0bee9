#include "preload/MemoryImage.h"

#include <algorithm>
#include <cstring>

namespace fakemachine
{

static void storeLittle(std::string& bytes, size_t offset, uint64_t value, size_t width)
{
    if (bytes.size() < offset + width)
        bytes.resize(offset + width, '\0');
    for (size_t i = 0; i < width; ++i)
        bytes[offset + i] = static_cast<char>(value >> (8 * i));
}

// The bytes of "byte", "word", "dword" and "qword"; 0 for another directive.
static size_t widthOf(const std::string& directive)
{
    static const std::map<std::string, size_t> kWidths = {{"byte", 1}, {"word", 2}, {"dword", 4}, {"qword", 8}};
    const auto found = kWidths.find(directive);
    return found == kWidths.end() ? 0 : found->second;
}

MemoryImage::MemoryImage(const std::string& text, const std::string& name)
{
    LinePlace place{name, 0};
    for (const std::string& line : splitLines(text)) {
        ++place.number;
        const std::vector<Word> words = splitWords(line, place);
        if (words.empty())
            continue;
        if (inStructure_)
            parseStructureLine(words, place);
        else
            parseLine(words, place);
    }
    if (inStructure_)
        fail(place, "structure without its closing }");
    addEntries();
    if (!stretches_.empty())
        size_ = std::max(size_, stretches_.rbegin()->first + stretches_.rbegin()->second.size());
}

void MemoryImage::put(const std::string& bytes)
{
    stretches_[position_] = bytes;
    position_ += bytes.size();
}

static const Word& wordAt(const std::vector<Word>& words, size_t index, const LinePlace& place)
{
    if (index >= words.size())
        fail(place, "word missing after " + words[0].text);
    return words[index];
}

void MemoryImage::parseLine(const std::vector<Word>& words, const LinePlace& place)
{
    const std::string& directive = words[0].text;
    if (directive == "size") {
        size_ = parseNumber(wordAt(words, 1, place).text, place);
    } else if (directive == "at") {
        position_ = parseNumber(wordAt(words, 1, place).text, place);
    } else if (directive == "bytes") {
        put(parseBytes(words, 1, place));
    } else if (const size_t width = widthOf(directive); width != 0) {
        std::string bytes;
        for (size_t i = 1; i < words.size(); ++i)
            storeLittle(bytes, bytes.size(), parseNumber(words[i].text, place), width);
        put(bytes);
    } else if (directive == "structures") {
        tableStart_ = position_ = parseNumber(wordAt(words, 2, place).text, place);
        nextHandle_ = 0;
        tables_[tableStart_] = {};
    } else if (directive == "struct") {
        beginStructure(words, place);
    } else if (directive == "smbios-entry") {
        entries_.emplace_back(words, place);
    } else {
        fail(place, "unknown directive " + directive);
    }
}

void MemoryImage::beginStructure(const std::vector<Word>& words, const LinePlace& place)
{
    structure_ = {};
    structure_.handle = nextHandle_;
    size_t i = 1;
    for (; i < words.size() && words[i].text != "{"; i += 2) {
        const std::string& key = words[i].text;
        const uint64_t value = parseNumber(wordAt(words, i + 1, place).text, place);
        if (key == "type")
            structure_.type = static_cast<unsigned>(value);
        else if (key == "length")
            structure_.length = value;
        else if (key == "length-byte")
            structure_.lengthByte = static_cast<int>(value);
        else if (key == "handle")
            structure_.handle = static_cast<unsigned>(value);
        else if (key == "repeat")
            structure_.repeat = static_cast<unsigned>(value);
        else
            fail(place, "unknown word " + key + " in struct");
    }
    if (i >= words.size())
        fail(place, "struct without {");
    inStructure_ = true;
    nextHandle_ = structure_.handle + structure_.repeat;
    storeLittle(structure_.formatted, 0, structure_.type, 2);
    storeLittle(structure_.formatted, 2, structure_.handle, 2);
    parseStructureLine({words.begin() + static_cast<std::ptrdiff_t>(i) + 1, words.end()}, place);
}

void MemoryImage::parseStructureLine(const std::vector<Word>& words, const LinePlace& place)
{
    for (size_t i = 0; i < words.size();) {
        const std::string directive = words[i++].text;
        if (directive == "}") {
            endStructure();
        } else if (directive == "at") {
            structure_.offset = parseNumber(wordAt(words, i++, place).text, place);
        } else if (directive == "strings") {
            for (; i < words.size() && words[i].quoted; ++i)
                structure_.strings += words[i].text + '\0';
        } else if (directive == "bytes") {
            const std::string bytes = parseBytes(words, i, place);
            if (structure_.formatted.size() < structure_.offset + bytes.size())
                structure_.formatted.resize(structure_.offset + bytes.size(), '\0');
            structure_.formatted.replace(structure_.offset, bytes.size(), bytes);
            structure_.offset += bytes.size();
            return;
        } else if (const size_t width = widthOf(directive); width != 0) {
            storeLittle(structure_.formatted, structure_.offset, parseNumber(wordAt(words, i++, place).text, place),
                        width);
            structure_.offset += width;
        } else {
            fail(place, "unknown directive " + directive + " in struct");
        }
    }
}

void MemoryImage::endStructure()
{
    inStructure_ = false;
    Structure& s = structure_;
    if (s.length != 0)
        s.formatted.resize(s.length, '\0');
    if (s.formatted.size() > 1)
        s.formatted[1] = static_cast<char>(s.lengthByte >= 0 ? s.lengthByte : static_cast<int>(s.formatted.size()));
    const std::string end(s.strings.empty() ? 2 : 1, '\0');
    for (unsigned i = 0; i < s.repeat; ++i) {
        storeLittle(s.formatted, 2, s.handle + i, 2);
        put(s.formatted + s.strings + end);
    }
    Table& table = tables_[tableStart_];
    table.length = position_ - tableStart_;
    table.count += s.repeat;
}

// Makes the byte at offset such that count bytes from first on sum up to 0, or one more when the sum is to be wrong.
static void setChecksum(std::string& bytes, size_t first, size_t count, size_t offset, bool wrong)
{
    unsigned sum = wrong ? 1 : 0;
    bytes[offset] = '\0';
    for (size_t i = first; i < first + count && i < bytes.size(); ++i)
        sum += static_cast<unsigned char>(bytes[i]);
    bytes[offset] = static_cast<char>(0x100 - (sum & 0xFF));
}

// The entry point of 2.x: "_SM_" with the "_DMI_" part that begins at its byte 16.
void MemoryImage::parseEntry(const std::vector<Word>& words, const LinePlace& place)
{
    std::map<std::string, std::string> values;
    for (size_t i = 1; i + 1 < words.size(); i += 2)
        values[words[i].text] = words[i + 1].text;
    const auto number = [&](const char* key, uint64_t fallback) {
        return values.count(key) != 0 ? parseNumber(values[key], place) : fallback;
    };
    const std::string version = values.count("version") != 0 ? values["version"] : "2.3";
    const size_t dot = version.find('.');
    if (values.count("at") == 0 || values.count("table") == 0 || dot == std::string::npos)
        fail(place, "smbios-entry needs: at ADDRESS table ADDRESS [version MAJOR.MINOR]");
    const uint64_t address = number("table", 0);
    const Table table = tables_.count(address) != 0 ? tables_[address] : Table{};
    const uint64_t entryLength = number("entry-length", 0x1F);
    std::string bytes("_SM_");
    bytes.resize(32, '\0');
    storeLittle(bytes, 5, entryLength, 1);
    storeLittle(bytes, 6, parseNumber(version.substr(0, dot), place), 1);
    storeLittle(bytes, 7, parseNumber(version.substr(dot + 1), place), 1);
    storeLittle(bytes, 8, number("max", 0xFF), 2);
    bytes.replace(16, 5, "_DMI_");
    storeLittle(bytes, 22, number("length", table.length), 2);
    storeLittle(bytes, 24, address, 4);
    storeLittle(bytes, 28, number("count", table.count), 2);
    storeLittle(bytes, 30, number("bcd", 0x23), 1);
    setChecksum(bytes, 16, 15, 21, values["intermediate-checksum"] == "bad");
    setChecksum(bytes, 0, entryLength, 4, values["checksum"] == "bad");
    if (values.count("anchor") != 0)
        bytes.replace(0, 4, (values["anchor"] + "    ").substr(0, 4));
    position_ = number("at", 0);
    put(bytes);
}

void MemoryImage::addEntries()
{
    for (const auto& [words, place] : entries_)
        parseEntry(words, place);
}

size_t MemoryImage::read(uint64_t address, void* out, size_t count) const
{
    if (address >= size_)
        return 0;
    count = static_cast<size_t>(std::min<uint64_t>(count, size_ - address));
    memset(out, 0, count);
    for (const auto& [start, bytes] : stretches_) {
        const uint64_t from = std::max(start, address);
        const uint64_t to = std::min(start + bytes.size(), address + count);
        if (from < to)
            memcpy(static_cast<char*>(out) + (from - address), bytes.data() + (from - start), to - from);
    }
    return count;
}

} // namespace fakemachine
