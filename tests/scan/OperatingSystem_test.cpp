// The Operating System group of whole scans.

#include <gtest/gtest.h>

#include "FakeMachine.h"

static constexpr char kGroup[] = "OperatingSystem";

static std::string valueOf(FakeMachine& machine, const std::string& name)
{
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    return result.value(kGroup, 0, name);
}

static FakeMachine machineWithRelease(const std::string& path, const std::string& text)
{
    FakeMachine machine;
    machine.file(path, text);
    return machine;
}

TEST(OperatingSystem, aMachineWithoutAReleaseFileIsLinux)
{
    FakeMachine machine;
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows(kGroup).size(), 1u);
    EXPECT_EQ(result.value(kGroup, 0, "Name"), "Linux");
    EXPECT_EQ(result.value(kGroup, 0, "DescriptionString"), "Linux");
    EXPECT_EQ(result.value(kGroup, 0, "Type"), "LINUX");
}

TEST(OperatingSystem, withoutUnameVersionsAreZeroAndTextsEmpty)
{
    FakeMachine machine;
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "MajorVersion"), "0");
    EXPECT_EQ(result.value(kGroup, 0, "MinorVersion"), "0");
    EXPECT_EQ(result.value(kGroup, 0, "SubVersion"), "");
    EXPECT_EQ(result.value(kGroup, 0, "OSArch"), "");
    EXPECT_FALSE(result.logHas("uname name="));
    EXPECT_TRUE(result.logHas("\nArch retrieved=\nKernel mode retrieved=\n"));
}

TEST(OperatingSystem, theKernelReleaseIsTakenApart)
{
    FakeMachine machine;
    machine.conf("uname release 2.4.21-4.ELsmp").conf("uname machine i686");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "MajorVersion"), "2");
    EXPECT_EQ(result.value(kGroup, 0, "MinorVersion"), "4");
    EXPECT_EQ(result.value(kGroup, 0, "SubVersion"), "21-4.ELsmp");
    EXPECT_EQ(result.value(kGroup, 0, "OSArch"), "i686");
}

TEST(OperatingSystem, aLongMachineNameIsCutAt19Characters)
{
    FakeMachine machine;
    machine.conf("uname machine abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(valueOf(machine, "OSArch"), "abcdefghijklmnopqrs");
}

TEST(OperatingSystem, theRedHatFileWinsOverTheSuSEFile)
{
    FakeMachine machine = machineWithRelease("/etc/redhat-release", "Red Hat Linux release 9 (Shrike)\n");
    machine.file("/etc/SuSE-release", "SuSE Linux 9.0 (PPC)\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "Name"), "Red Hat Linux release 9 (Shrike) ");
    EXPECT_EQ(result.value(kGroup, 0, "DescriptionString"), "Red Hat Linux release 9 (Shrike) ");
    EXPECT_EQ(result.value(kGroup, 0, "Type"), "LINUX");
    EXPECT_TRUE(result.logHas("\nOS Description retrieved=Red Hat Linux release 9 (Shrike) \n"));
}

TEST(OperatingSystem, everyReleaseFileIsAskedInTurn)
{
    const char* const paths[] = {"/etc/UnitedLinux-release", "/etc/SuSE-release", "/etc/turbolinux-release",
                                 "/etc/redhat-release"};
    FakeMachine machine;
    for (const char* path : paths) { // from the last to the first: each newcomer wins
        machine.file(path, std::string("from ") + path);
        EXPECT_EQ(valueOf(machine, "Name"), std::string("from ") + path);
    }
}

TEST(OperatingSystem, ppcInTheReleaseTextMakesItLinuxPPC)
{
    FakeMachine upper = machineWithRelease("/etc/SuSE-release", "SuSE Linux 7.3 (PPC)\n");
    EXPECT_EQ(valueOf(upper, "Type"), "Linux PPC");
    FakeMachine lower = machineWithRelease("/etc/SuSE-release", "SuSE Linux 7.3 (ppc)\n");
    EXPECT_EQ(valueOf(lower, "Type"), "LINUX");
}

TEST(OperatingSystem, anEmptyReleaseFileGivesLinuxAndNoOtherTestIsMade)
{
    FakeMachine machine = machineWithRelease("/etc/redhat-release", "");
    machine.file("/etc/.installed", "");
    EXPECT_EQ(valueOf(machine, "Name"), "Linux");
}

TEST(OperatingSystem, theInstalledMarkMakesItCaldera)
{
    FakeMachine machine = machineWithRelease("/etc/.installed", "whatever");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "Name"), "Caldera Linux");
    EXPECT_EQ(result.value(kGroup, 0, "DescriptionString"), "Caldera Linux");
    EXPECT_EQ(result.value(kGroup, 0, "Type"), "LINUX");
    EXPECT_FALSE(result.logHas("OS Description retrieved"));
}

TEST(OperatingSystem, theIssueFileMakesItCalderaWhenALineSaysSo)
{
    FakeMachine caldera = machineWithRelease("/etc/.issue", "\nWelcome\nCaldera OpenLinux 3.1\n");
    EXPECT_EQ(valueOf(caldera, "Name"), "Caldera Linux");
    FakeMachine other = machineWithRelease("/etc/.issue", "\nWelcome\ncaldera\n");
    EXPECT_EQ(valueOf(other, "Name"), "Linux");
}

TEST(OperatingSystem, theMessagesLocaleIsTheEnvironments)
{
    FakeMachine machine;
    EXPECT_EQ(valueOf(machine, "OSMessagesLocale"), "C");
    machine.env("LC_ALL", "C.UTF-8");
    EXPECT_EQ(valueOf(machine, "OSMessagesLocale"), "C.UTF-8");
}

TEST(OperatingSystem, aLocaleThatIsNotInstalledLeavesTheCurrentOne)
{
    FakeMachine machine;
    machine.env("LC_ALL", "xx_YY.nowhere");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value(kGroup, 0, "OSMessagesLocale"), "C");
    EXPECT_TRUE(result.logHas("\nKernel mode retrieved=\nsetlocale returned NULL\nEnd Group OperatingSystem"));
}

TEST(OperatingSystem, specialCharactersOfTheReleaseFileAreEscaped)
{
    FakeMachine machine = machineWithRelease("/etc/redhat-release", "A&B<C>");
    const ScanResult result = machine.scan();
    EXPECT_NE(result.report.find("<Name>A&amp;B&lt;C></Name>"), std::string::npos);
    EXPECT_EQ(result.value(kGroup, 0, "Name"), "A&B<C>");
}
