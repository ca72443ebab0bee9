// Copies of machines that somebody else made: whatever stands in the place of a file or a folder, a scan is bounded in
// time and memory, tells of it in Scan Status, and loses nothing else.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/ctl/Program.h"
#include "tests/ctl/SmallMachine.h"

namespace fs = std::filesystem;
using nlohmann::json;
using std::chrono::milliseconds;
using std::chrono::seconds;

namespace
{
constexpr milliseconds kDeadline(5000); // of a scan that asks for no other
constexpr milliseconds kBeyond(500);    // that a scan may take longer
constexpr milliseconds kMostCpu(kIsSanitized ? 20000 : 4000);
constexpr long kMostKiB = kIsSanitized ? 1500 * 1024 : 200 * 1024;

json groupsOf(const ProgramResult& result)
{
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_LT(result.peakKiB, kMostKiB);
    json report = result.report();
    EXPECT_TRUE(report.is_object()) << result.output;
    return report.is_object() ? report["groups"] : json::object();
}

// What a scan of the tree gave; fails where it took more than it may. The deadline is far, so that a machine which is
// busy with other things does not change what is found.
json scan(const Tree& tree)
{
    const ProgramResult result = Program({"scan", "--root", tree.folder(), "-f", "json", "--deadline", "60"}).run();
    EXPECT_LT(result.cpu, kMostCpu);
    return groupsOf(result);
}

// The same with the deadline that a scan has unless another is asked for.
json scanWithDeadline(const Tree& tree)
{
    const ProgramResult result = Program({"scan", "--root", tree.folder(), "-f", "json"}).run();
    EXPECT_LT(result.took, kDeadline + kBeyond * (kIsSanitized ? 12 : 1));
    return groupsOf(result);
}

// Result and reason of every group, by the group's name.
std::map<std::string, std::string> reasonsOf(const json& groups)
{
    std::map<std::string, std::string> reasons;
    for (const json& row : groups["ScanStatus"])
        reasons[row["Group"]] = row["Result"].get<std::string>() + ": " + row.value("Reason", "");
    return reasons;
}

// The name of a group's member: the catalog's without blanks.
std::string elementOf(std::string group)
{
    std::erase(group, ' ');
    return group;
}

// The rows of all groups but Scan Status.
json rowsOf(json groups)
{
    groups.erase("ScanStatus");
    return groups;
}

std::string differenceOf(const json& left, const json& right)
{
    return json::diff(left, right).dump(1);
}

// The groups whose reason names the path.
std::set<std::string> groupsThatTell(const json& groups, const std::string& path)
{
    std::set<std::string> names;
    for (const auto& [group, reason] : reasonsOf(groups))
        if (reason.find(path) != std::string::npos)
            names.insert(group);
    return names;
}

// The files of the tree that are neither links nor the recording, as the machine sees them.
std::vector<std::string> filesOf(const Tree& tree)
{
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(tree.folder()))
        if (entry.is_regular_file() && !entry.is_symlink() && entry.path().filename() != "invhw-kernel.json")
            files.push_back(entry.path().string().substr(tree.folder().size()));
    std::sort(files.begin(), files.end());
    return files;
}

// Files whose name alone says something, whatever they are.
bool tellsByItsName(const std::string& path)
{
    return path.ends_with("/sda1/partition") || path.ends_with("/vulnerabilities/meltdown");
}

// In the place of a file.
struct Hostility {
    const char* name;
    void (*make)(const Tree& tree, const std::string& path);
    const char* told; // in the reasons of the groups that wanted the file; null when nothing need be
};

const Hostility kHostilities[] = {
    {"FIFO", [](const Tree& tree, const std::string& path) { tree.fifo(path); }, "no regular file"},
    {"sparse file", [](const Tree& tree, const std::string& path) { tree.sparse(path, off_t{1} << 40); }, nullptr},
    {"link out of the root",
     [](const Tree& tree, const std::string& path) { tree.link(path, "/../../../../etc/passwd"); }, nullptr},
    {"link loop", [](const Tree& tree, const std::string& path) { tree.link(path, fs::path(path).filename()); },
     "Too many levels of symbolic links"},
    {"folder", [](const Tree& tree, const std::string& path) { tree.folder(path); }, nullptr},
};
} // namespace

