// Hostile surroundings: whatever stands round a scan, it ends by itself and its report is whole as far as it can be.

#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "FakeMachine.h"
#include "Faults.h"

namespace fs = std::filesystem;

class Surroundings : public testing::Test
{
protected:
    void expectWholeReport(const ScanResult& result) const
    {
        EXPECT_TRUE(result.ended()) << result.errors;
        EXPECT_EQ(result.signal, 0);
        EXPECT_TRUE(result.report == expected) << result.report;
    }

    const std::string recorded = std::string(INVHW_MACHINES) + "/redhat9-kernel24";
    const std::string expected = readTextFile(recorded + "/expected.xml");
    FakeMachine machine = FakeMachine::open(recorded);
    ScanOptions options;
};

// The line that says that there is no log.
static const char kNoLog[] = "The libInvHW.log file is read only.\n";

TEST_F(Surroundings, theLogsNameIsAFolderThatCannotBeMoved)
{
    fs::create_directory(machine.workingFolder() + "/libInvHW.log");
    machine.conf("error change libInvHW.log EBUSY");
    const ScanResult result = machine.scan();
    expectWholeReport(result);
    EXPECT_EQ(result.errors, kNoLog);
}

TEST_F(Surroundings, theLogsNameIsAFolderThatIsMovedAway)
{
    fs::create_directory(machine.workingFolder() + "/libInvHW.log");
    const ScanResult result = machine.scan();
    expectWholeReport(result);
    EXPECT_TRUE(fs::is_directory(machine.workingFolder() + "/libInvHW.log.bk"));
    EXPECT_TRUE(result.logHas("Begin Group Processor"));
}

TEST_F(Surroundings, theLogsNameIsADanglingLink)
{
    fs::create_symlink("planted", machine.workingFolder() + "/libInvHW.log");
    const ScanResult result = machine.scan();
    expectWholeReport(result);
    EXPECT_EQ(result.errors, kNoLog);
    EXPECT_EQ(result.files.count("planted"), 0u);
}

TEST_F(Surroundings, theLogsFolderIsReadOnly)
{
    machine.conf("error open-write libInvHW.log EROFS").conf("error change libInvHW.log EROFS");
    const ScanResult result = machine.scan();
    expectWholeReport(result);
    EXPECT_EQ(result.errors, kNoLog);
    EXPECT_EQ(result.files.count("libInvHW.log"), 0u);
}

TEST_F(Surroundings, theCurrentFolderIsRemoved)
{
    options.removeWorkingFolder = true;
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(checkReport(result.report, true), "");
    EXPECT_EQ(result.errors, kNoLog);
    EXPECT_EQ(result.value("Processor", 0, "Family"), "Pentium 4");
}

TEST_F(Surroundings, standardInputIsClosed)
{
    options.closedStreams = {0};
    expectWholeReport(machine.scan(options));
}

TEST_F(Surroundings, standardErrorIsClosed)
{
    options.closedStreams = {2};
    const ScanResult result = machine.scan(options);
    expectWholeReport(result);
    EXPECT_TRUE(result.logHas("Begin Group Processor"));
}

// Neither log nor device is taken for the missing stream: the log holds no line of the report.
TEST_F(Surroundings, allStandardStreamsAreClosed)
{
    options.closedStreams = {0, 1, 2};
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended());
    EXPECT_EQ(result.report, "");
    EXPECT_EQ(result.log, readTextFile(recorded + "/expected.log"));
}

TEST_F(Surroundings, aClosedStandardOutputWithoutNullDeviceIsNoReportInTheLog)
{
    machine.conf("error open /dev/null ENOENT");
    for (const std::vector<int>& closed : {std::vector{1}, {0, 1}, {1, 2}, {0, 1, 2}}) {
        options.closedStreams = closed;
        const ScanResult result = machine.scan(options);
        EXPECT_TRUE(result.ended());
        EXPECT_EQ(result.report, "");
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.log, readTextFile(recorded + "/expected.log"));
    }
}

