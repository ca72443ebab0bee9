// Scans of the machine that the tests run on.

#include <algorithm>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "tests/ctl/CallWatch.h"
#include "tests/ctl/SmallMachine.h"
#include "tests/unit/host/Rights.h"

using nlohmann::json;

TEST(LiveScan, startsNoOtherProgram)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    std::vector<std::string> started;
    CallWatch watch({SYS_execve, SYS_execveat}, false, [&](const WatchedCall& call) {
        started.push_back(call.text(call.number == SYS_execve ? 0 : 1).value_or("?"));
        return Verdict();
    });
    Program program({"scan", "-f", "json"});
    const ProgramResult result = watch.run(program);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_GT(result.report()["groups"].size(), 5u);
    EXPECT_EQ(started, std::vector<std::string>{INVHWCTL_PROGRAM}) << "only the scan itself";
}

// That the test above sees a program which is started.
TEST(LiveScan, wouldBeSeenToStartAnother)
{
    if (!CallWatch::isPossible())
        GTEST_SKIP() << "no process can be watched here (seccomp)";
    size_t started = 0;
    CallWatch watch({SYS_execve}, false, [&](const WatchedCall&) {
        ++started;
        return Verdict();
    });
    Program program({"-c", "/bin/true; /bin/true"});
    program.path("/bin/sh");
    EXPECT_EQ(watch.run(program).status, 0);
    EXPECT_EQ(started, 3u);
}

namespace
{
json statusOf(const json& groups, const std::string& name)
{
    for (const json& row : groups["ScanStatus"])
        if (row["Group"] == name)
            return row;
    return {};
}
} // namespace

// As a container's filter does it.
TEST(LiveScan, tellsOfCallsThatAreRefused)
{
    const ProgramResult result = [] {
        Program program({"scan", "-f", "json", "--group", "IP Address", "--group", "Route", "--group", "Memory"});
        program.before([] { denyCall(SYS_socket, EPERM); });
        return program.run();
    }();
    ASSERT_EQ(result.status, 0) << result.errors;
    const json groups = result.report()["groups"];
    EXPECT_EQ(groups["Memory"].size(), 1u);
    const std::pair<const char*, const char*> expected[] = {{"IP Address", "RTM_GETLINK: Operation not permitted"},
                                                            {"Route", "RTM_GETROUTE: Operation not permitted"}};
    for (const auto& [group, reason] : expected) {
        const json status = statusOf(groups, group);
        EXPECT_EQ(status["Result"], "Refused") << status;
        EXPECT_NE(status.value("Reason", "").find(reason), std::string::npos) << status;
    }
}

namespace
{
json groupsAs(const std::function<void()>& before, const std::vector<std::string>& arguments)
{
    Program program(arguments);
    program.before(before);
    const ProgramResult result = program.run();
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return result.report()["groups"];
}

void becomeOrdinary()
{
    becomeOrdinaryUser();
}
} // namespace

TEST(OrdinaryUser, hasEveryGroupThatNeedsNoRights)
{
    const json asRoot = groupsAs({}, {"scan", "-f", "json"});
    const json asUser = groupsAs(becomeOrdinary, {"scan", "-f", "json"});
    for (const char* group : {"Processor", "Memory", "OperatingSystem", "IPAddress", "Route", "NetworkAdapter",
                              "Storage", "PCIDevice", "Partition", "Regional", "ScanInfo", "UNIXSystemParams"}) {
        if (!asRoot.contains(group))
            continue;
        ASSERT_TRUE(asUser.contains(group)) << group << ": " << statusOf(asUser, group);
        EXPECT_EQ(asUser[group].size(), asRoot[group].size()) << group;
    }
}

// Where the firmware's table, serial numbers and a disk's page are root's alone.
TEST(OrdinaryUser, isToldWhatIsRefused)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "the files are nobody's to refuse";
    const Tree tree;
    addSmallMachine(tree);
    const std::vector<std::string> arguments{"scan", "--root", tree.folder(), "-f", "json"};
    const json whole = groupsAs({}, arguments);
    for (const char* path : {"/sys/firmware/dmi/tables/DMI", "/sys/firmware/dmi/tables/smbios_entry_point",
                             "/sys/class/dmi/id/product_serial", "/sys/class/dmi/id/product_uuid"})
        ASSERT_EQ(chmod(tree.at(path).c_str(), 0400), 0);
    const json groups = groupsAs(becomeOrdinary, arguments);

    const json modules = statusOf(groups, "Memory Modules");
    EXPECT_EQ(modules["Result"], "Refused") << modules;
    EXPECT_NE(modules["Reason"].get<std::string>().find("/sys/firmware/dmi/tables/DMI: Permission denied"),
              std::string::npos)
        << modules;
    EXPECT_FALSE(groups.contains("MemoryModules"));
    const json component = statusOf(groups, "ComponentID");
    EXPECT_EQ(component["Result"], "Collected");
    EXPECT_NE(component["Reason"].get<std::string>().find("Permission denied"), std::string::npos) << component;
    EXPECT_EQ(groups["ComponentID"][0]["Manufacturer"], whole["ComponentID"][0]["Manufacturer"]);
    EXPECT_FALSE(groups["ComponentID"][0].contains("SerialNumber"));
    for (const char* group : {"Processor", "OperatingSystem", "Storage", "DiskPartition", "IPAddress", "Route",
                              "NetworkAdapter", "Partition", "PCIDevice", "Site", "NUMANode"})
        EXPECT_EQ(groups[group], whole[group]) << group;
}
