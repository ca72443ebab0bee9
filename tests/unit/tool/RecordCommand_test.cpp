#include "tests/unit/tool/CommandRun.h"

using RecordCommand = CommandTest;

TEST_F(RecordCommand, redactsUnderAKeyAlone)
{
    const std::string folder = file("recording"), key = file("key");
    const CommandRun noKey = ran({"record", "--redact", folder.c_str()});
    EXPECT_EQ(noKey.status, 2);
    EXPECT_EQ(noKey.error, "invhwctl: record: --redact and --key-file FILE go together\n");
    EXPECT_EQ(ran({"record", "--key-file", key.c_str(), folder.c_str()}).status, 2);
    EXPECT_EQ(files(), 0u);
}

TEST_F(RecordCommand, leavesNothingBesideARedactedRecording)
{
    const std::string folder = file("recording"), key = file("key");
    const CommandRun run =
        ran({"record", "--redact", "-k", key.c_str(), "--group", "UNIX System Params", folder.c_str()});
    EXPECT_EQ(run.status, 0) << run.error;
    EXPECT_EQ(files(), 2u);
    EXPECT_TRUE(std::filesystem::exists(folder + "/invhw-kernel.json"));
    EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms::owner_all);
}