TEST_F(Surroundings, sixteenDescriptorsAreEnough)
{
    options.openFiles = 16;
    expectWholeReport(machine.scan(options));
}

#if !defined(__SANITIZE_ADDRESS__) // which reserves terabytes
TEST_F(Surroundings, sixtyFourMebibytesAreEnough)
{
    options.addressSpace = 64UL << 20;
    expectWholeReport(machine.scan(options));
}
#endif

// Of the recorded machine's two files only the log is larger than the limit.
TEST_F(Surroundings, aLimitOnTheSizeOfFilesCutsTheLogAlone)
{
    const std::string log = readTextFile(recorded + "/expected.log");
    options.fileSize = (expected.size() + log.size()) / 2;
    ASSERT_LT(expected.size(), options.fileSize);
    const ScanResult result = machine.scan(options);
    expectWholeReport(result);
    EXPECT_EQ(result.log, log.substr(0, options.fileSize));
}

TEST_F(Surroundings, aLimitOnTheSizeOfFilesCutsTheReport)
{
    options.fileSize = expected.size() / 2;
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(result.report, expected.substr(0, options.fileSize));
    EXPECT_EQ(result.log.size(), options.fileSize);
}

#if !defined(__SANITIZE_ADDRESS__) // whose frames are larger
TEST_F(Surroundings, aStackOf128KibibytesIsEnough)
{
    options.stackSize = 128UL << 10;
    for (const char* name : {"redhat9-kernel24", "modern-server", "scsi-server", "smart-raid-server", "mounts"}) {
        const std::string folder = std::string(INVHW_MACHINES) + "/" + name;
        const ScanResult result = FakeMachine::open(folder).scan(options);
        EXPECT_TRUE(result.ended()) << name << " signal " << result.signal;
        EXPECT_EQ(result.report, readTextFile(folder + "/expected.xml")) << name;
    }
}
#endif

TEST_F(Surroundings, theLocaleIsNotInstalled)
{
    options.environment = {{"LANG", "xx_YY.UTF-8"}, {"LOCPATH", "/nowhere"}};
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(checkReport(result.report, true), "");
    EXPECT_EQ(result.value("OperatingSystem", 0, "OSMessagesLocale"), "C");
    EXPECT_EQ(result.value("Regional", 0, "Local"), "");
    EXPECT_TRUE(result.logHas("setlocale returned NULL"));
}

TEST_F(Surroundings, aThousandVariables)
{
    for (int i = 0; i < 1000; ++i)
        options.environment["VARIABLE_" + std::to_string(i)] = std::string(100, 'x');
    expectWholeReport(machine.scan(options));
}

TEST_F(Surroundings, variablesOfTheShellHaveOddValues)
{
    options.environment = {{"PATH", ".:/tmp:"}, {"IFS", "/sbin"}, {"HOME", ""}, {"SHELL", "%s%n"}, {"PWD", "\xFF\n"}};
    expectWholeReport(machine.scan(options));
}

TEST_F(Surroundings, codeSetVariablesAreOdd)
{
    for (const char* name : {"KST_CODESET", "KSTDIR", "NLSPATH"})
        options.environment[name] = std::string(5000, '/') + "%s";
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(checkReport(result.report, true), "");
}

TEST_F(Surroundings, standardOutputIsFull)
{
    options.standardOutput = "/dev/full";
    const ScanResult result = machine.scan(options);
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(result.logHas("Begin Group LPar"));
}

TEST_F(Surroundings, twoScansAtOnceInOneFolder)
{
    FakeMachine other = FakeMachine::open(recorded);
    options.workingFolder = machine.workingFolder();
    for (int round = 0; round < 5; ++round) {
        ScanResult theirs;
        std::thread second([&] { theirs = other.scan(options); });
        const ScanResult ours = machine.scan();
        second.join();
        expectWholeReport(ours);
        expectWholeReport(theirs);
    }
}
