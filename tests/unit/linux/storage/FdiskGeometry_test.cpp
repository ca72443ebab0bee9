#include "linux/storage/FdiskGeometry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/unit/LogCapture.h"
#include "tests/unit/linux/text/TextOf.h"

namespace
{

constexpr DriveGeometry kUntouched = {1, 2, 3, 4};

struct Lookup {
    int found;
    DriveGeometry geometry = kUntouched;
};

Lookup listed(std::string text, const char* device)
{
    TextStream listing = textOf(text);
    Lookup lookup;
    lookup.found = findListedGeometry(listing, device, &lookup.geometry);
    return lookup;
}

Lookup mounted(std::string text)
{
    TextStream listing = textOf(text);
    Lookup lookup;
    lookup.found = findMountedGeometry(listing, &lookup.geometry);
    return lookup;
}

void expectGeometry(const Lookup& lookup, uint32_t heads, uint32_t cylinders, uint32_t sectors, uint32_t kilobytes)
{
    EXPECT_EQ(lookup.found, 1);
    EXPECT_EQ(lookup.geometry.heads, heads);
    EXPECT_EQ(lookup.geometry.cylinders, cylinders);
    EXPECT_EQ(lookup.geometry.sectors, sectors);
    EXPECT_EQ(lookup.geometry.kilobytes, kilobytes);
}

void expectFailure(const Lookup& lookup)
{
    EXPECT_EQ(lookup.found, 0);
    EXPECT_EQ(lookup.geometry.heads, kUntouched.heads);
    EXPECT_EQ(lookup.geometry.cylinders, kUntouched.cylinders);
    EXPECT_EQ(lookup.geometry.sectors, kUntouched.sectors);
    EXPECT_EQ(lookup.geometry.kilobytes, kUntouched.kilobytes);
}

} // namespace

TEST(FdiskGeometry, readsTheLineThatNamesTheDisk)
{
    const Lookup lookup = listed("\nDisk /dev/hda: 16 heads, 63 sectors, 1023 cylinders\n"
                                 "Disk /dev/sda: 255 heads, 63 sectors, 261 cylinders\n",
                                 "/dev/sda");
    expectGeometry(lookup, 255, 261, 63, 2096482);
}

TEST(FdiskGeometry, onlyTheFirstLineWithTheNameCounts)
{
    expectFailure(listed("/dev/sda1 * 1 2\nDisk /dev/sda: 255 heads, 63 sectors, 1024 cylinders\n", "/dev/sda"));
}

TEST(FdiskGeometry, anUnknownDiskFails)
{
    expectFailure(listed("Disk /dev/sda: 255 heads, 63 sectors, 1024 cylinders\n", "/dev/sdb"));
    expectFailure(listed("\n", "/dev/sdb"));
}

TEST(FdiskGeometry, aZeroInAnyFigureFailsWithoutTouchingTheOutputs)
{
    expectFailure(listed("Disk /dev/sda: 0 heads, 63 sectors, 1024 cylinders\n", "/dev/sda"));
    expectFailure(listed("Disk /dev/sda: 255 heads, 0 sectors, 1024 cylinders\n", "/dev/sda"));
    expectFailure(listed("Disk /dev/sda: 255 heads, 63 sectors, 0 cylinders\n", "/dev/sda"));
    expectFailure(mounted("0 heads, 63 sectors/track, 1024 cylinders\n"));
    expectFailure(mounted("255 heads, none sectors/track, 1024 cylinders\n"));
    expectFailure(mounted("255 heads, 63 sectors/track, 0 cylinders\n"));
}

TEST(FdiskGeometry, aLineThatEndsEarlyFailsWithoutTouchingTheOutputs)
{
    expectFailure(listed("/dev/sda\n", "/dev/sda"));
    expectFailure(listed("Disk /dev/sda: 255 heads,\n", "/dev/sda"));
    expectFailure(listed("Disk /dev/sda: 255 heads, 63 sectors,\n", "/dev/sda"));
    expectFailure(mounted("255 heads,\n"));
    expectFailure(mounted("255 heads, 63 sectors/track,\n"));
    expectFailure(mounted("heads\n"));
}

