#include "codeset/tables/ForwardArrays.h"

#include <array>

#include "codeset/Gb18030Numbers.h"

using namespace TableLayout;

static std::string bytesOf(std::initializer_list<unsigned> numbers)
{
    std::string bytes;
    for (const unsigned number : numbers)
        bytes += static_cast<char>(number);
    return bytes;
}

// The 16-bit value of a character; none for those above U+FFFF and for several code points.
static uint16_t valueOf(IconvCodec& codec, const std::string& bytes)
{
    const int64_t codePoint = codec.decodeOne(bytes);
    return codePoint < 0 || codePoint > 0xFFFF ? kNoValue : static_cast<uint16_t>(codePoint);
}

static void addSingleBytes(TableImage& table, IconvCodec& codec)
{
    for (unsigned byte = 0; byte < 256; ++byte)
        table.put16(kRowsOffset + 2 * size_t{byte}, valueOf(codec, bytesOf({byte})));
}

// The double-byte families. Two-byte EBCDIC characters stand between shifts, which leave state 1 around them.
static std::string doubleByte(Family family, unsigned lead, unsigned trail)
{
    return family == Family::EbcdicDbcs ? bytesOf({0x0E, lead, trail, 0x0F}) : bytesOf({lead, trail});
}

// A byte that iconv takes for the beginning of a character is one, even when it has no characters.
static bool isLead(Family family, IconvCodec& codec, unsigned byte)
{
    std::vector<uint32_t> none;
    if (family == Family::EbcdicDbcs)
        return byte >= 0x40 && byte <= 0xFE;
    return byte >= 0x80 && codec.decode(bytesOf({byte}), none) == EINVAL;
}

static std::vector<uint16_t> singleByteRow(Family family, IconvCodec& codec)
{
    std::vector<uint16_t> row;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool ascii = family == Family::AsciiDbcs && byte < 0x80;
        row.push_back(ascii ? static_cast<uint16_t>(byte) : valueOf(codec, bytesOf({byte})));
    }
    return row;
}

// The values of the trail bytes behind a lead byte; empty when it has no characters.
static std::vector<uint16_t> leadRow(Family family, IconvCodec& codec, unsigned lead)
{
    std::vector<uint16_t> row;
    bool any = false;
    for (unsigned trail = 0; trail < 256; ++trail) {
        row.push_back(valueOf(codec, doubleByte(family, lead, trail)));
        any = any || row.back() != kNoValue;
    }
    return any ? row : std::vector<uint16_t>();
}

static void addDoubleBytes(TableImage& table, Family family, IconvCodec& codec)
{
    RowSet<uint16_t> rows;
    const std::vector<uint16_t> singles = singleByteRow(family, codec);
    const auto rowNumber = [](unsigned row) { return row * static_cast<unsigned>(kDbcsRowSize / kDbcsRowUnit); };
    table.put16(kRowsOffset, rowNumber(rows.add(singles)));
    table.put8(kClassesOffset, kClassSingle);
    for (unsigned byte = 1; byte < 256; ++byte) {
        const bool lead = isLead(family, codec, byte);
        const std::vector<uint16_t> row = lead ? leadRow(family, codec, byte) : std::vector<uint16_t>();
        table.put16(kRowsOffset + 2 * size_t{byte}, row.empty() ? kNoValue : rowNumber(rows.add(row)));
        table.put8(kClassesOffset + byte, lead ? kClassLead2 : singles[byte] != kNoValue ? kClassSingle : 0u);
    }
    table.put32(kMappingAreaOffset, static_cast<uint32_t>(table.append(rows.words())));
}

// The rows of the multi-byte family, found by asking the C library which bytes can follow.
class MultiByteRows
{
public:
    explicit MultiByteRows(IconvCodec& codec) : codec_(codec) {}

    struct Row {
        unsigned length = 0; // of the characters below, 0 without any
        std::vector<uint32_t> entries;
    };

    // The characters that begin with prefix, all of one length.
    Row rowBehind(const std::string& prefix)
    {
        Row row;
        row.entries.assign(0x80, kMbcsNone);
        for (unsigned byte = 0x80; byte < 0x100; ++byte) {
            const std::string bytes = prefix + static_cast<char>(byte);
            std::vector<uint32_t> codePoints;
            const int error = codec_.decode(bytes, codePoints);
            if (error == 0 && codePoints.size() == 1) {
                row.length = static_cast<unsigned>(bytes.size());
                row.entries[byte - 0x80] = codePoints[0];
            } else if (error == EINVAL && !prefix.empty() && bytes.size() < kMaxCodeLength) {
                const Row next = rowBehind(bytes);
                if (next.length == 0)
                    continue;
                row.length = next.length;
                row.entries[byte - 0x80] = rows.add(next.entries);
            }
        }
        return row;
    }

    RowSet<uint32_t> rows;

private:
    IconvCodec& codec_;
};

