#include "host/display/Edid.h"

#include <gtest/gtest.h>

#include "tests/unit/host/display/EdidBytes.h"

using namespace host;

namespace
{
constexpr uint8_t kRanges = 0xFD, kName = 0xFC, kSerial = 0xFF;

EdidBytes desktopMonitor()
{
    return EdidBytes(3)
        .maker("DEL")
        .put(10, {0x87, 0x40, 0x4C, 0x35, 0x31, 0x42, 26, 25})
        .put(20, {0x80, 52, 32, 120, 0xEA})
        .field(0, kPanelTiming)
        .text(1, kSerial, "GH85D6BQ15BL")
        .text(2, kName, "DELL U2415")
        .field(3, {0, 0, 0, kRanges, 0, 49, 86, 30, 83, 17, 0, 10, 32, 32, 32, 32, 32, 32});
}

Edid parsed(const EdidBytes& bytes)
{
    const std::optional<Edid> edid = parseEdid(bytes.bytes());
    EXPECT_TRUE(edid);
    return edid.value_or(Edid());
}
} // namespace

TEST(Edid, tellsAllOfAMonitor)
{
    const Edid edid = parsed(desktopMonitor());
    EXPECT_EQ(edid.revision, 3);
    EXPECT_EQ(edid.manufacturer, "DEL");
    EXPECT_EQ(edid.product, 0x4087);
    EXPECT_EQ(edid.name, "DELL U2415");
    EXPECT_EQ(edid.serialNumber, "GH85D6BQ15BL");
    EXPECT_EQ(edid.week, 26u);
    EXPECT_EQ(edid.year, 2015u);
    EXPECT_EQ(edid.width, 301u);
    EXPECT_EQ(edid.height, 188u);
    EXPECT_EQ(edid.diagonalInches(), 14u);
    ASSERT_TRUE(edid.verticalHz && edid.horizontalKHz);
    EXPECT_EQ(edid.verticalHz->lowest, 49u);
    EXPECT_EQ(edid.verticalHz->highest, 86u);
    EXPECT_EQ(edid.horizontalKHz->lowest, 30u);
    EXPECT_EQ(edid.horizontalKHz->highest, 83u);
    EXPECT_EQ(edid.pixelClockMHz, 170u);
    EXPECT_EQ(edid.preferredMode, "1920x1200@59.95");
}

TEST(Edid, hasANumberWhereThereIsNoSerialText)
{
    EXPECT_EQ(parsed(EdidBytes().put(12, {0x4C, 0x35, 0x31, 0x42})).serialNumber, "1110521164");
    EXPECT_EQ(parsed(EdidBytes().put(12, {0, 0, 0, 0})).serialNumber, "");
    EXPECT_EQ(parsed(EdidBytes().put(12, {1, 1, 1, 1})).serialNumber, "");
    EXPECT_EQ(parsed(EdidBytes().put(12, {0xFF, 0xFF, 0xFF, 0xFF})).serialNumber, "");
    EXPECT_EQ(parsed(EdidBytes().put(12, {1, 1, 1, 2})).serialNumber, "33620225");
}

TEST(Edid, hasADateOfManufactureAndNotOfTheModel)
{
    const struct {
        uint8_t week, year;
        std::optional<uint32_t> expectedWeek, expectedYear;
    } cases[] = {
        {0, 33, {}, 2023}, {1, 4, 1, 1994}, {54, 255, 54, 2245}, {55, 33, {}, 2023}, {255, 33, {}, {}}, {26, 0, {}, {}},
    };
    for (const auto& c : cases) {
        const Edid edid = parsed(EdidBytes().put(16, {c.week, c.year}));
        EXPECT_EQ(edid.week, c.expectedWeek) << int{c.week};
        EXPECT_EQ(edid.year, c.expectedYear) << int{c.week};
    }
}