TEST(HostileRoot, aSmallMachineGivesItsGroups)
{
    const Tree tree;
    addSmallMachine(tree);
    const json groups = scan(tree);
    for (const char* group : {"ComponentID",
                              "Processor",
                              "ProcessorVulnerability",
                              "NUMANode",
                              "Memory",
                              "MemoryModules",
                              "OperatingSystem",
                              "Storage",
                              "DiskPartition",
                              "LogicalDrive",
                              "IPAddress",
                              "Route",
                              "NetworkAdapter",
                              "Regional",
                              "UNIXSystemParams",
                              "PCSystemParams",
                              "ScanInfo",
                              "Partition",
                              "SMBIOS",
                              "SystemEnclosure",
                              "Firmware",
                              "PCIDevice",
                              "Site",
                              "MachineIdentity"})
        EXPECT_TRUE(groups.contains(group)) << group << ": " << reasonsOf(groups)[group];
    const std::set<std::string> kWithoutDevices = {"Modem", "Video"}; // whose folders hold other things
    for (const auto& [group, reason] : reasonsOf(groups))
        if (kWithoutDevices.contains(group))
            EXPECT_EQ(reason, "Empty: ") << group;
        else
            EXPECT_TRUE(reason == "Collected: " || reason == "No Source: ") << group << ": " << reason;
}

// Every file of the machine in turn. What cannot be read is at worst as if it were not there, and is told.
TEST(HostileRoot, anythingInThePlaceOfAFileCostsThatFileAlone)
{
    const Tree tree;
    addSmallMachine(tree);
    const json whole = scan(tree);
    const size_t step = kIsSanitized ? 7 : 1;
    const std::vector<std::string> files = filesOf(tree);
    for (size_t i = 0; i < files.size(); i += step) {
        const std::string& path = files[i];
        const std::string aside = tree.folder() + ".aside";
        fs::rename(tree.at(path), aside);
        const json without = scan(tree);
        for (const Hostility& hostility : kHostilities) {
            hostility.make(tree, path);
            const json groups = scan(tree);
            EXPECT_TRUE(tellsByItsName(path) || rowsOf(groups) == rowsOf(without))
                << hostility.name << " " << path << differenceOf(rowsOf(without), rowsOf(groups));
            if (hostility.told != nullptr && rowsOf(without) != rowsOf(whole)) {
                EXPECT_FALSE(groupsThatTell(groups, hostility.told).empty()) << hostility.name << " " << path;
            }
            fs::remove_all(tree.at(path));
        }
        fs::rename(aside, tree.at(path));
    }
    EXPECT_EQ(scan(tree), whole) << "the machine is as it was";
}

TEST(HostileRoot, foldersOfAHundredThousandNamesAreBoundedAndTold)
{
    const Tree tree;
    addSmallMachine(tree);
    const Tree other;
    constexpr int kNames = 100000;
    constexpr const char* kTold = ": more than 65536 names";
    const std::pair<std::string, bool> kFolders[] = {
        {"/etc/invhw/site.d", true},        {"/run/systemd/system", true},
        {"/run/systemd/users", true},       {"/sys/block", true},
        {"/sys/bus/pci/devices", true},     {"/sys/class/dmi/id", false},
        {"/sys/class/net", true},           {"/sys/class/scsi_tape", true},
        {"/sys/devices/system/cpu", false}, {"/sys/devices/system/cpu/vulnerabilities", true},
        {"/sys/devices/system/node", true}, {"/sys/devices/virtual/block/md0/slaves", true}};
    for (int i = 0; i < kNames; ++i)
        if (mknod(other.at("/n" + std::to_string(i)).c_str(), S_IFREG | 0644, 0) != 0)
            FAIL() << "no file system with so many names";
    for (const auto& [path, isListed] : kFolders) {
        const std::string aside = tree.folder() + ".aside";
        const bool wasThere = fs::exists(tree.at(path));
        if (wasThere)
            fs::rename(tree.at(path), aside);
        tree.folder(fs::path(path).parent_path());
        const json without = scan(tree);
        fs::rename(other.folder(), tree.at(path));
        const json groups = scanWithDeadline(tree);
        fs::rename(tree.at(path), other.folder());
        if (wasThere)
            fs::rename(aside, tree.at(path));
        EXPECT_EQ(!groupsThatTell(groups, kTold).empty() || !groupsThatTell(groups, "not ready after").empty(),
                  isListed)
            << path;
        for (const auto& [group, reason] : reasonsOf(groups)) {
            if (reason.find(kTold) != std::string::npos || reason.starts_with("Timed Out"))
                continue;
            const std::string element = elementOf(group);
            EXPECT_EQ(reason, reasonsOf(without)[group]) << path << " " << group;
            EXPECT_EQ(groups.value(element, json()), without.value(element, json())) << path << " " << group;
        }
    }
}

