#include "codeset/CodeTable.h"

#include <cstring>

#include "codeset/EbcdicTables.h"

using namespace TableLayout;

// The check of every array that a header announces; 64 bits, so that no sum wraps.
static bool liesWithin(const CodeTable& table, uint64_t offset, uint64_t count, uint64_t entrySize)
{
    return offset <= table.size && count <= (table.size - offset) / entrySize;
}

// Rows of two-byte characters may lie anywhere and share their parts; what is outside the file is unmapped.
static void resolveDbcsRows(CodeTable& table)
{
    const uint64_t area = load32(table.at(kMappingAreaOffset));
    for (size_t lead = 0; lead < table.rowOffsets.size(); ++lead) {
        const uint32_t row = load16(table.at(kRowsOffset + 2 * lead));
        const uint64_t offset = area + uint64_t{row} * kDbcsRowUnit;
        table.rowOffsets[lead] = offset < table.size ? static_cast<uint32_t>(offset) : table.size;
    }
}

// Writes out what every single byte is, so that no text needs to ask whether a byte is looked up at all.
static void expandSingleBytes(CodeTable& table)
{
    const bool ascii = table.family == Family::AsciiSbcs;
    const bool invariant = table.family == Family::EbcdicDbcs; // the characters that all EBCDIC pages share
    const size_t values = invariant ? table.rowOffsets[0] : kRowsOffset;
    table.linear.resize(256);
    for (unsigned byte = 0; byte < table.linear.size(); ++byte) {
        uint16_t& value = table.linear[byte];
        if (ascii && byte < 0x80)
            value = static_cast<uint16_t>(byte);
        else if (invariant && invar_eb_to_ucs[byte] != 0)
            value = def_eb_to_ucs[byte];
        else
            value = load16(table.at(values + 2 * size_t{byte}));
    }
}

static bool checkMbcsRow(const CodeTable& table, uint32_t row, unsigned trailBytes)
{
    const uint32_t area = load32(table.at(kMappingAreaOffset));
    if (!liesWithin(table, area, uint64_t{row} + 1, kMbcsRowSize))
        return false;
    if (trailBytes == 1)
        return true;
    const unsigned char* entries = table.at(area + kMbcsRowSize * row);
    for (size_t offset = 0; offset < kMbcsRowSize; offset += 4) {
        const uint32_t next = load32(entries + offset);
        if (next != kMbcsNone && !checkMbcsRow(table, next, trailBytes - 1))
            return false;
    }
    return true;
}

// The rows of the lead bytes, and row 0 for the characters of one byte. Lead bytes are 0x80 and above.
static bool resolveMbcsRows(CodeTable& table)
{
    const uint32_t area = load32(table.at(kMappingAreaOffset));
    if (area > table.size)
        return false;
    for (size_t lead = 0; lead < table.rowOffsets.size(); ++lead) {
        const uint16_t row = load16(table.at(kRowsOffset + 2 * lead));
        const unsigned char length = *table.at(kClassesOffset + lead);
        table.rowOffsets[lead] = table.size;
        if (row == kNoValue || (lead != 0 && (lead < 0x80 || length < kClassLead2 || length > kMaxCodeLength)))
            continue;
        if (!checkMbcsRow(table, row, lead == 0 ? 1 : length - 1u))
            return false;
        table.rowOffsets[lead] = static_cast<uint32_t>(area + kMbcsRowSize * row);
    }
    return true;
}

// The 16-bit array behind the sub-header of a GB18030 table.
struct GbArray {
    const unsigned char* words;
    size_t count;
    uint32_t ranges;
    uint32_t buckets;
    uint32_t values;

    bool has(uint64_t index, uint64_t wanted) const { return index <= count && wanted <= count - index; }
    uint16_t word(uint64_t index) const { return has(index, 1) ? load16(words + 2 * index) : kNoValue; }
};

static uint16_t valueOfRange(const GbArray& array, uint64_t range, uint32_t index)
{
    const uint32_t steps = index - array.word(range);
    const uint16_t kind = array.word(range + 2);
    const uint16_t parameter = array.word(range + 3);
    if (kind == kGbKindOffset)
        return static_cast<uint16_t>(parameter + steps);
    return kind == kGbKindValues ? array.word(uint64_t{array.values} + parameter + steps) : kNoValue;
}

// A look-up that gives "?" counts as one that gives nothing: in this family every character that ends as "?" is
// replaced.
static uint16_t knownValue(uint16_t value)
{
    return value == '?' ? kNoValue : value;
}

// Every index of one bucket. A range that one index has passed is passed by all later ones, so one walk serves all.
// Where it leaves the file, nothing more is mapped.
static void expandBucket(const GbArray& array, uint32_t bucket, std::vector<uint16_t>& linear)
{
    uint64_t range = array.ranges + uint64_t{array.word(uint64_t{array.buckets} + bucket)} * kGbRangeWords;
    const uint32_t first = bucket << kGbBucketShift;
    for (uint32_t index = first; index < first + (1u << kGbBucketShift) && index < kGbIndexEnd; ++index) {
        while (array.has(range, kGbRangeWords) && index >= array.word(range) && index > array.word(range + 1))
            range += kGbRangeWords;
        if (!array.has(range, kGbRangeWords))
            return;
        if (index >= array.word(range))
            linear[index] = knownValue(valueOfRange(array, range, index));
    }
}

