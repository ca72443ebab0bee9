// Any bytes as what a monitor tells of itself: no crash; what is taken has a whole first block, and tells nothing that
// cannot be. The checksum is made right, so that what lies behind it is reached.

#include <cstdint>
#include <cstdlib>

#include "host/display/Edid.h"

static void require(bool isTrue)
{
    if (!isTrue)
        abort();
}

static void checkText(const std::string& text, size_t most)
{
    require(text.size() <= most);
    for (const char c : text)
        require(c >= ' ' && c <= '~');
}

static void checkRange(const std::optional<host::ScanRange>& range)
{
    require(!range || (range->lowest > 0 && range->lowest <= range->highest && range->highest <= 510));
}

static void check(const host::Edid& edid)
{
    require(edid.manufacturer.empty() || edid.manufacturer.size() == 3);
    checkText(edid.manufacturer, 3);
    checkText(edid.name, 13);
    checkText(edid.serialNumber, 13);
    checkText(edid.preferredMode, 32);
    checkRange(edid.verticalHz);
    checkRange(edid.horizontalKHz);
    require(edid.width.has_value() == edid.height.has_value() && edid.width != 0u && edid.height != 0u);
    require(edid.width.has_value() == edid.diagonalInches().has_value());
    require(!edid.year || (*edid.year > 1990 && *edid.year <= 2245));
    require(!edid.week || edid.year);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr size_t kBlock = 128;
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (const auto edid = host::parseEdid(bytes))
        check(*edid);
    if (size < kBlock)
        return 0;
    uint8_t sum = 0;
    for (size_t i = 0; i + 1 < kBlock; ++i)
        sum = static_cast<uint8_t>(sum + data[i]);
    bytes[kBlock - 1] = static_cast<char>(-sum);
    if (const auto edid = host::parseEdid(bytes))
        check(*edid);
    return 0;
}
