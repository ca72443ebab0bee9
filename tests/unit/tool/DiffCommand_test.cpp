#include "tests/unit/report/Forms.h"
#include "tests/unit/tool/CommandRun.h"

namespace
{
using DiffCommand = CommandTest;

std::string storage(const std::string& device, const std::string& firmware)
{
    return xmlRow("Storage", "2",
                  "\n<Index>1</Index>\n<DeviceName IsKey=\"1\">" + device + "</DeviceName>\n<FirmwareRevision>" +
                      firmware + "</FirmwareRevision>");
}
} // namespace

TEST_F(DiffCommand, tellsALineAChangeAndItsStatus)
{
    const std::string old = file("old.xml", xmlList(storage("/dev/sda", "1.0") + storage("/dev/sdb", "x")));
    const std::string now = file("now.xml", xmlList(storage("/dev/sdc", "y") + storage("/dev/sda", "1.1")));
    const CommandRun run = ran({"diff", old.c_str(), now.c_str()});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "~ Storage[DeviceName=/dev/sda] FirmwareRevision: \"1.0\" -> \"1.1\"\n"
                       "- Storage[DeviceName=/dev/sdb]\n"
                       "+ Storage[DeviceName=/dev/sdc]\n");
    EXPECT_EQ(run.error, "");
}

TEST_F(DiffCommand, tellsTheSameAsJson)
{
    const std::string old = file("old.xml", xmlList(storage("/dev/sda", "1.0") + storage("/dev/sdb", "x")));
    const std::string now = file("now.xml", xmlList(storage("/dev/sda", "1.1")));
    EXPECT_EQ(ran({"diff", "--format", "json", old.c_str(), now.c_str()}).out,
              "[\n{\"group\":\"Storage\",\"change\":\"changed\",\"key\":{\"DeviceName\":\"/dev/sda\"},"
              "\"attributes\":{\"FirmwareRevision\":[\"1.0\",\"1.1\"]}},\n"
              "{\"group\":\"Storage\",\"change\":\"removed\",\"key\":{\"DeviceName\":\"/dev/sdb\"},"
              "\"attributes\":{\"DeviceName\":[\"/dev/sdb\",null],\"FirmwareRevision\":[\"x\",null]}}\n]\n");
    EXPECT_EQ(ran({"diff", "--format", "json", now.c_str(), now.c_str()}).out, "[]\n");
}

TEST_F(DiffCommand, isSilentWhenNothingChanged)
{
    const std::string xml = INVHW_SOURCE_DIR "/tests/machines/modern-server/expected.xml";
    const std::string json = file("a.json", jsonOf(reportOf(fileText(xml))));
    for (const char* other : {xml.c_str(), json.c_str()}) {
        const CommandRun run = ran({"diff", "--all", xml.c_str(), other});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out + run.error, "");
    }
}

TEST_F(DiffCommand, refusesWhatItCannotReadWithFileAndLine)
{
    const std::string whole = xmlList(storage("/dev/sda", "1.0"));
    const std::string good = file("good.xml", whole), cut = file("cut.xml", whole.substr(0, whole.size() - 1));
    const std::string bad = file("bad.xml", "<serviceDataList>\n<x/></serviceDataList>");
    const CommandRun run = ran({"diff", good.c_str(), bad.c_str()});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.error, "invhwctl: diff: " + bad + ":2: expected <serviceData>, found <x>\n");
    EXPECT_EQ(ran({"diff", "/nonexistent", good.c_str()}).error,
              "invhwctl: diff: /nonexistent: No such file or directory\n");
    EXPECT_EQ(ran({"diff", cut.c_str(), good.c_str()}).status, 2);
    const CommandRun partial = ran({"diff", "--partial", cut.c_str(), good.c_str()});
    EXPECT_EQ(partial.status, 0);
    EXPECT_NE(partial.error.find("cut off"), std::string::npos);
    EXPECT_EQ(ran({"diff", "-", "-"}).error, "invhwctl: diff: standard input can be one of the reports, not both\n");
    EXPECT_EQ(ran({"diff", good.c_str()}).status, 2);
}
