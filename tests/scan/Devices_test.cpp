// The storage classes and look-ups for other programs: what the scan itself does not ask of them, on machines that the
// test makes.

#include <gtest/gtest.h>

#include "FakeMachine.h"

// What the probe prints for pairs of action and argument.
static std::string ask(FakeMachine& machine, const std::vector<std::string>& questions)
{
    ScanOptions options;
    options.program = DEVICE_PROBE;
    options.arguments = questions;
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    return result.report;
}

static const std::string kDisk = "/proc/ide/ide0/hda";
static const std::string kCdRom = "/proc/ide/ide1/hdc";

TEST(IDEDevice, aDiskOfAnySizeHasAMedium)
{
    FakeMachine machine;
    machine.file(kDisk + "/media", "disk\n").file(kDisk + "/capacity", "78165360\n");
    EXPECT_EQ(ask(machine, {"ide", kDisk}), "sector 0, medium 1, next none\n");
    machine.file(kDisk + "/capacity", "0\n");
    EXPECT_EQ(ask(machine, {"ide", kDisk}), "sector 0, medium 0, next none\n");
    machine.without(kDisk + "/capacity");
    EXPECT_EQ(ask(machine, {"ide", kDisk}), "sector 0, medium 0, next none\n");
}

TEST(IDEDevice, aCdRomHasAMediumWhenItsDriveSaysSo)
{
    static constexpr struct {
        const char* answers;
        const char* medium;
    } kCases[] = {
        {"CDROM_DRIVE_STATUS 4\n", "medium 1"},
        {"CDROM_DRIVE_STATUS 1\n", "medium 0"}, // no disc
        {"CDROM_DRIVE_STATUS 2\n", "medium 0"}, // tray open
        {"CDROM_DRIVE_STATUS 0\n", "medium 0"}, // no information
        {"CDROM_DRIVE_STATUS error EIO\n", "medium 0"},
        {"CDROM_DRIVE_STATUS 4\nopen ENOMEDIUM\n", "medium 0"},
        {"", "medium 0"},
    };
    for (const auto& c : kCases) {
        FakeMachine machine;
        machine.file(kCdRom + "/media", "cdrom\n").file(kCdRom + "/capacity", "1000\n").device("/dev/hdc", c.answers);
        EXPECT_NE(ask(machine, {"ide", kCdRom}).find(c.medium), std::string::npos) << c.answers;
    }
}

TEST(IDEDevice, theNextOneIsThatWhichTheKernelListsBehindIt)
{
    FakeMachine machine;
    machine.file(kDisk + "/media", "disk\n").file(kCdRom + "/media", "cdrom\n");
    EXPECT_EQ(ask(machine, {"ide", kDisk, "ide", kCdRom, "ide", "/proc/ide/ide0/hdb"}),
              "sector 0, medium 0, next " + kCdRom +
                  "\nsector 0, medium 0, next none\nsector 0, medium 0, next none\n");
    machine.conf("order /proc/ide ide1 ide0");
    EXPECT_EQ(ask(machine, {"ide", kCdRom}), "sector 0, medium 0, next " + kDisk + "\n");
}

static constexpr char kFloppy[] = "FDGETPRM size 2880 sect 18 head 2 track 80\nFDGETDRVTYP \"H1440\"\n";

TEST(FloppyDevice, hasAnEmptySerialNumberATypeAndARemovableDisk)
{
    FakeMachine machine;
    machine.device("/dev/fd0", kFloppy).device("/dev/fd1", "FDGETDRVTYP \"H1440\"\n");
    EXPECT_EQ(
        ask(machine, {"floppy", "/dev/fd0", "floppy", "/dev/fd1"}),
        "serial \"\", type \"floppy\", removable 1, medium 1\nserial \"\", type \"floppy\", removable 1, medium 0\n");
}

TEST(FloppyDevice, tellsThroughAnOpenNodeWhatTheDriverAnswers)
{
    FakeMachine machine;
    machine.device("/dev/fd0", kFloppy).device("/dev/fd1", "FDGETDRVTYP \"(null)\"\nFDGETPRM error ENODEV\n");
    // 20 is the error code of the drive that was not there; "no such folder" reads as ENOTDIR.
    EXPECT_EQ(ask(machine, {"floppy-node", "/dev/fd0"}),
              "geometry 0 ENOTDIR, type 0 ENOTDIR: 80/2/18 \"H1440\" medium 1\n");
    EXPECT_EQ(ask(machine, {"floppy-node", "/dev/fd1"}),
              "geometry 10 ENODEV, type 10 ENODEV: 0/0/0 \"(null)\" medium 0\n");
    EXPECT_EQ(ask(machine, {"floppy-node", "/dev/none"}), "geometry 10 EBADF, type 10 EBADF: 0/0/0 \"\" medium 0\n");
}

TEST(SmartRAIDStatus, isReadDiskByDisk)
{
    FakeMachine machine;
    EXPECT_EQ(ask(machine, {"smart", "1"}), "0 disks: 0 0 0\n");
    machine.file("/proc/driver/cciss/cciss0", "cciss0: Compaq Smart Array 5i\n"
                                              "cciss/c0d0: blksz=512 nr_blocks=71122560\n"
                                              "cciss/c0d1: blksz=512 nr_blocks=2047\n");
    EXPECT_EQ(ask(machine, {"smart", "3"}), "2 disks: 0 0 35560960 512 0\n");
}

TEST(FdiskLookup, writesFourOutputsOrNone)
{
    FakeMachine machine;
    machine.command("/sbin/fdisk -l", "Disk /dev/rd/c0d0: 255 heads, 63 sectors, 17849 cylinders\n")
        .command("/sbin/fdisk -l /dev/cciss/c0d0 2>/dev/null", "255 heads, 63 sectors/track, 8854 cylinders\n");
    EXPECT_EQ(ask(machine, {"fdisk", "/dev/rd/c0d0", "fdisk", "/dev/rd/c0d1"}),
              "1: 255 heads, 17849 cylinders, 63 sectors, 765756 kB\n0: 1 heads, 2 cylinders, 3 sectors, 4 kB\n");
    EXPECT_EQ(ask(machine, {"fdisk-mount", "/dev/cciss/c0d0", "fdisk-mount", "/dev/cciss/c0d1"}),
              "1: 255 heads, 8854 cylinders, 63 sectors, 4010891 kB\n0: 1 heads, 2 cylinders, 3 sectors, 4 kB\n");
}
