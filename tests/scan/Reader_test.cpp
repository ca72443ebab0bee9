// What docs/REPORT.md tells readers to do with a report that is not well-formed.

#include <cstdlib>
#include <gtest/gtest.h>

#include "FakeMachine.h"

// Runs a shell command in the machine's working folder; its status, -1 when it was ended.
static int run(const FakeMachine& machine, const std::string& command)
{
    const int status = system(("cd " + machine.workingFolder() + " && " + command).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The command of the document: the indented lines from the one that begins with LC_ALL on.
static std::string documentedCommand()
{
    const std::string document = readTextFile(INVHW_SCAN_TESTS "/../../docs/REPORT.md");
    const size_t start = document.find("\n    LC_ALL=C sed ");
    return start == std::string::npos ? "false" : document.substr(start, document.find("\n\n", start) - start);
}

// The report of a machine with one mount.
static std::string scanMount(FakeMachine& machine, const std::string& mountPoint, const std::string& type)
{
    machine.file("/etc/mtab", "/dev/sda1 " + mountPoint + " " + type + " rw 0 0\n").env("LC_ALL", "C.UTF-8");
    return machine.scan().report;
}

TEST(Reader, copesWithReportsThatAreNotWellFormed)
{
    if (system("xmllint --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint (libxml2-utils) is missing";
    static const struct {
        const char *mountPoint, *type, *reported, *read;
    } cases[] = {
        {"/a", "ext3", "<FSMountPoint IsKey=\"1\">/a<", "/a"},
        {"/b]]>c", "ext3", "<FSMountPoint IsKey=\"1\">/b]]>c<", "/b]]>c"},
        {"/d\x01\x1Fz", "ext3", "<FSMountPoint IsKey=\"1\">/d\x01\x1Fz<", "/dz"},
        {"/f\xEF\xBF\xBE\xEF\xBF\xBFg", "ext3", "<FSMountPoint IsKey=\"1\">/f\xEF\xBF\xBE\xEF\xBF\xBFg<", "/fg"},
        {"/h", "s5", "<FSType>UNIX-AT&T System V/386 | SCO UNIX<", "/h"},
        {"/&<", "s5", "<FSMountPoint IsKey=\"1\">/&amp;&lt;<", "/&<"},
    };
    for (const auto& c : cases) {
        FakeMachine machine;
        const std::string report = scanMount(machine, c.mountPoint, c.type);
        ASSERT_NE(report.find(c.reported), std::string::npos) << report;
        writeTextFile(machine.workingFolder() + "/report.xml", report);
        const bool wellFormed = std::string(c.mountPoint) == "/a";
        EXPECT_EQ(run(machine, "xmllint --noout report.xml 2>/dev/null") == 0, wellFormed) << c.mountPoint;
        ASSERT_EQ(run(machine, documentedCommand() + " >read.xml"), 0);
        ASSERT_EQ(run(machine, "xmllint --xpath 'string(//FSMountPoint)' read.xml >text"), 0) << c.mountPoint;
        EXPECT_EQ(readTextFile(machine.workingFolder() + "/text"), c.read + std::string("\n"));
    }
}
