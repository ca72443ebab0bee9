// A sample of what invhw_faults does in full: calls of a scan that fail. Every run has to end by itself.

#include <gtest/gtest.h>

#include "FakeMachine.h"
#include "Faults.h"

// As many runs as fit an ordinary test, spread over the whole scan.
static constexpr size_t kRuns = 60;

class FaultSample : public testing::TestWithParam<const char*>
{
};

TEST_P(FaultSample, everyRunEndsByItself)
{
    FakeMachine machine = FakeMachine::open(std::string(INVHW_MACHINES) + "/" + GetParam());
    const std::vector<Fault> faults = planFaults(machine);
    ASSERT_GT(faults.size(), kRuns);
    for (size_t i = 0; i < kRuns; ++i) {
        const Fault& fault = faults[i * faults.size() / kRuns];
        EXPECT_EQ(tryFault(machine, fault), "") << fault.text();
    }
}

INSTANTIATE_TEST_SUITE_P(machine, FaultSample,
                         testing::Values("nothing-readable", "redhat9-kernel24", "release-file-two-lines", "ide-disks"),
                         [](const auto& machine) {
                             std::string name = machine.param;
                             for (char& c : name)
                                 c = c == '-' ? '_' : c;
                             return name;
                         });

TEST(Faults, wellFormedReportsPassTheCheck)
{
    EXPECT_EQ(checkReport("\n<a>\n<b version=\"1\">x & < y</b></a>\n\n<serviceDataList></serviceDataList>", true), "");
    EXPECT_EQ(checkReport("\n<serviceDataList><b>x</", false), "");
    EXPECT_EQ(checkReport("", false), "");
}

TEST(Faults, brokenReportsFailTheCheck)
{
    EXPECT_NE(checkReport("<serviceDataList><b></serviceDataList>", true), "");
    EXPECT_NE(checkReport("<a></b>", false), "");
    EXPECT_NE(checkReport("<serviceDataList>", true), "");
    EXPECT_NE(checkReport("<serviceDataList></serviceDat", true), "");
    EXPECT_NE(checkReport("", true), "");
}

// The faults strike where they are told to: a failing uname of the Operating System group leaves the version out.
TEST(Faults, theChosenCallFails)
{
    FakeMachine machine = FakeMachine::open(std::string(INVHW_MACHINES) + "/redhat9-kernel24");
    size_t versionsLost = 0;
    size_t architecturesLost = 0;
    for (const Fault& fault : planFaults(machine)) {
        if (fault.call.rfind("uname", 0) != 0)
            continue;
        ScanOptions options;
        options.faults = fault.setting;
        const ScanResult result = machine.scan(options);
        versionsLost += result.value("OperatingSystem", 0, "MajorVersion") == "0" ? 1 : 0;
        architecturesLost += result.value("OperatingSystem", 0, "OSArch").empty() ? 1 : 0;
    }
    EXPECT_EQ(versionsLost, 1u);
    EXPECT_EQ(architecturesLost, 1u);
}
