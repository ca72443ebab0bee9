// The Storage group in whole scans: the order of the probes, what they share and what decides whether they run.

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "FakeMachine.h"

namespace fs = std::filesystem;

namespace
{

constexpr char kLoadModule[] = "/sbin/modprobe --first-time sg 2>modprobe.error";
constexpr char kUnloadModule[] = "/sbin/modprobe --first-time -r sg 2>/dev/null";
constexpr char kCdRom[] = "12 00 00 00 FF 00 = 05 80 02 02 1F 00 00 00 \"PIONEER DVD-ROM DVD-303 1.10\"\n";

FakeMachine withIDEDisks(int count)
{
    FakeMachine machine;
    for (int i = 0; i < count; ++i) {
        const std::string folder = std::string("/proc/ide/ide0/hd") + static_cast<char>('a' + i);
        machine.file(folder + "/media", "disk\n").file(folder + "/capacity", "78165360\n");
    }
    return machine;
}

FakeMachine withFloppy()
{
    FakeMachine machine;
    machine.device("/dev/fd0", "FDGETPRM size 2880 sect 18 head 2 track 80 rate 0\nFDGETDRVTYP \"H1440\"\n");
    return machine;
}

FakeMachine withBackup(const std::string& process)
{
    FakeMachine machine = withFloppy();
    machine.command("/bin/ps -ef", "UID PID CMD\nroot 7 " + process + "\n");
    return machine;
}

size_t drivesOf(FakeMachine machine)
{
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    return result.rows("Storage").size();
}

// The calls of a scan, "number name subject" each.
std::string callsOf(FakeMachine& machine, ScanResult* result)
{
    ScanOptions options;
    options.countFile = machine.folder() + "/calls";
    *result = machine.scan(options);
    EXPECT_TRUE(result->ended()) << result->errors;
    return readTextFile(options.countFile);
}

bool has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(StorageScan, aMachineWithoutDrivesHasNoRows)
{
    FakeMachine machine;
    const ScanResult result = machine.scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("\nafter GROUP_END Storage - returning table"));
}

TEST(StorageScan, theIndexRunsOnAcrossTheProbes)
{
    FakeMachine machine = withIDEDisks(2);
    machine.device("/dev/sga", std::string("kind char\nsg ") + kCdRom)
        .device("/dev/fd0", "FDGETPRM size 2880 sect 18 head 2 track 80 rate 0\nFDGETDRVTYP \"H1440\"\n");
    const ScanResult result = machine.scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    ASSERT_EQ(result.rows("Storage").size(), 4U);
    const char* types[] = {"Hard Disk", "Hard Disk", "CD-ROM", "Floppy/Diskette"};
    for (size_t row = 0; row < 4; ++row) {
        EXPECT_EQ(result.value("Storage", row, "Index"), std::to_string(row + 1));
        EXPECT_EQ(result.value("Storage", row, "Type"), types[row]);
    }
}

TEST(StorageScan, everyProbeIsFramedWithTheTime)
{
    FakeMachine machine;
    machine.conf("clock 1066737909").command("/bin/mount", "/dev/hda1 on / type ext3 (rw)\n");
    const ScanResult result = machine.scan();
    const std::string time = "\n Tue Oct 21 12:05:09 2003\n ";
    EXPECT_TRUE(result.logHas("\nBegin Group Storage getTable()" + time + "call gatherIDEDriveInformation()" + time +
                              " exit gatherIDEDriveInformation()" + time + "call gatherDAC960RAIDDriveInformation()" +
                              time + " exit gatherDAC960RAIDDriveInformation()" + time +
                              "call gatherCCISSDriveInformation()"));
    EXPECT_TRUE(result.logHas(" exit gatherCCISSDriveInformation()" + time + "call gatherSCSIDriveInformation()"));
    EXPECT_TRUE(result.logHas(" exit gatherSCSIDriveInformation()" + time + "call gatherFloppyDriveInformation()" +
                              time + " exit gatherFloppyDriveInformation()\nEnd Group Storage getTable()"));
}

TEST(StorageScan, aRunningBackupLeavesTheTableEmpty)
{
    EXPECT_EQ(drivesOf(withBackup("nsrstage")), 1U); // nobody asked for the check
    for (const char* process : {"nsrstage", "/usr/bin/save", "save -s server /home", "recover", "nsrclone"}) {
        for (const char* value : {"", "1"}) {
            FakeMachine machine = withBackup(process);
            machine.env("CHECK_ULTRIUM_TAPE_RUNNING", value);
            EXPECT_EQ(drivesOf(std::move(machine)), 0U) << process;
        }
    }
    FakeMachine machine = withBackup("/usr/sbin/saved");
    machine.env("CHECK_ULTRIUM_TAPE_RUNNING", "1");
    EXPECT_EQ(drivesOf(std::move(machine)), 1U);
}

TEST(StorageScan, withoutAListOfProcessesNoBackupRuns)
{
    FakeMachine machine = withFloppy();
    machine.env("CHECK_ULTRIUM_TAPE_RUNNING", "1").commandFails("/bin/ps -ef");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_TRUE(result.logHas("\nisUltrium_tape_QX9031_running(): running ps -ef\n"));
}

