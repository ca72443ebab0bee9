#include "linux/ideinfo.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "com/VexEnumValues.h"
#include "linux/IDEDevices.h"
#include "linux/storage/IDEDrives.h"
#include "tests/unit/linux/text/TextOf.h"

namespace
{

struct Geometry {
    bool found;
    uint32_t numbers[3] = {7, 8, 9};
};

Geometry geometryOf(std::string text)
{
    TextStream stream = textOf(text);
    Geometry geometry;
    geometry.found = parseIDEgeometry(stream, geometry.numbers);
    return geometry;
}

void expectNumbers(const Geometry& geometry, uint32_t first, uint32_t second, uint32_t third)
{
    EXPECT_TRUE(geometry.found);
    EXPECT_EQ(geometry.numbers[0], first);
    EXPECT_EQ(geometry.numbers[1], second);
    EXPECT_EQ(geometry.numbers[2], third);
}

void expectModel(const char* line, const char* manufacturer, const char* model)
{
    char gotManufacturer[256] = "unset";
    char gotModel[256] = "unset";
    splitIDEmodel(line, gotManufacturer, gotModel);
    EXPECT_STREQ(gotManufacturer, manufacturer) << line;
    EXPECT_STREQ(gotModel, model) << line;
}

int32_t securityOf(unsigned char lowByteOfWord128)
{
    unsigned char identify[kIdentifySize] = {};
    identify[256] = lowByteOfWord128;
    return decodeIDEsecurity(identify);
}

} // namespace

TEST(IDEGeometry, isReadFromTheLogicalLine)
{
    expectNumbers(geometryOf("physical     16383/16/63\nlogical      1023/255/63\n"), 1023, 255, 63);
}

TEST(IDEGeometry, skipsEveryOtherCharacterOfTheLine)
{
    expectNumbers(geometryOf("logical 1x0 23/ 2 5\t5/63 heads\n"), 1023, 255, 63);
}

TEST(IDEGeometry, dropsFieldsBehindTheThird)
{
    expectNumbers(geometryOf("logical 1/2/3/4/5\n"), 1, 2, 3);
}

TEST(IDEGeometry, keepsItsFieldFromLineToLine)
{
    expectNumbers(geometryOf("logical 1/2\nlogical 5/3\n"), 1, 25, 3);
    expectNumbers(geometryOf("logical 1/2/3\nlogical 4/5/6\n"), 1, 2, 34);
}

TEST(IDEGeometry, failsUnlessAllThreeFieldsHaveADigit)
{
    for (const char* text : {"logical 1023/255\n", "logical //63\n", "physical 1023/255/63\n", "logical\n", "\n"}) {
        const Geometry geometry = geometryOf(text);
        EXPECT_FALSE(geometry.found) << text;
        EXPECT_EQ(geometry.numbers[0], 7U) << text;
    }
}

TEST(IDEGeometry, saturatesAsNumbersOf32BitsDo)
{
    expectNumbers(geometryOf("logical 2147483648/99999999999999999999999/2147483647\n"), 0x7FFFFFFF, 0x7FFFFFFF,
                  0x7FFFFFFF);
    expectNumbers(geometryOf("logical 000000000000000000005/0/2\n"), 5, 0, 2);
}

TEST(IDECapacity, isHalvedToKilobytes)
{
    EXPECT_EQ(parseIDEcapacity("78165360\n"), 39082680U);
    EXPECT_EQ(parseIDEcapacity("78165360\n") >> 10, 38166U);
    EXPECT_EQ(parseIDEcapacity("3"), 1U);
    EXPECT_EQ(parseIDEcapacity("none"), 0U);
    EXPECT_EQ(parseIDEcapacity(""), 0U);
}

TEST(IDECapacity, isNothingWhenTheCountOverflows)
{
    EXPECT_EQ(parseIDEcapacity("4294967293"), 0x7FFFFFFEU);
    EXPECT_EQ(parseIDEcapacity("4294967294"), 0U);
    EXPECT_EQ(parseIDEcapacity("4294967295"), 0U);
    EXPECT_EQ(parseIDEcapacity("99999999999999999999999"), 0U);
}