TEST(Edid, hasTheScreensSizeWhereTheTimingHasNone)
{
    const auto size = [](std::initializer_list<uint8_t> timing, uint8_t width, uint8_t height) {
        const Edid edid = parsed(EdidBytes().field(0, timing).put(21, {width, height}));
        return std::pair(edid.width.value_or(0), edid.height.value_or(0));
    };
    using Size = std::pair<uint32_t, uint32_t>;
    EXPECT_EQ(size({0, 0, 0, 0x10}, 52, 32), Size(520, 320));
    EXPECT_EQ(size({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 52, 32), Size(520, 320));
    EXPECT_EQ(size({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 52, 32, 0}, 52, 32), Size(520, 320)) << "cm in the timing";
    EXPECT_EQ(size({1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x08, 0x45, 0x21}, 52, 32), Size(520, 325));
    EXPECT_EQ(size({0, 0, 0, 0x10}, 79, 0), Size(0, 0)) << "a ratio";
    EXPECT_EQ(size({0, 0, 0, 0x10}, 0, 0), Size(0, 0)) << "a projector";
    EXPECT_FALSE(parsed(EdidBytes()).diagonalInches());
}

TEST(Edid, prefersTheFirstTimingWhereItSaysSo)
{
    EXPECT_EQ(parsed(EdidBytes(2).field(0, kPanelTiming)).preferredMode, "");
    EXPECT_EQ(parsed(EdidBytes(2).field(0, kPanelTiming).put(24, {0x02})).preferredMode, "1920x1200@59.95");
    EXPECT_EQ(parsed(EdidBytes(4).field(0, kPanelTiming)).preferredMode, "1920x1200@59.95");
    EXPECT_EQ(parsed(EdidBytes(4).field(1, kPanelTiming)).preferredMode, "") << "the first is no timing";
    EXPECT_EQ(parsed(EdidBytes(4).field(0, {1, 0})).preferredMode, "") << "a timing without pixels";
    // 1080i: 74.25 MHz, 2200 pixels a line, 562.5 lines a field.
    EXPECT_EQ(parsed(EdidBytes(4).field(0, {0x01, 0x1D, 0x80, 0x18, 0x71, 0x1C, 0x16, 0x20, 0x58, 0x2C, 0x25, 0x00, 0,
                                            0, 0, 0, 0, 0x9E}))
                  .preferredMode,
              "1920x1080i@60");
}

TEST(Edid, countsRatesAbove255FromItsFourthRevisionOn)
{
    const auto ranges = [](uint8_t revision, uint8_t flags, std::initializer_list<uint8_t> rates) {
        EdidBytes bytes(revision);
        bytes.field(3, {0, 0, 0, kRanges, flags}).put(54 + 3 * 18 + 5, rates);
        const Edid edid = parsed(bytes);
        const auto text = [](const std::optional<ScanRange>& range) {
            return range ? std::to_string(range->lowest) + '-' + std::to_string(range->highest) : "none";
        };
        return text(edid.verticalHz) + ' ' + text(edid.horizontalKHz) + ' ' +
               std::to_string(edid.pixelClockMHz.value_or(0));
    };
    EXPECT_EQ(ranges(4, 0x00, {48, 144, 30, 250, 60}), "48-144 30-250 600");
    EXPECT_EQ(ranges(4, 0x0A, {48, 105, 30, 40, 255}), "48-360 30-295 2550");
    EXPECT_EQ(ranges(4, 0x0F, {1, 105, 2, 40, 1}), "256-360 257-295 10");
    EXPECT_EQ(ranges(4, 0x05, {48, 105, 30, 40, 1}), "48-105 30-40 10") << "not defined";
    EXPECT_EQ(ranges(3, 0x0F, {48, 105, 30, 40, 1}), "48-105 30-40 10");
    EXPECT_EQ(ranges(3, 0, {105, 48, 0, 40, 0}), "none none 0");
}

TEST(Edid, hasLettersOrNoManufacturer)
{
    EXPECT_EQ(parsed(EdidBytes().maker("AUO")).manufacturer, "AUO");
    EXPECT_EQ(parsed(EdidBytes().maker("AZZ")).manufacturer, "AZZ");
    EXPECT_EQ(parsed(EdidBytes().put(8, {0, 0})).manufacturer, "");
    EXPECT_EQ(parsed(EdidBytes().put(8, {0x7F, 0xFF})).manufacturer, "");
    EXPECT_EQ(parsed(EdidBytes().put(8, {0x84, 0x21})).manufacturer, "") << "the highest bit is 0";
}

TEST(Edid, textsEndWhereTheyEndAndHoldNothingElse)
{
    EXPECT_EQ(parsed(EdidBytes().text(0, kName, "ThirteenChars")).name, "ThirteenChars");
    EXPECT_EQ(parsed(EdidBytes().text(0, kName, "  LCD ")).name, "LCD");
    EXPECT_EQ(parsed(EdidBytes().text(0, kName, std::string_view("A\0B", 3))).name, "A");
    EXPECT_EQ(parsed(EdidBytes().text(0, kName,
                                      "A\x01\x1B\xE9\x7F"
                                      "B"))
                  .name,
              "AB");
    EXPECT_EQ(parsed(EdidBytes().text(0, kName, "first").text(1, kName, "second")).name, "first");
    EXPECT_EQ(parsed(EdidBytes().text(0, kName, "").text(1, kName, "second")).name, "second");
}

TEST(Edid, isNoOtherBlock)
{
    const std::string good = desktopMonitor().bytes();
    ASSERT_TRUE(parseEdid(good));
    for (size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(parseEdid(good.substr(0, size))) << size;
    for (size_t offset = 0; offset < good.size(); ++offset) {
        std::string bad = good;
        bad[offset] = static_cast<char>(bad[offset] ^ 0x40);
        EXPECT_FALSE(parseEdid(bad)) << offset;
    }
    EXPECT_FALSE(parseEdid(EdidBytes().put(18, {2, 0}).bytes()));
    EXPECT_FALSE(parseEdid(EdidBytes().put(7, {1}).bytes()));
}

TEST(Edid, isTheSameWhateverBlocksFollow)
{
    const Edid alone = parsed(desktopMonitor());
    std::string cta(128, '\xFF');
    cta.replace(0, 4, std::string_view("\x02\x03\xFF\xF1", 4));
    std::string displayId(128, '\xFF');
    displayId.replace(0, 5, std::string_view("\x70\x13\xFF\xFF\xFF", 5));
    for (const std::string& extensions : {cta, displayId, cta + displayId, cta.substr(0, 17)}) {
        const std::optional<Edid> edid = parseEdid(desktopMonitor().bytes(extensions));
        ASSERT_TRUE(edid);
        EXPECT_EQ(edid->name, alone.name);
        EXPECT_EQ(edid->preferredMode, alone.preferredMode);
        EXPECT_EQ(edid->serialNumber, alone.serialNumber);
    }
    std::string announced = desktopMonitor().put(126, {255}).bytes(std::string(255UL * 128, '\0')).substr(0, 128);
    EXPECT_TRUE(parseEdid(announced)) << "announced and not there";
}