TEST(StorageScan, theModuleIsUnloadedAfterTheScanThatLoadedIt)
{
    FakeMachine machine;
    machine.command(kLoadModule, "");
    ScanResult result;
    EXPECT_TRUE(has(callsOf(machine, &result), kUnloadModule));
    EXPECT_EQ(result.files.count("modprobe.error"), 0U);
}

TEST(StorageScan, aModuleThatWasThereStays)
{
    FakeMachine machine;
    machine.commandErrors(kLoadModule, "FATAL: Module sg already in kernel.\n");
    ScanResult result;
    EXPECT_FALSE(has(callsOf(machine, &result), kUnloadModule));
    EXPECT_EQ(result.files.count("modprobe.error"), 0U);
}

TEST(StorageScan, aModuleThatNobodyCouldLoadStays)
{
    for (const char* command : {kLoadModule, "cat modprobe.error 2>/dev/null"}) {
        FakeMachine machine;
        machine.commandFails(command);
        ScanResult result;
        EXPECT_FALSE(has(callsOf(machine, &result), kUnloadModule)) << command;
    }
}

TEST(StorageScan, aLinkPlantedUnderTheErrorFilesNameIsNotFollowed)
{
    FakeMachine machine;
    const std::string victim = machine.folder() + "/victim";
    writeTextFile(victim, "precious\n");
    fs::create_symlink(victim, machine.workingFolder() + "/modprobe.error");
    machine.commandErrors(kLoadModule, "FATAL: Module sg already in kernel.\n");
    ScanResult result;
    EXPECT_TRUE(has(callsOf(machine, &result), kLoadModule));
    EXPECT_EQ(readTextFile(victim), "precious\n");
    EXPECT_FALSE(fs::is_symlink(machine.workingFolder() + "/modprobe.error"));
}

TEST(StorageScan, aPipePlantedUnderTheErrorFilesNameDoesNotHoldTheScan)
{
    FakeMachine machine;
    ASSERT_EQ(mkfifo((machine.workingFolder() + "/modprobe.error").c_str(), 0600), 0);
    machine.command(kLoadModule, "");
    ScanResult result;
    EXPECT_TRUE(has(callsOf(machine, &result), kUnloadModule));
}

TEST(StorageScan, withALinkThatCannotBeTakenAwayNoModuleIsLoaded)
{
    FakeMachine machine;
    const std::string victim = machine.folder() + "/victim";
    writeTextFile(victim, "precious\n");
    fs::create_symlink(victim, machine.workingFolder() + "/modprobe.error");
    machine.conf("error change modprobe.error EACCES").command(kLoadModule, "");
    ScanResult result;
    const std::string calls = callsOf(machine, &result);
    EXPECT_FALSE(has(calls, kLoadModule));
    EXPECT_FALSE(has(calls, kUnloadModule));
    EXPECT_EQ(readTextFile(victim), "precious\n");
}

TEST(StorageScan, theModuleStaysLoadedWhileABackupRuns)
{
    FakeMachine machine = withBackup("nsrstage");
    machine.command(kLoadModule, "").env("CHECK_ULTRIUM_TAPE_RUNNING", "1");
    ScanResult result;
    EXPECT_FALSE(has(callsOf(machine, &result), kUnloadModule));
    EXPECT_FALSE(result.logHas("after GROUP_END Storage"));
}

TEST(StorageScan, numberedNodesAreNotTriedBesideLetteredOnes)
{
    FakeMachine machine;
    machine.device("/dev/sga", std::string("kind char\nsg ") + kCdRom)
        .device("/dev/sg0", std::string("kind char\nsg ") + kCdRom);
    ScanResult result;
    const std::string calls = callsOf(machine, &result);
    EXPECT_EQ(result.rows("Storage").size(), 1U);
    EXPECT_TRUE(has(calls, "/dev/sga"));
    EXPECT_FALSE(has(calls, "/dev/sg0"));
}

TEST(StorageScan, behind255GenericNodesNoFloppyIsTried)
{
    for (const int nodes : {254, 255}) {
        FakeMachine machine = withFloppy();
        for (int number = 0; number < nodes; ++number)
            machine.device("/dev/sg" + std::to_string(number), "kind char\nopen EACCES\n");
        const ScanResult result = machine.scan();
        ASSERT_TRUE(result.ended()) << result.errors;
        EXPECT_EQ(result.rows("Storage").size(), nodes == 255 ? 0U : 1U);
        const std::string blocked = "\n this is the pre-increment value  lastdrive  = 255 "
                                    "\n we have already processed a possibly valid dev/sg255";
        // The end of the SCSI probe and the begin of the floppy probe.
        EXPECT_EQ(result.logHas("SCSI name=>/dev/sg254<\nSCSI errorcode=>10<" + blocked), nodes == 255);
        EXPECT_EQ(result.logHas("call gatherFloppyDriveInformation()" + blocked), nodes == 255);
    }
}
