#include "report/Summary.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "report/summary/Sections.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
std::string jsonReport(const std::string& groups)
{
    std::string versions;
    for (const char* group :
         {"ComponentID", "Processor", "Memory", "MemoryModules", "OperatingSystem", "Storage", "DiskPartition",
          "LogicalDrive", "IPAddress", "NetworkAdapter", "ScanInfo", "Partition", "UNIXSystemParams"})
        versions += (versions.empty() ? "\"" : ", \"") + std::string(group) + "\": 2";
    return R"({"format": "invhw-report", "formatVersion": 1, "program": "invhwctl 5.0.0",)"
           R"("date": "2026-11-21T11:35:34Z", "versions": {)" +
           versions + "}, \"groups\": {" + groups + "}}";
}

Summary summaryOf(const std::string& text)
{
    SummarySink sink;
    ReadProblem problem;
    EXPECT_EQ(readReportText(text, sink, problem), ReadResult::WHOLE) << problemText("text", problem);
    return sink.summary();
}

SummarySection sectionOf(const Summary& summary, std::string_view id)
{
    for (const SummarySection& section : summary.sections)
        if (section.id == id)
            return section;
    return {.id = "", .title = ""};
}

std::string factOf(const SummarySection& section, std::string_view label)
{
    for (const SummaryFact& fact : section.facts)
        if (fact.label == label)
            return fact.cell.text;
    return "(none)";
}

// "a|b|c" of every line, with two blanks a level in front.
std::string linesText(const std::vector<SummaryLine>& lines, const std::string& indent = "")
{
    std::string text;
    for (const SummaryLine& line : lines) {
        text += indent;
        for (const SummaryCell& cell : line.cells)
            text += (&cell == &line.cells.front() ? "" : "|") + cell.text;
        text += '\n' + linesText(line.children, indent + "  ");
    }
    return text;
}

constexpr const char* kDisks = R"(
"Storage": [
{"Type":"Hard Disk","Model":"M1","SerialNumber":"S1","DeviceName":"/dev/sda","SizeBytes":1000204886016,"Transport":"SATA","Rotational":false},
{"Type":"Hard Disk","Model":"M2","SerialNumber":"None","DeviceName":"/dev/sdb","SizeBytes":1000204886016,"Transport":"SATA","Rotational":true}],
"DiskPartition": [
{"DeviceName":"/dev/sda1","ParentDevice":"/dev/sda","SizeBytes":536870912,"FSTypeName":"vfat","PartitionLabel":"EFI"},
{"DeviceName":"/dev/sda2","ParentDevice":"/dev/sda","SizeBytes":999667990528,"FSTypeName":"linux_raid_member"},
{"DeviceName":"/dev/sdb2","ParentDevice":"/dev/sdb","SizeBytes":999667990528,"FSTypeName":"linux_raid_member"}],
"LogicalDrive": [
{"Name":"vg-root","DeviceName":"/dev/dm-0","Level":"linear","Members":"md0","SizeBytes":1073741824},
{"Name":"loop0","DeviceName":"/dev/loop0","Members":"/a.iso","SizeBytes":1048576},
{"Name":"0","DeviceName":"/dev/md0","Level":"raid1","Members":"sda2,sdb2","SizeBytes":999533772800,"Degraded":true}],
"Partition": [
{"FSAccessPoint":"/dev/mapper/vg-root","FSMountPoint":"/","FSTotalSize":1048576,"FSTypeName":"ext4","TotalBytes":1000,"FreeBytes":40},
{"FSAccessPoint":"/dev/mapper/vg-root","FSMountPoint":"/srv","FSTotalSize":1048576,"FSTypeName":"ext4","TotalBytes":1000,"FreeBytes":400,"Subvolume":"/s"},
{"FSAccessPoint":"tmpfs","FSMountPoint":"/run","FSTotalSize":1048576,"FSTypeName":"tmpfs"},
{"FSAccessPoint":"cgroup2","FSMountPoint":"/sys/fs/cgroup","FSTotalSize":0,"FSTypeName":"cgroup2"},
{"FSAccessPoint":"nas:/home","FSMountPoint":"/home","FSTotalSize":0,"FSTypeName":"nfs4"}])";
} // namespace

TEST(Summary, showsDisksWithWhatLiesOnThem)
{
    const SummarySection disks = sectionOf(summaryOf(jsonReport(kDisks)), "disks");
    EXPECT_EQ(linesText(disks.lines), "/dev/sda|932 GiB|SATA SSD|M1, S1||\n"
                                      "  /dev/sda1|512 MiB|vfat|EFI||\n"
                                      "  /dev/sda2|931 GiB|linux_raid_member|||\n"
                                      "    0|931 GiB|raid1, degraded|/dev/md0||\n"
                                      "      vg-root|1 GiB|linear|/dev/dm-0|/|96% of 1.0 KiB\n"
                                      "        /s||||/srv|60% of 1.0 KiB\n"
                                      "/dev/sdb|932 GiB|SATA Hard Disk|M2||\n"
                                      "  /dev/sdb2|931 GiB|linux_raid_member|||\n"
                                      "    0||raid1|see above||\n"
                                      "loop0|1 MiB||/dev/loop0||\n"
                                      "nas:/home||nfs4||/home|\n");
    const SummaryLine& raid = disks.lines[0].children[1].children[0];
    EXPECT_EQ(raid.cells[2].tone, Tone::BAD);
    EXPECT_EQ(raid.children[0].cells[5].tone, Tone::BAD);
    EXPECT_NEAR(raid.children[0].cells[5].share.value_or(0), 0.96, 1e-9);
}