TEST(FdiskGeometry, theSizeLosesItsBitsAbove32)
{
    // 63 * 17849 * 255 sectors are 140 GB; of the bytes, 32 bits stay.
    expectGeometry(mounted("255 heads, 63 sectors/track, 17849 cylinders\n"), 255, 17849, 63, 765756);
}

TEST(FdiskGeometry, aNegativeFigureIsReadAs32Bits)
{
    expectGeometry(mounted("-1 heads, 1 sectors/track, 1 cylinders\n"), 0xFFFFFFFF, 1, 1, 0x3FFFFF);
}

TEST(FdiskGeometry, headsAreFoundBehindOtherWords)
{
    expectGeometry(mounted("\nDisk /dev/cciss/c0d0: 36.4 GB\nGeometry: 255 heads, 63 sectors/track, 261 cylinders\n"),
                   255, 261, 63, 2096482);
}

TEST(FdiskGeometry, logsTheListedLineWordByWord)
{
    const LogCapture log;
    listed("Disk /dev/sda: 255 heads, 63 sectors, 261 cylinders\n", "/dev/sda");
    EXPECT_EQ(log.text(), "\ntmpheads=255\ntmpsectors=63\ntmpcylinders=261\ntotalsize=2096482");
}

TEST(FdiskGeometry, logsAFigureAlsoWhenTheNextIsMissing)
{
    const LogCapture log;
    listed("Disk /dev/sda: 255 heads, 63 sectors,\n", "/dev/sda");
    EXPECT_EQ(log.text(), "\ntmpheads=255\ntmpsectors=63");
}

TEST(FdiskGeometry, logsTheMountedDiskInPairs)
{
    const LogCapture log;
    mounted("\nDisk: x heads, 63 s, 1 c\n");
    EXPECT_EQ(log.text(), "\nline=\n "
                          "\nline=Disk: x heads, 63 s, 1 c\n "
                          "\ncciss line=Disk: x heads, 63 s, 1 c\n "
                          "\nFirst token=Disk:\nSecond token=x\nFirst token=heads,"
                          "\ntmpheads=0\ntmpsectors=63\ntmpcylinders=1");
}

TEST(FdiskGeometry, withoutADeviceNothingIsRun)
{
    const LogCapture log;
    DriveGeometry geometry;
    EXPECT_EQ(getFromFdisk(nullptr, &geometry), 0);
    EXPECT_EQ(getFromFdiskMount(nullptr, &geometry), 0);
    EXPECT_EQ(log.text(), "\nname=NULL\n\nname=NULL\n");
}

TEST(FdiskGeometry, aGenericNodeIsLookedUpAsItsDisk)
{
    const LogCapture log;
    DriveGeometry geometry;
    getFromFdisk("/dev/sgb", &geometry);
    EXPECT_EQ(log.text().find("\nname=/dev/sgb\n\ndevice=/dev/sdb\n\nrunning /sbin/fdisk -l\n"), 0U);
}

TEST(FdiskGeometry, aNameThatTheShellWouldTakeApartIsNotRun)
{
    char folder[] = "/tmp/fdisk_testXXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    const std::string mark = std::string(folder) + "/mark";
    for (const char* begin : {"/dev/cciss; touch ", "$(touch ", "`touch ", "x|touch ", "x&touch ", "x\ntouch "}) {
        DriveGeometry geometry;
        EXPECT_EQ(getFromFdiskMount((begin + mark).c_str(), &geometry), 0);
        EXPECT_NE(access(mark.c_str(), F_OK), 0) << begin;
    }
    EXPECT_EQ(remove(folder), 0);
}
