// The harness itself, where it could lie: what a machine lacks is not seen although the real computer has it.

#include <gtest/gtest.h>

#include "FakeMachine.h"

TEST(Harness, aMachineWithoutAnythingIsScanned)
{
    FakeMachine machine;
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    EXPECT_EQ(result.value("OperatingSystem", 0, "Name"), "Linux");
    EXPECT_EQ(result.report.find("<UNIXSystemParams"), std::string::npos);
}

TEST(Harness, givenFilesAreSeen)
{
    FakeMachine machine;
    machine.file("/etc/redhat-release", "Red Hat Linux release 9 (Shrike)\n");
    EXPECT_EQ(machine.scan().value("OperatingSystem", 0, "Name"), "Red Hat Linux release 9 (Shrike) ");
}