// The zone is read for every group and is the source of one: what stands in its place is told by that one alone.
TEST(HostileRoot, aZoneThatCannotBeReadIsNotEveryGroupsTrouble)
{
    const Tree tree;
    addSmallMachine(tree);
    const json whole = scan(tree);
    fs::remove(tree.at("/etc/localtime"));
    tree.fifo("/etc/localtime");
    const json groups = scan(tree);
    for (const char* group : {"Processor", "Memory", "Storage", "IP Address", "Site"})
        EXPECT_EQ(reasonsOf(groups)[group], reasonsOf(whole)[group]) << group;
}

// Links that lead into themselves and each other, however deep a path asks.
TEST(HostileRoot, foldersThatHoldThemselvesEnd)
{
    const Tree tree;
    addSmallMachine(tree);
    const json whole = scan(tree);
    fs::remove(tree.at("/sys/block/md0"));
    tree.link("/sys/block/md0", "../block");
    tree.link("/sys/block/device", "../block");
    tree.link("/sys/class/net/enp2s0", "../net");
    tree.link("/sys/bus/pci/devices/0000:02:00.0", ".");
    for (int i = 0; i < 100; ++i)
        tree.link("/sys/class/chain" + std::to_string(i), "chain" + std::to_string(i + 1));
    tree.link("/sys/bus/pci/devices/0000:03:00.0", "../../../class/chain0");
    const json groups = scan(tree);
    for (const char* group : {"Processor", "Memory", "OperatingSystem", "IPAddress", "Partition", "Site"})
        EXPECT_EQ(groups[group], whole[group]) << group;
    EXPECT_EQ(groups["DiskPartition"], whole["DiskPartition"]);
}

// A file system that fails to read: a process's memory is such a file, and its address 0 is not there.
TEST(HostileRoot, filesThatReturnErrorsAreToldAndCostThemselvesAlone)
{
    const Tree tree;
    addSmallMachine(tree);
    for (const std::string path :
         {"/etc/os-release", "/etc/machine-id", "/usr/share/misc/pci.ids", "/etc/resolv.conf"}) {
        const std::string aside = tree.folder() + ".aside";
        fs::rename(tree.at(path), aside);
        const json without = scan(tree);
        fs::rename(aside, tree.at(path));
        Program program({"scan", "--root", tree.folder(), "-f", "json"});
        bool isPossible = true;
        program.before([&] {
            const bool isPrivate =
                unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
            if (!isPrivate || mount("/proc/self/mem", tree.at(path).c_str(), nullptr, MS_BIND, nullptr) != 0)
                _exit(77);
        });
        const ProgramResult result = program.run();
        isPossible = result.status != 77;
        if (!isPossible)
            GTEST_SKIP() << "no private mounts here";
        ASSERT_EQ(result.status, 0) << result.errors;
        const json groups = result.report()["groups"];
        EXPECT_TRUE(rowsOf(groups) == rowsOf(without)) << path << differenceOf(rowsOf(without), rowsOf(groups));
        EXPECT_FALSE(groupsThatTell(groups, path + ": Input/output error").empty())
            << path << json(reasonsOf(groups)).dump(1);
    }
}

TEST(HostileRoot, thatIsNoneOfTheRightKindIsOneLineAndStatusTwo)
{
    const Tree tree;
    tree.file("/file", "");
    tree.fifo("/fifo");
    tree.link("/loop", "loop");
    tree.folder("/recording/invhw-kernel.json");
    tree.fifo("/waiting/invhw-kernel.json");
    tree.sparse("/endless/invhw-kernel.json", off_t{1} << 40);
    tree.file("/rubbish/invhw-kernel.json", "{\"format\":");
    for (const char* name : {"/file", "/fifo", "/loop", "/none", "/recording", "/waiting", "/endless", "/rubbish"}) {
        const ProgramResult result = Program({"scan", "--root", tree.at(name)}).run(seconds(10));
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_EQ(result.output, "") << name;
        EXPECT_NE(result.errors.find(tree.at(name)), std::string::npos) << result.errors;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_LT(result.peakKiB, kMostKiB) << name;
    }
}