// What lies on itself, and a thousand that all lie on all others.
TEST(Summary, endsWhateverDrivesLieOn)
{
    std::string drives = R"("LogicalDrive": [{"Name":"a","DeviceName":"/dev/dm-0","Members":"dm-1"},)"
                         R"({"Name":"b","DeviceName":"/dev/dm-1","Members":"dm-0"},)"
                         R"({"Name":"c","DeviceName":"/dev/dm-2","Members":"dm-2"})";
    EXPECT_EQ(linesText(sectionOf(summaryOf(jsonReport(drives + "]")), "disks").lines),
              "a|/dev/dm-0\n  b|/dev/dm-1\n    a|see above\nc|/dev/dm-2\n  c|see above\n");
    std::string members;
    for (int i = 0; i < 200; ++i)
        members += (i == 0 ? "x" : ",x") + std::to_string(i);
    for (int i = 0; i < 900; ++i)
        drives += R"(,{"Name":"n)" + std::to_string(i) + R"(","DeviceName":"/dev/x)" + std::to_string(i) +
                  R"(","Members":")" + members + "\"}";
    const SummarySection disks = sectionOf(summaryOf(jsonReport(drives + "]")), "disks");
    const std::string text = linesText(disks.lines);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<ptrdiff_t>(summary::kMostLines));
    EXPECT_GT(disks.left, 1000U);
}

TEST(Summary, countsWhatItHasNoRoomFor)
{
    std::string modules;
    for (int i = 1; i <= 1500; ++i)
        modules += (i == 1 ? "" : ",") + (R"({"Index":)" + std::to_string(i) + R"(,"ModuleSizeMB":1024})");
    const Summary summary = summaryOf(jsonReport("\"MemoryModules\": [" + modules + "]"));
    const SummarySection memory = sectionOf(summary, "memory");
    EXPECT_EQ(memory.lines.size(), summary::kMostLines);
    EXPECT_EQ(memory.left, 1500 - summary::kMostLines);
    ASSERT_EQ(summary.groups.size(), 1U);
    EXPECT_EQ(summary.groups[0], (std::pair<std::string, uint64_t>("Memory Modules", 1500)));
}

