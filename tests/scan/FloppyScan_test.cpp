// The floppy probe in whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

static constexpr char kMedium[] = "FDGETPRM size 2880 sect 18 head 2 track 80 rate 0\n";

TEST(FloppyScan, aDiskOf1440KilobytesHasASizeOf1)
{
    FakeMachine machine;
    machine.device("/dev/fd0", std::string(kMedium) + "FDGETDRVTYP \"H1440\"\n");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_EQ(result.value("Storage", 0, "Type"), "Floppy/Diskette");
    EXPECT_EQ(result.value("Storage", 0, "Model"), "H1440");
    EXPECT_EQ(result.value("Storage", 0, "TotalSize"), "1");
    EXPECT_EQ(result.value("Storage", 0, "ID"), "d523a2c56d3e9d42e98120cc530a6ca2"); // of 80 18 2 1440
    EXPECT_TRUE(result.logHas("\nFloppy name=>/dev/fd0<\nFloppy errorcode=>0<"
                              "\nAdd Floppy index=>0< type=>29< model=>H1440< cyl=>80< sectors=>18< heads=>2< size "
                              "KB=>1440<"));
}

TEST(FloppyScan, anEmptyDriveHasARowWithoutGeometry)
{
    FakeMachine machine;
    machine.device("/dev/fd0", "FDGETPRM error ENODEV\nFDGETDRVTYP \"H1440\"\n");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_EQ(result.value("Storage", 0, "Model"), "H1440");
    for (const char* name : {"Cylinders", "Sectors", "Heads", "TotalSize"})
        EXPECT_EQ(result.value("Storage", 0, name), "0") << name;
}

TEST(FloppyScan, aDriveWithoutATypeHasARowWhenItHasADisk)
{
    FakeMachine machine;
    machine.device("/dev/fd0", std::string(kMedium) + "FDGETDRVTYP error ENODEV\n")
        .device("/dev/fd1", std::string(kMedium) + "FDGETDRVTYP \"(null)\"\n");
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 2U);
    EXPECT_EQ(result.value("Storage", 0, "Model"), "");
    EXPECT_EQ(result.value("Storage", 1, "Model"), "(null)");
}

TEST(FloppyScan, aDriveThatAnswersNothingHasNoRow)
{
    FakeMachine machine;
    machine.device("/dev/fd0", "FDGETPRM error ENODEV\nFDGETDRVTYP error ENXIO\n").device("/dev/fd1", "open EACCES\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("\nFloppy name=>/dev/fd0<\nFloppy errorcode=>6<"
                              "\nFloppy name=>/dev/fd1<\nFloppy errorcode=>20<"));
}

TEST(FloppyScan, aDriveWithNeitherDiskNorTypeHasTheErrorOfItsDisk)
{
    FakeMachine machine;
    machine.device("/dev/fd0", "FDGETPRM error ENODEV\nFDGETDRVTYP \"(null)\"\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("\nFloppy name=>/dev/fd0<\nFloppy errorcode=>19<"));
}

TEST(FloppyScan, onAnItaniumMachineNoDriveIsOpened)
{
    FakeMachine machine;
    machine.device("/dev/fd0", std::string(kMedium) + "FDGETDRVTYP \"H1440\"\n")
        .file("/proc/cpuinfo", "processor  : 0\narch       : IA-64\nfamily     : Itanium 2\n");
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("\nFloppy errorcode=>20<"));
}
