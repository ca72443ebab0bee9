#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/unit/report/Forms.h"
#include "tests/unit/tool/CommandRun.h"

namespace
{
using ShowCommand = CommandTest;

const std::string kDisk = xmlRow("Storage", "2", "\n<Model>M</Model>\n<DeviceName IsKey=\"1\">/dev/sda</DeviceName>");
const std::string kOther = xmlRow("Gadget", "1", "\n<B>1</B>");
} // namespace

TEST_F(ShowCommand, showsAPageAndTables)
{
    const std::string path = file("a.xml", xmlList(kDisk + kOther + kDisk));
    EXPECT_EQ(ran({"show", path.c_str()}).out, "Machine without a name\n\nDisks\n  Device    Model or label\n"
                                               "  /dev/sda  M\n  /dev/sda  M\n\nRows by group\n"
                                               "  Storage 2, Gadget 1\n");
    const CommandRun tables =
        ran({"show", "-g", "Gadget", "--group", "storage", "-g", "Storage", "-g", "Lpar", path.c_str()});
    EXPECT_EQ(tables.error, "invhwctl: show: unknown group storage; did you mean Storage?\n");
    EXPECT_EQ(tables.out, "");
    const CommandRun known =
        ran({"show", "-g", "Gadget", "-g", "Storage", "-g", "Storage", "-g", "Lpar", path.c_str()});
    EXPECT_EQ(known.status, 0);
    EXPECT_EQ(known.out, "Gadget: 1 row\nB\n1\n\nStorage: 2 rows\nModel  Device Name\nM      /dev/sda\n"
                         "M      /dev/sda\n\nLpar: 0 rows\n");
}

TEST_F(ShowCommand, writesAFileWholeOrNotAtAll)
{
    const std::string path = file("a.xml", xmlList(kDisk)), out = file("out", "old");
    EXPECT_EQ(ran({"show", "-g", "Storage", "-o", out.c_str(), path.c_str()}).status, 0);
    EXPECT_EQ(fileText(out), "Storage: 1 row\nModel  Device Name\nM      /dev/sda\n");
    struct stat status;
    ASSERT_EQ(stat(out.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    const std::string bad = file("bad.xml", "<a/>");
    const CommandRun refused = ran({"show", "-o", out.c_str(), bad.c_str()});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.error, "invhwctl: show: " + bad + ":1: expected <serviceDataList>, found <a>\n");
    EXPECT_EQ(fileText(out).substr(0, 7), "Storage");
    EXPECT_EQ(ran({"show", "/nonexistent"}).error, "invhwctl: show: /nonexistent: No such file or directory\n");
}

TEST_F(ShowCommand, writesAPage)
{
    const std::string path = file("a.xml", xmlList(kDisk + kOther + kDisk)), page = file("page.html");
    EXPECT_EQ(ran({"show", "--html", "-o", page.c_str(), path.c_str()}).status, 0);
    const std::string text = fileText(page);
    EXPECT_TRUE(text.starts_with("<!DOCTYPE html>"));
    EXPECT_TRUE(text.ends_with("</html>\n"));
    EXPECT_NE(text.find("<h2>Storage</h2><span class=\"count\">2 rows"), std::string::npos);
    EXPECT_NE(text.find("id=\"g-Gadget\""), std::string::npos);
    EXPECT_EQ(text.find("id=\"sources\""), std::string::npos);
    EXPECT_EQ(ran({"show", "--html", path.c_str()}).out, text);
    EXPECT_EQ(ran({"convert", "--to", "html", path.c_str()}).out, text);
    const std::string one = ran({"show", "--html", "--group", "Storage", path.c_str()}).out;
    EXPECT_NE(one.find("<details id=\"g-Storage\" data-name=\"Storage\" open>"), std::string::npos);
    EXPECT_EQ(one.find("id=\"g-Gadget\""), std::string::npos);
    EXPECT_EQ(ran({"show", "--html", "-g", "Gadgets", path.c_str()}).error,
              "invhwctl: show: unknown group Gadgets; did you mean Gadget?\n");
}

TEST_F(ShowCommand, refusesAReportThatWasCutOffUnlessAsked)
{
    const std::string whole = xmlList(kDisk);
    const std::string cut = file("cut.xml", whole.substr(0, whole.size() - 1));
    for (const std::vector<const char*>& options : {std::vector<const char*>{}, {"-g", "Storage"}, {"--html"}}) {
        std::vector<const char*> words{"show"};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(cut.c_str());
        const CommandRun refused = ran(words);
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.out, "");
        EXPECT_NE(refused.error.find("cut off"), std::string::npos);
        words.insert(words.begin() + 1, "--partial");
        const CommandRun taken = ran(words);
        EXPECT_EQ(taken.status, 0);
        EXPECT_NE(taken.out.find("/dev/sda"), std::string::npos);
        EXPECT_NE(taken.error.find("cut off"), std::string::npos);
    }
}