TEST(Summary, tellsOfTheMachine)
{
    const Summary summary = summaryOf(jsonReport(
        R"("ComponentID": [{"Manufacturer":"ACME","Product":"Acme X1","Version":"To be filled by O.E.M.","SerialNumber":"A1","FormFactor":"Server","ChassisType":"Rack Mount Chassis"}],
"Processor": [{"Index":1,"ModelName":"P","Cores":4,"Threads":8,"MaxClockSpeed":3000,"L3Cache":8192},{"Index":2,"ModelName":"P","Cores":4,"Threads":8}],
"Memory": [{"TotalPhysical":16777216,"FreePhysical":1,"Available":8388608,"SwapTotal":0,"SwapFree":0,"InstalledMB":16384}],
"MemoryModules": [{"Index":1,"SocketName":"A","BankName":"B","ModuleSizeMB":16384,"Speed":3200},{"Index":2,"SocketName":"C","ModuleSizeMB":0}],
"OperatingSystem": [{"PrettyName":"Debian GNU/Linux 11","KernelRelease":"6.1.0","OSArch":"x86_64","VersionID":"11","RebootPending":true}],
"UNIXSystemParams": [{"Hostname":"host17"}],
"ScanInfo": [{"Uptime":90061}])"));
    EXPECT_EQ(summary.name, "host17");
    EXPECT_EQ(summary.model, "Acme X1");
    EXPECT_EQ(summary.system, "Debian GNU/Linux 11");
    EXPECT_EQ(summary.program, "invhwctl 5.0.0");
    EXPECT_EQ(summary.date, "2026-11-21T11:35:34Z");
    const SummarySection machine = sectionOf(summary, "machine");
    EXPECT_EQ(factOf(machine, "Form"), "Server, Rack Mount Chassis");
    EXPECT_EQ(factOf(machine, "Version"), "(none)");
    EXPECT_EQ(factOf(machine, "Kernel"), "6.1.0 x86_64");
    EXPECT_EQ(factOf(machine, "Up for"), "1 d 1 h 1 min");
    EXPECT_EQ(factOf(machine, "Reboot"), "pending");
    const SummarySection processors = sectionOf(summary, "processors");
    EXPECT_EQ(factOf(processors, "Cores"), "8");
    EXPECT_EQ(linesText(processors.lines), "P|4|8|3000 MHz|8 MiB\nP|4|8||\n");
    const SummarySection memory = sectionOf(summary, "memory");
    EXPECT_EQ(factOf(memory, "For programs"), "50% of 16 GiB");
    EXPECT_EQ(factOf(memory, "Swap"), "(none)");
    EXPECT_EQ(factOf(memory, "Slots"), "1 of 2 in use");
    EXPECT_EQ(linesText(memory.lines), "A, B|16 GiB|3200 MT/s\nC|empty|\n");
}

TEST(Summary, putsAddressesToTheirLinks)
{
    const SummarySection network = sectionOf(
        summaryOf(jsonReport(
            R"("IPAddress": [{"Address":"192.0.2.1","PrefixLength":24,"Interface":"eth0","Gateway":"192.0.2.254","PrimaryDNS":"192.0.2.53","SecondaryDNS":"192.0.2.53"},
{"Address":"2001:db8::1","PrefixLength":64,"Interface":"eth0","Gateway":"192.0.2.254"},{"Address":"10.0.0.1","Interface":"gone"}],
"NetworkAdapter": [{"Interface":"eth0","Kind":"Physical","LinkState":"up","Speed":1000,"CurrentAddress":"02:00:00:00:00:01","Model":"N"},{"Interface":"eth1","Kind":"Physical","LinkState":"down","Model":"eth1"}])")),
        "network");
    EXPECT_EQ(linesText(network.lines), "eth0|Physical|up|1000 Mbit/s|02:00:00:00:00:01|192.0.2.1/24 2001:db8::1/64|N\n"
                                        "eth1|Physical|down||||\n"
                                        "gone|||||10.0.0.1|\n");
    EXPECT_EQ(factOf(network, "Gateway"), "192.0.2.254");
    EXPECT_EQ(factOf(network, "Name servers"), "192.0.2.53");
}

TEST(Summary, tellsWhatWasNotRead)
{
    const std::string head =
        R"({"format": "invhw-report", "formatVersion": 1, "program": "p", "versions": {"ScanStatus": 1}, "groups": {"ScanStatus": [)";
    const auto unread = [&](const std::string& rows) { return sectionOf(summaryOf(head + rows + "]}}"), "unread"); };
    EXPECT_EQ(linesText(unread(R"({"Group":"A","Result":"Collected","Reason":"/x: Permission denied; /y: gone"},
{"Group":"B","Result":"Refused","Reason":"/x: Permission denied"},{"Group":"C","Result":"Timed Out"},{"Group":"D","Result":"No Source"})")
                            .lines),
              "/x: Permission denied|A, B\n/y: gone|A\nTimed Out|C\n");
    const SummarySection nothing = unread(R"({"Group":"A","Result":"Empty"})");
    EXPECT_EQ(factOf(nothing, "Refused"), "nothing");
    EXPECT_TRUE(sectionOf(summaryOf(jsonReport("")), "unread").isEmpty());
}

// What the first program reports, which knows fewer attributes and other texts.
TEST(Summary, understandsReportsOfInvhw)
{
    const Summary summary = summaryOf(fileText(INVHW_SOURCE_DIR "/tests/machines/modern-server/expected.xml"));
    EXPECT_EQ(summary.name, "db07.dc1.example.net");
    EXPECT_EQ(summary.program, "invhw");
    EXPECT_EQ(factOf(sectionOf(summary, "machine"), "Kernel"), "6.1.0-27-amd64 x86_64");
    EXPECT_EQ(factOf(sectionOf(summary, "firmware"), "Version"), "1.9");
    EXPECT_EQ(sectionOf(summary, "memory").lines.size(), 24U);
    EXPECT_NE(linesText(sectionOf(summary, "disks").lines).find("filer01:/vol/backup"), std::string::npos);
    EXPECT_EQ(linesText(sectionOf(summary, "disks").lines).find("cgroup"), std::string::npos);
}

TEST(Summary, writesSizesForPeople)
{
    EXPECT_EQ(summary::sizeText(0), "0 B");
    EXPECT_EQ(summary::sizeText(999), "999 B");
    EXPECT_EQ(summary::sizeText(1000), "1.0 KiB");
    EXPECT_EQ(summary::sizeText(1024), "1 KiB");
    EXPECT_EQ(summary::sizeText(1536 * 1024), "1.5 MiB");
    EXPECT_EQ(summary::sizeText(1024209543168), "954 GiB");
    EXPECT_EQ(summary::sizeText(UINT64_MAX), "16 EiB");
    EXPECT_EQ(summary::usedOf(0, 0).text, "0% of 0 B");
    EXPECT_EQ(summary::usedOf(100, 200).share, 0);
    EXPECT_EQ(summary::usedOf(100, 10).tone, Tone::WARN);
}
