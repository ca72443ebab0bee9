#include "host/display/Edid.h"

#include <array>
#include <cmath>
#include <numeric>

#include "report/Text.h"

// Section numbers are those of the standard's revision 1.4 (release A, revision 2).

namespace host
{
namespace
{
constexpr size_t kBlock = 128;
constexpr std::string_view kHeader("\0\xFF\xFF\xFF\xFF\xFF\xFF\0", 8);
constexpr uint8_t kNewest = 4; // the revision that gave older fields further meanings

// Offsets in the block.
enum : size_t {
    MAKER = 8,
    PRODUCT = 10,
    SERIAL = 12,
    WEEK = 16,
    YEAR = 17,
    STRUCTURE = 18,
    REVISION = 19,
    WIDTH_CM = 21,
    HEIGHT_CM = 22,
    FEATURES = 24,
    DESCRIPTORS = 54,
};

// One of the block's four descriptors of 18 bytes: a timing, or a text or range when it begins with two zeros.
using Field = std::array<uint8_t, 18>;
constexpr size_t kFields = 4;

enum : uint8_t { TAG_RANGES = 0xFD, TAG_NAME = 0xFC, TAG_SERIAL = 0xFF };

uint8_t byteAt(std::string_view block, size_t offset)
{
    return static_cast<uint8_t>(block[offset]);
}

uint32_t littleEndian(std::string_view block, size_t offset, size_t bytes)
{
    uint32_t number = 0;
    for (size_t i = bytes; i > 0; --i)
        number = number << 8 | byteAt(block, offset + i - 1);
    return number;
}

bool isBlock(std::string_view block)
{
    constexpr uint8_t kStructure = 1;
    const auto add = [](uint8_t sum, char byte) { return static_cast<uint8_t>(sum + static_cast<uint8_t>(byte)); };
    return block.size() == kBlock && block.starts_with(kHeader) && byteAt(block, STRUCTURE) == kStructure &&
           std::accumulate(block.begin(), block.end(), uint8_t{0}, add) == 0;
}

// 3.4.1: five bits a letter, A is 1.
std::string manufacturerOf(std::string_view block)
{
    constexpr uint32_t kLetterBits = 5, kLetters = 26;
    const uint32_t word = byteAt(block, MAKER) * 256U + byteAt(block, MAKER + 1);
    std::string letters;
    for (const uint32_t shift : {2 * kLetterBits, kLetterBits, 0U}) {
        const uint32_t letter = word >> shift & 0x1F;
        if (letter == 0 || letter > kLetters || word > 0x7FFF)
            return "";
        letters += static_cast<char>('A' + letter - 1);
    }
    return letters;
}

// 3.4.3: 0 is none; makers who have none to tell write all ones too, and 1 in each byte.
std::string serialOf(std::string_view block)
{
    const uint32_t serial = littleEndian(block, SERIAL, sizeof serial);
    const bool isNone = serial == 0 || serial == 0x01010101 || serial == UINT32_MAX;
    return isNone ? "" : std::to_string(serial);
}

// 3.4.4: with a week of 255 the year is the model's and not that of manufacture.
void addDate(std::string_view block, Edid& edid)
{
    constexpr uint32_t kLastWeek = 54, kFirstYear = 1990, kModelYear = 0xFF;
    const uint32_t week = byteAt(block, WEEK);
    const uint32_t year = byteAt(block, YEAR);
    if (week == kModelYear || year == 0)
        return;
    edid.year = kFirstYear + year;
    if (week >= 1 && week <= kLastWeek)
        edid.week = week;
}

Field fieldAt(std::string_view block, size_t number)
{
    Field field{};
    for (size_t i = 0; i < field.size(); ++i)
        field[i] = byteAt(block, DESCRIPTORS + number * field.size() + i);
    return field;
}

bool isTiming(const Field& field)
{
    return field[0] != 0 || field[1] != 0;
}

// 3.10.3.1: ended by a line feed where it is shorter than its field.
std::string textOf(const Field& field)
{
    constexpr size_t kText = 5;
    std::string text;
    for (size_t i = kText; i < field.size() && field[i] != '\n' && field[i] != '\0'; ++i)
        if (field[i] >= ' ' && field[i] < 0x7F)
            text += static_cast<char>(field[i]);
    return std::string(report::trimmed(text));
}

// 3.10.3.3.1: two bits say which of the two rates are 255 above what stands there.
std::optional<ScanRange> rangeOf(uint32_t lowest, uint32_t highest, uint32_t bits)
{
    constexpr uint32_t kMore = 255;
    constexpr uint32_t kHighest = 2, kBoth = 3;
    lowest += bits == kBoth ? kMore : 0;
    highest += bits == kHighest || bits == kBoth ? kMore : 0;
    return lowest != 0 && lowest <= highest ? std::optional(ScanRange{lowest, highest}) : std::nullopt;
}

void addRanges(const Field& field, Edid& edid)
{
    constexpr uint32_t kClockUnit = 10; // MHz
    const uint32_t flags = edid.revision >= kNewest ? field[4] : 0U;
    edid.verticalHz = rangeOf(field[5], field[6], flags & 3);
    edid.horizontalKHz = rangeOf(field[7], field[8], flags >> 2 & 3);
    if (field[9] != 0)
        edid.pixelClockMHz = field[9] * kClockUnit;
}

void addText(const Field& field, std::string& text)
{
    if (text.empty())
        text = textOf(field);
}

void addDescriptors(std::string_view block, Edid& edid)
{
    for (size_t number = 0; number < kFields; ++number) {
        const Field field = fieldAt(block, number);
        if (isTiming(field) || field[2] != 0)
            continue;
        if (field[3] == TAG_RANGES)
            addRanges(field, edid);
        else if (field[3] == TAG_NAME)
            addText(field, edid.name);
        else if (field[3] == TAG_SERIAL)
            addText(field, edid.serialNumber);
    }
}

// A number of twelve bits, of which the upper four are half of another byte.
uint32_t twelveBits(uint8_t low, uint32_t high)
{
    return low | (high & 0xF) << 8;
}

// 3.10.2: pixels and lines, the blank ones included for the rate. An interlaced picture's lines are those of a field.
std::string modeOf(const Field& timing)
{
    constexpr double kClockUnit = 10'000; // Hz
    const uint32_t columns = twelveBits(timing[2], timing[4] >> 4);
    const uint32_t lines = twelveBits(timing[5], timing[7] >> 4);
    const bool isInterlaced = (timing[17] & 0x80) != 0;
    if (columns == 0 || lines == 0)
        return "";
    const double pixels = columns + twelveBits(timing[3], timing[4]);
    // A frame of an odd number of lines is two fields with half a line more.
    const double fieldLines = lines + twelveBits(timing[6], timing[7]) + (isInterlaced ? 0.5 : 0);
    const double rate = (timing[0] + 256.0 * timing[1]) * kClockUnit / (pixels * fieldLines);
    char mode[64];
    snprintf(mode, sizeof mode, "%ux%u%s@%g", columns, isInterlaced ? 2 * lines : lines, isInterlaced ? "i" : "",
             std::round(rate * 100) / 100);
    return mode;
}

// The picture's size in mm of the first timing, else the screen's in cm. Some makers write cm into the timing too; one
// number without the other is a ratio (3.6.2).
void addSize(std::string_view block, const Field& timing, Edid& edid)
{
    constexpr uint32_t kMillimetres = 10;
    const uint32_t widthCm = byteAt(block, WIDTH_CM);
    const uint32_t heightCm = byteAt(block, HEIGHT_CM);
    const uint32_t width = isTiming(timing) ? twelveBits(timing[12], timing[14] >> 4) : 0;
    const uint32_t height = isTiming(timing) ? twelveBits(timing[13], timing[14]) : 0;
    const bool isInMillimetres = width != 0 && height != 0 && !(width == widthCm && height == heightCm);
    if (isInMillimetres) {
        edid.width = width;
        edid.height = height;
    } else if (widthCm != 0 && heightCm != 0) {
        edid.width = widthCm * kMillimetres;
        edid.height = heightCm * kMillimetres;
    }
}

// Before 1.4 a bit says that the first timing is the preferred one.
bool prefersFirstTiming(std::string_view block, uint8_t revision)
{
    return revision >= kNewest || (byteAt(block, FEATURES) & 0x02) != 0;
}
} // namespace

std::optional<uint32_t> Edid::diagonalInches() const
{
    constexpr double kInch = 25.4;
    if (!width || !height)
        return std::nullopt;
    return static_cast<uint32_t>(std::lround(std::hypot(*width, *height) / kInch));
}

std::optional<Edid> parseEdid(std::string_view bytes)
{
    const std::string_view block = bytes.substr(0, kBlock);
    if (!isBlock(block))
        return std::nullopt;
    Edid edid;
    edid.revision = byteAt(block, REVISION);
    edid.manufacturer = manufacturerOf(block);
    edid.product = static_cast<uint16_t>(littleEndian(block, PRODUCT, sizeof edid.product));
    addDate(block, edid);
    addDescriptors(block, edid);
    if (edid.serialNumber.empty())
        edid.serialNumber = serialOf(block);
    const Field timing = fieldAt(block, 0);
    addSize(block, timing, edid);
    if (isTiming(timing) && prefersFirstTiming(block, edid.revision))
        edid.preferredMode = modeOf(timing);
    return edid;
}
} // namespace host
