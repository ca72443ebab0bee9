#include "tests/ctl/Faults.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "tests/ctl/SmallMachine.h"

#if !defined(__SANITIZE_ADDRESS__) // whose own calls would fail, and end the program
namespace
{
// A sample of what ./dev faults does.
void trySome(const std::string& root, const std::vector<std::string>& groups, size_t every)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    for (const std::string& group : groups) {
        FaultyScan scan(root, group);
        const std::vector<CallFault> faults = scan.plan();
        ASSERT_GT(faults.size(), 50u) << group;
        for (size_t i = 0; i < faults.size(); i += every)
            EXPECT_EQ(scan.attempt(faults[i]), "") << group << ": " << faults[i].text();
    }
}
} // namespace

TEST(Faults, ofACopysScanEndInAReport)
{
    const Tree tree;
    addSmallMachine(tree);
    trySome(tree.folder(), {"Storage", "Memory Modules", "Site"}, 13);
}

TEST(Faults, ofALiveScanEndInAReport)
{
    trySome("", {"Route", "Network Adapter", "Partition"}, 23);
}
#endif

// That a fault is met: a call that fails for good is seen in the status.
TEST(Faults, areMadeWhereTheyArePlanned)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    const Tree tree;
    addSmallMachine(tree);
    FaultyScan scan(tree.folder(), "Memory");
    const std::vector<CallFault> faults = scan.plan();
    const auto opensRoot = std::find_if(faults.begin(), faults.end(),
                                        [](const CallFault& fault) { return fault.process == 0 && fault.call == 0; });
    ASSERT_NE(opensRoot, faults.end());
    EXPECT_EQ(opensRoot->number, SYS_openat);
    CallFault killed = *opensRoot;
    killed.verdict = {Verdict::Kind::Kill};
    EXPECT_EQ(scan.attempt(killed), "signal 9");
}