static void addMultiBytes(TableImage& table, IconvCodec& codec)
{
    MultiByteRows tree(codec);
    const std::vector<uint32_t> singles = tree.rowBehind("").entries;
    table.put16(kRowsOffset, tree.rows.add(singles));
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool single = byte < 0x80 || singles[byte - 0x80] != kMbcsNone;
        const bool lead = isLead(Family::AsciiMbcs, codec, byte);
        const MultiByteRows::Row row = lead ? tree.rowBehind(bytesOf({byte})) : MultiByteRows::Row();
        const unsigned leadClass = row.length == 0 ? kClassLead2 : row.length;
        table.put8(kClassesOffset + byte, lead ? leadClass : single ? kClassSingle : 0u);
        if (byte != 0)
            table.put16(kRowsOffset + 2 * size_t{byte}, row.length == 0 ? kNoValue : tree.rows.add(row.entries));
    }
    table.put32(kMappingAreaOffset, static_cast<uint32_t>(table.append(tree.rows.words())));
}

// The character with the number, as the two kinds of GB18030 sequences are numbered.
static std::string gb18030Bytes(unsigned index)
{
    if (index < Gb18030::kFirstOfFour)
        return bytesOf({0x81 + (index - 1) / Gb18030::kTrails, 0x40 + (index - 1) % Gb18030::kTrails});
    const uint32_t bytes = Gb18030::bytesBehind(0x81, index - Gb18030::kFirstOfFour);
    return bytesOf({bytes >> 24, bytes >> 16, bytes >> 8, bytes});
}

// The range lists of GB18030: runs of consecutive values of some length are computed, the rest is listed.
class GbRanges
{
public:
    explicit GbRanges(const std::vector<uint16_t>& linear) : linear_(linear)
    {
        for (unsigned index = 0; index < kGbIndexEnd; index += std::max(1u, runLength(index)))
            addRun(index, runLength(index));
        ranges.insert(ranges.end(), {0xFFFF, 0xFFFF, 0, 0}); // no index reaches it: the walk ends here
    }

    // For every bucket the number of the first range that does not end before it.
    std::vector<uint16_t> buckets() const
    {
        std::vector<uint16_t> firsts;
        size_t range = 0;
        for (unsigned bucket = 0; bucket < kGbBucketCount; ++bucket) {
            while (ranges[range * kGbRangeWords + 1] < bucket << kGbBucketShift)
                ++range;
            firsts.push_back(static_cast<uint16_t>(range));
        }
        return firsts;
    }

    std::vector<uint16_t> ranges;
    std::vector<uint16_t> values;

private:
    static constexpr unsigned kShortestComputed = 8;

    unsigned runLength(unsigned index) const
    {
        unsigned end = index;
        while (end < kGbIndexEnd && linear_[end] != kNoValue && linear_[end] - linear_[index] == int(end - index))
            ++end;
        return end - index;
    }

    void addRun(unsigned index, unsigned length)
    {
        if (length == 0)
            return;
        const auto last = static_cast<uint16_t>(index + length - 1);
        if (length >= kShortestComputed) {
            ranges.insert(ranges.end(), {uint16_t(index), last, kGbKindOffset, linear_[index]});
            return;
        }
        const size_t previous = ranges.size() - kGbRangeWords; // wraps when there is none, and is not used then
        const bool continues =
            !ranges.empty() && ranges[previous + 1] + 1u == index && ranges[previous + 2] == kGbKindValues;
        if (continues)
            ranges[previous + 1] = last;
        else
            ranges.insert(ranges.end(), {uint16_t(index), last, kGbKindValues, uint16_t(values.size())});
        values.insert(values.end(), linear_.begin() + index, linear_.begin() + index + length);
    }

    const std::vector<uint16_t>& linear_;
};

static void addGb18030(TableImage& table, IconvCodec& codec)
{
    std::vector<uint16_t> linear(kGbIndexEnd, kNoValue);
    for (unsigned index = 1; index < kGbIndexEnd; ++index)
        linear[index] = valueOf(codec, gb18030Bytes(index));
    const GbRanges lists(linear);
    const size_t subHeader = table.append(std::vector<uint32_t>(kGbSubHeaderSize / 4));
    const auto indexInArray = [&](size_t offset) {
        return static_cast<uint32_t>((offset - subHeader - kGbSubHeaderSize) / 2);
    };
    table.put16(kGbSubHeaderOffset, static_cast<unsigned>(subHeader));
    table.put32(subHeader + kGbRangesBase, indexInArray(table.append(lists.ranges)));
    table.put32(subHeader + kGbBucketsBase, indexInArray(table.append(lists.buckets())));
    table.put32(subHeader + kGbValuesBase, indexInArray(table.append(lists.values)));
}

void addForwardArrays(TableImage& table, Family family, IconvCodec& codec)
{
    switch (family) {
    case Family::AsciiDbcs:
    case Family::EbcdicDbcs:
        return addDoubleBytes(table, family, codec);
    case Family::AsciiMbcs:
        return addMultiBytes(table, codec);
    case Family::Gb18030:
        return addGb18030(table, codec);
    default:
        return addSingleBytes(table, codec);
    }
}
