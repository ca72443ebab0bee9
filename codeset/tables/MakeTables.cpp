// Writes the shipped table files from what the C library's iconv converts:
//   MakeTables <folder>
// Code sets that this C library does not have are named on standard error and left out.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "codeset/tables/ForwardArrays.h"

using namespace TableLayout;

// The code of a character as the reverse arrays hold it; 0 for none. One-byte families hold one byte: what the C
// library writes as letter and accent is none there.
static uint32_t codeOf(const ShippedCodeSet& codeSet, std::string bytes)
{
    const bool single = codeSet.family == Family::AsciiSbcs || codeSet.family == Family::EbcdicSbcs;
    const bool shifted = codeSet.family == Family::EbcdicDbcs && bytes.size() == 4;
    if (shifted)
        bytes = bytes.substr(1, 2);
    const size_t longest = single ? 1 : reverseCodeSize(codeSet.family);
    if (bytes.size() > longest)
        return 0;
    uint32_t code = 0;
    for (const char byte : bytes)
        code = code << 8 | static_cast<unsigned char>(byte);
    return code;
}

// Multi-byte code sets reach the second supplementary plane; GB18030 computes what is above U+FFFF.
static uint32_t codePointEnd(Family family)
{
    return family == Family::AsciiMbcs ? 0x30000 : 0x10000;
}

template <class Code>
static void addReverseArrays(TableImage& table, const ShippedCodeSet& codeSet, IconvCodec& codec)
{
    RowSet<Code> rows;
    std::vector<uint16_t> index;
    for (uint32_t start = 0; start < codePointEnd(codeSet.family); start += kReverseRowCodes) {
        std::vector<Code> row;
        bool any = false;
        for (uint32_t codePoint = start; codePoint < start + kReverseRowCodes; ++codePoint) {
            row.push_back(static_cast<Code>(codeOf(codeSet, codec.encode(codePoint))));
            any = any || row.back() != 0;
        }
        index.push_back(any ? static_cast<uint16_t>(rows.add(row)) : kNoValue);
    }
    table.put32(kReverseIndexOffset, static_cast<uint32_t>(table.append(index)));
    table.put32(kReverseIndexCount, static_cast<uint32_t>(index.size()));
    table.put32(kReverseRowsOffset, static_cast<uint32_t>(table.append(rows.words())));
    table.put32(kReverseRowsCount, rows.count());
}

static void addHeader(TableImage& table, const ShippedCodeSet& codeSet)
{
    const bool ebcdic = codeSet.family == Family::EbcdicSbcs || codeSet.family == Family::EbcdicDbcs;
    table.putText(kMagicOffset, std::string(kMagic, sizeof kMagic));
    table.putText(kNameOffset, std::string(codeSet.table).substr(0, kNameSize - 1));
    table.put16(kFamilyOffset, static_cast<unsigned>(codeSet.family));
    table.put16(kMarkerOffset, codeSet.family == Family::EbcdicSbcs ? kEbcdicSbcsMarker : 0u);
    table.put8(kSubstitutionOffset, 1);
    table.put8(kSubstitutionOffset + 1, ebcdic ? kEbcdicSubstitution : kAsciiSubstitution);
    if (codeSet.family == Family::EbcdicDbcs) {
        const size_t offset = kSubstitutionOffset + kSubstitutionSize;
        table.put8(offset, sizeof kEbcdicDoubleSubstitution);
        for (size_t i = 0; i < sizeof kEbcdicDoubleSubstitution; ++i)
            table.put8(offset + 1 + i, kEbcdicDoubleSubstitution[i]);
    }
}

static bool writeFile(const std::string& folder, const char* name, const std::string& contents)
{
    std::ofstream file(folder + "/" + name, std::ios::binary);
    file << contents;
    file.close();
    if (!file)
        fprintf(stderr, "%s/%s: cannot be written\n", folder.c_str(), name);
    return static_cast<bool>(file);
}

static bool writeTable(const std::string& folder, const ShippedCodeSet& codeSet)
{
    IconvCodec codec(codeSet.iconvName);
    if (!codec.isKnown()) {
        fprintf(stderr, "iconv has no %s: the table %s is left out\n", codeSet.iconvName, codeSet.table);
        return true;
    }
    TableImage table;
    addHeader(table, codeSet);
    addForwardArrays(table, codeSet.family, codec);
    if (reverseCodeSize(codeSet.family) == 4)
        addReverseArrays<uint32_t>(table, codeSet, codec);
    else
        addReverseArrays<uint16_t>(table, codeSet, codec);
    return writeFile(folder, codeSet.table, table.bytes());
}

int main(int count, char** arguments)
{
    if (count != 2) {
        fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return EXIT_FAILURE;
    }
    const std::string folder = arguments[1];
    bool written = true;
    for (const ShippedCodeSet& codeSet : kShippedCodeSets)
        written = writeTable(folder, codeSet) && written;
    for (const CodeSetAlias& redirect : kRedirects)
        written = writeFile(folder, redirect.name, std::string(redirect.table) + "\n") && written;
    std::string aliases = "# Other names of code sets: name, table. Names are upper-case letters and digits.\n";
    for (const CodeSetAlias& alias : kAliases)
        aliases += std::string(alias.name) + " " + alias.table + "\n";
    written = writeFile(folder, "aliases", aliases) && written;
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