TEST(IDEModel, isSplitAtItsFirstBlank)
{
    expectModel("WDC WD400BB-00DEA0\n", "WDC", "WD400BB-00DEA0");
    expectModel("SONY CD-RW CRX140E\n", "SONY", "CD-RW CRX140E");
}

TEST(IDEModel, withoutBlankIsAllModel)
{
    expectModel("ST340016A\n", "", "ST340016A");
    expectModel("ST340016A", "", "ST340016A");
    expectModel("\n", "", "");
    expectModel("", "", "");
}

TEST(IDEModel, withALeadingBlankHasNoManufacturer)
{
    expectModel(" ST340016A\n", "", "ST340016A");
    expectModel(" ", "", "");
}

TEST(IDEModel, asLongAsALineIsKeptWhole)
{
    const std::string line(255, 'x');
    expectModel(line.c_str(), "", line.c_str());
    const std::string maker = std::string(254, 'y') + " ";
    expectModel(maker.c_str(), maker.substr(0, 254).c_str(), "");
}

TEST(IDESerialNumber, isTwentyCharactersAsTheyCome)
{
    unsigned char identify[kIdentifySize];
    memset(identify, '?', sizeof identify);
    memcpy(identify + 20, "     WD-WMA8C1234567", 20);
    char serialNumber[21];
    decodeIDEserialnumber(identify, serialNumber);
    EXPECT_STREQ(serialNumber, "     WD-WMA8C1234567");
}

TEST(IDESecurity, isEnabledOnlyWhereItIsSupported)
{
    EXPECT_EQ(securityOf(0x03), 1);
    EXPECT_EQ(securityOf(0x01), 0);
    EXPECT_EQ(securityOf(0x00), -1);
    EXPECT_EQ(securityOf(0x02), -1);
    EXPECT_EQ(securityOf(0x29), 0);
}

TEST(IDEType, followsFromTheMedia)
{
    EXPECT_EQ(resolveIDEtype("cdrom\n"), STORAGE_TYPE_CD_ROM);
    EXPECT_EQ(resolveIDEtype("disk\n"), STORAGE_TYPE_HARD_DISK);
    EXPECT_EQ(resolveIDEtype("floppy\n"), STORAGE_TYPE_UNKNOWN);
    EXPECT_EQ(resolveIDEtype("tape\n"), STORAGE_TYPE_UNKNOWN);
    EXPECT_EQ(resolveIDEtype(""), STORAGE_TYPE_UNKNOWN);
}

TEST(IDEInfo, ofADeviceThatIsNotThereIsEmptyWithTheLastError)
{
    const ideinfo info("/nowhere/ide0/hd_none");
    EXPECT_EQ(info.errorcode(), ENOENT);
    EXPECT_EQ(info.numcylinders(), 0U);
    EXPECT_EQ(info.totalsize(), 0U);
    EXPECT_STREQ(info.model(), "");
    EXPECT_STREQ(info.serialnumber(), "");
    EXPECT_EQ(info.security_enabled(), -1);
    EXPECT_EQ(info.removable(), 1);
    EXPECT_EQ(info.sector_size(), 0U);
    EXPECT_FALSE(info.mediapresent());
}

static int removableWith(const std::string& media)
{
    const std::string folder = testing::TempDir() + "ideinfo_test." + std::to_string(getpid());
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/media") << media;
    const int removable = ideinfo(folder.c_str()).removable();
    std::filesystem::remove_all(folder);
    return removable;
}

// The kernel's line ends with a newline, which the comparison does not expect: a CD-ROM counts as removable all the
// same.
TEST(IDEInfo, onlyACdRomWithoutNewlineIsNotRemovable)
{
    EXPECT_EQ(removableWith("cdrom"), 0);
    EXPECT_EQ(removableWith("cdrom\n"), 1);
    EXPECT_EQ(removableWith("disk\n"), 1);
    EXPECT_EQ(removableWith(""), 1);
}

TEST(IDEDrive, aPathWithoutAFolderHasNoNode)
{
    const ideinfo drive("hda");
    EXPECT_NE(drive.errorcode(), 0);
    EXPECT_EQ(drive.numheads(), 0u);
    EXPECT_EQ(drive.security_enabled(), -1);
}