// Writes the range lists out once, so that a look-up is one read.
static bool expandGb18030(CodeTable& table)
{
    const size_t subHeader = load16(table.at(kGbSubHeaderOffset));
    if (!liesWithin(table, subHeader, 1, kGbSubHeaderSize))
        return false;
    const size_t start = subHeader + kGbSubHeaderSize;
    const GbArray array = {table.at(start), (table.size - start) / 2, load32(table.at(subHeader + kGbRangesBase)),
                           load32(table.at(subHeader + kGbBucketsBase)), load32(table.at(subHeader + kGbValuesBase))};
    table.linear.assign(kGbIndexEnd + 1, kNoValue);
    for (uint32_t bucket = 0; bucket < kGbBucketCount; ++bucket)
        expandBucket(array, bucket, table.linear);
    return true;
}

// A table that others made may hold anything where ours have their reverse arrays: what is none of them is left alone,
// and the table converts towards Unicode.
static void resolveReverse(CodeTable& table)
{
    const uint32_t index = load32(table.at(kReverseIndexOffset));
    if (index == 0)
        return;
    const uint32_t indexCount = load32(table.at(kReverseIndexCount));
    const uint32_t rows = load32(table.at(kReverseRowsOffset));
    const uint32_t rowCount = load32(table.at(kReverseRowsCount));
    const size_t rowSize = kReverseRowCodes * reverseCodeSize(table.family);
    if (indexCount > kMaxReverseRows || !liesWithin(table, index, indexCount, 2) ||
        !liesWithin(table, rows, rowCount, rowSize))
        return;
    for (uint32_t i = 0; i < indexCount; ++i) {
        const uint16_t row = load16(table.at(index + 2 * size_t{i}));
        if (row != kNoValue && row >= rowCount)
            return;
    }
    table.reverse.index = index;
    table.reverse.indexCount = indexCount;
    table.reverse.rows = rows;
}

// The row of ASCII and Latin-1 in a copy behind the file, in which ASCII is ASCII whatever stands in the file.
static void copyFirstReverseRow(CodeTable& table)
{
    const uint32_t copy = static_cast<uint32_t>(table.bytes.size());
    table.bytes.resize(copy + kReverseRowCodes * 2);
    memcpy(&table.bytes[copy], table.at(table.reverse.rowOffsets[0]), kReverseRowCodes * 2);
    for (uint8_t c = 0; c < 0x80; ++c) {
        table.bytes[copy + 2 * c] = c;
        table.bytes[copy + 2 * c + 1] = 0;
    }
    table.reverse.rowOffsets[0] = copy;
}

static void resolveReverseRows(CodeTable& table)
{
    ReverseMap& reverse = table.reverse;
    reverse.emptyRow = static_cast<uint32_t>(table.bytes.size());
    table.bytes.resize(table.bytes.size() + kReverseRowCodes * sizeof(uint32_t), 0);
    const bool wide = reverseCodeSize(table.family) == 4;
    for (uint32_t high = 0; high < reverse.rowOffsets.size(); ++high)
        reverse.rowOffsets[high] =
            wide ? reverse.rowOffset<uint32_t>(table.at(0), high) : reverse.rowOffset<uint16_t>(table.at(0), high);
    if (table.family == Family::AsciiSbcs)
        copyFirstReverseRow(table);
    if (table.family != Family::EbcdicSbcs && table.family != Family::EbcdicDbcs)
        return;
    for (uint32_t c = 0; c < table.asciiCodes.size(); ++c) {
        const uint32_t code = reverse.find<uint16_t>(table.at(0), c);
        table.asciiCodes[c] = static_cast<unsigned char>(code < 0x100 ? code : 0);
    }
}

static bool resolveForward(CodeTable& table)
{
    switch (table.family) {
    case Family::AsciiDbcs:
        resolveDbcsRows(table);
        return true;
    case Family::EbcdicDbcs:
        resolveDbcsRows(table);
        expandSingleBytes(table);
        return true;
    case Family::AsciiMbcs:
        return resolveMbcsRows(table);
    case Family::Gb18030:
        return expandGb18030(table);
    case Family::AsciiSbcs:
    case Family::EbcdicSbcs:
        expandSingleBytes(table);
        return true;
    default:
        return true; // built in, or bytes pass through
    }
}

bool isTable(const std::vector<unsigned char>& file)
{
    return file.size() >= kMinSize && memcmp(file.data() + kMagicOffset, kMagic, sizeof kMagic) == 0;
}

std::shared_ptr<const CodeTable> parseTable(std::vector<unsigned char> file)
{
    if (!isTable(file) || file.size() > kMaxSize)
        return nullptr;
    const auto table = std::make_shared<CodeTable>();
    table->size = static_cast<uint32_t>(file.size());
    table->bytes = std::move(file);
    table->bytes.resize(table->size + kDbcsRowSize, 0xFF);
    const bool ebcdic = load16(table->at(kMarkerOffset)) == kEbcdicSbcsMarker;
    table->family = ebcdic ? Family::EbcdicSbcs : static_cast<Family>(load16(table->at(kFamilyOffset)));
    if (!resolveForward(*table))
        return nullptr;
    resolveReverse(*table);
    resolveReverseRows(*table);
    return table;
}
