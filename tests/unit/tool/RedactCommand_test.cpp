#include <sys/stat.h>

#include "tests/unit/report/Forms.h"
#include "tests/unit/report/RedactForms.h"
#include "tests/unit/tool/CommandRun.h"

namespace
{
using RedactCommand = CommandTest;

const std::string kReport = xmlList(xmlRow("Storage", "2",
                                           "\n\t\t\t\t<SerialNumber>S7E0NX0W612345</SerialNumber>\n\t\t\t\t<DeviceName "
                                           "IsKey=\"1\">/dev/sda</DeviceName>"));

unsigned int modeOf(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0;
}
} // namespace

TEST_F(RedactCommand, makesAKeyAndUsesItAgain)
{
    const std::string report = file("a.xml", kReport), key = file("key"), first = file("1.xml"), second = file("2.xml");
    EXPECT_EQ(ran({"redact", "--key-file", key.c_str(), "-o", first.c_str(), report.c_str()}).status, 0);
    EXPECT_EQ(modeOf(key), 0600u);
    EXPECT_EQ(modeOf(first), 0600u);
    EXPECT_EQ(fileText(key).size(), 32u);
    EXPECT_EQ(ran({"redact", "-k", key.c_str(), "-o", second.c_str(), report.c_str()}).status, 0);
    EXPECT_EQ(fileText(first), fileText(second));
    EXPECT_EQ(fileText(first), redactedText(kReport, fileText(key)));
    EXPECT_EQ(fileText(first).find("S7E0NX0W612345"), std::string::npos);
    EXPECT_EQ(ran({"diff", first.c_str(), second.c_str()}).status, 0);
}

TEST_F(RedactCommand, writesTheFormThatItReads)
{
    const std::string key = file("key", kRedactKey);
    chmod(key.c_str(), 0600);
    const std::string json = file("a.json", jsonOf(reportOf(kReport)));
    EXPECT_EQ(ran({"redact", "-k", key.c_str(), json.c_str()}).out, redactedText(fileText(json)));
    EXPECT_EQ(ran({"redact", "-k", key.c_str(), json.c_str()}).out.substr(0, 2), "{\n");
}

TEST_F(RedactCommand, refusesKeysThatAreNone)
{
    const std::string report = file("a.xml", kReport), old = file("old", "old");
    const std::string open = file("open", kRedactKey), brief = file("brief", "short"),
                      longer = file("long", std::string(4097, 'x'));
    chmod(open.c_str(), 0640);
    chmod(brief.c_str(), 0600);
    chmod(longer.c_str(), 0600);
    const auto error = [&](const std::string& key) {
        const CommandRun run = ran({"redact", "-k", key.c_str(), "-o", old.c_str(), report.c_str()});
        EXPECT_EQ(run.status, 2);
        return run.error;
    };
    EXPECT_EQ(error(open),
              "invhwctl: redact: " + open + ": others may use this key: expected mode 0600 (chmod 600 FILE)\n");
    EXPECT_EQ(error(brief), "invhwctl: redact: " + brief + ": expected a key of 16 to 4096 bytes\n");
    EXPECT_EQ(error(longer), "invhwctl: redact: " + longer + ": expected a key of 16 to 4096 bytes\n");
    EXPECT_EQ(error("/dev/null"), "invhwctl: redact: /dev/null: no regular file, which a key is\n");
    EXPECT_EQ(error("/nonexistent/key"), "invhwctl: redact: /nonexistent/key: No such file or directory\n");
    EXPECT_EQ(fileText(old), "old");
    EXPECT_EQ(ran({"redact", report.c_str()}).error,
              "invhwctl: redact: missing option: --key-file FILE, which is made where there is none\n");
}

TEST_F(RedactCommand, touchesNothingWhenItRefusesAReport)
{
    const std::string old = file("old", "old"), key = file("key");
    const std::string cut = file("cut.xml", kReport.substr(0, kReport.size() - 1));
    const std::string bad = file("bad.xml", "<serviceDataList>\n<x/></serviceDataList>");
    EXPECT_EQ(ran({"redact", "-k", key.c_str(), "-o", old.c_str(), bad.c_str()}).error,
              "invhwctl: redact: " + bad + ":2: expected <serviceData>, found <x>\n");
    EXPECT_EQ(ran({"redact", "-k", key.c_str(), "-o", old.c_str(), cut.c_str()}).status, 2);
    EXPECT_EQ(fileText(old), "old");
    EXPECT_FALSE(std::filesystem::exists(key));
    const CommandRun partial = ran({"redact", "-k", key.c_str(), "--partial", cut.c_str()});
    EXPECT_EQ(partial.status, 0);
    EXPECT_EQ(partial.out, redactedText(kReport, fileText(key)));
}
