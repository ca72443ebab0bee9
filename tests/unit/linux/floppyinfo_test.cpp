#include "linux/floppyinfo.h"

#include <gtest/gtest.h>
#include <linux/fd.h>

#include "com/Owned.h"
#include "tests/unit/linux/text/TextOf.h"

namespace
{

floppy_struct disk(unsigned tracks, unsigned heads, unsigned sectors, unsigned char rate)
{
    floppy_struct record = {};
    record.track = tracks;
    record.head = heads;
    record.sect = sectors;
    record.rate = rate;
    return record;
}

bool isItanium(std::string text)
{
    TextStream stream = textOf(text);
    return describesItanium(stream);
}

} // namespace

TEST(FloppyGeometry, ofA144MegabyteDisk)
{
    const FloppyGeometry geometry = decodeFloppyGeometry(disk(80, 2, 18, 0));
    EXPECT_EQ(geometry.cylinders, 80U);
    EXPECT_EQ(geometry.heads, 2U);
    EXPECT_EQ(geometry.sectors, 18U);
    EXPECT_EQ(geometry.sectorSize, 512);
    EXPECT_EQ(geometry.kilobytes, 1440);
}

TEST(FloppyGeometry, takesTheSectorSizeFromTheRate)
{
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 18, 0x43)).sectorSize, 512); // size code 2, whatever the other bits
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 11, 0x08)).sectorSize, 1024);
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 11, 0x28)).sectorSize, 16384);
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 18, 0x30)).sectorSize, 128);
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 18, 0x38)).sectorSize, 256);
    EXPECT_EQ(decodeFloppyGeometry(disk(80, 2, 22, 0x0C)).sectorSize, 512); // the "2M" bit
}

TEST(FloppyGeometry, sizesAre32BitsAndRoundTowardZero)
{
    EXPECT_EQ(decodeFloppyGeometry(disk(1, 1, 1, 0)).kilobytes, 0);
    EXPECT_EQ(decodeFloppyGeometry(disk(0xFFFFFFFF, 1, 1, 0)).kilobytes, 0);
    EXPECT_EQ(decodeFloppyGeometry(disk(0x400000, 1, 1, 0)).kilobytes, 0xFFE00000); // -2097152
    EXPECT_EQ(decodeFloppyGeometry(disk(0xFFFFFFFF, 0xFFFFFFFF, 3, 0)).kilobytes, 1);
}

TEST(Itanium, isKnownByArchitectureAndFamily)
{
    EXPECT_TRUE(isItanium("processor  : 0\narch       : IA-64\nfamily     : Itanium 2\n"));
    EXPECT_TRUE(isItanium("family     : Itanium\narch       : IA-64\n"));
}

TEST(Itanium, isNoOtherProcessor)
{
    EXPECT_FALSE(isItanium("cpu family\t: 6\nflags\t\t: fpu arch_perfmon\n"));
    EXPECT_FALSE(isItanium("arch       : IA-64\nfamily     : McKinley\n"));
    EXPECT_FALSE(isItanium("arch       : IA-642\nfamily     : Itanium 2\n"));
    EXPECT_FALSE(isItanium("\n"));
}

TEST(Itanium, isToldByTheFirstLineOfEachKind)
{
    EXPECT_FALSE(isItanium("arch : x86\narch : IA-64\nfamily : Itanium\n"));
    EXPECT_FALSE(isItanium("arch : IA-64\nfamily : 6\nfamily : Itanium\n"));
}

TEST(Floppy, thatIsNotThereIsNotOpened)
{
    const floppyinfo info("/nowhere/fd0");
    EXPECT_EQ(info.errorcode(), 20);
    EXPECT_FALSE(info.mediapresent());
}

TEST(Floppy, thatAnswersNothingKeepsTheErrorOfItsType)
{
    const floppyinfo info("/dev/null");
    EXPECT_EQ(info.errorcode(), ENOTTY);
    EXPECT_FALSE(info.mediapresent());
    EXPECT_EQ(info.totalsize(), 0);
    EXPECT_STREQ(info.model(), "");
}

TEST(Floppy, knowsNeitherMakerNorSerialNumber)
{
    EXPECT_EQ(floppyinfo::determineFloppymanufacturer(), 0);
    EXPECT_EQ(floppyinfo::determineFloppyserialnumber(), 0);
    EXPECT_EQ(floppyinfo::determineFloppymodel(), 0);
    const OwnedText first(floppyinfo::type());
    const OwnedText second(floppyinfo::type());
    EXPECT_NE(first, second) << "each caller has its own";
}
