#include "host/record/KernelRecording.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/RecordedKernel.h"
#include "host/Root.h"
#include "host/record/BoundedJson.h"
#include "host/record/ByteText.h"
#include "host/record/ErrorNames.h"
#include "tests/unit/host/Tree.h"

using namespace host;
using Names = std::vector<std::string>;

TEST(KernelRecording, isReadAndWritten)
{
    KernelRecording recording;
    recording.answers["links"][""] = nlohmann::json::array({{{"index", 1}, {"name", "lo"}}});
    recording.answers["fileSystemSize"]["/mnt/caf\xE9"] = {{"totalBytes", UINT64_MAX}};
    recording.errors["/sys/b\xFF"] = EACCES;
    recording.errors["/proc/kcore"] = EPERM;
    const std::string text = printKernelRecording(recording);
    EXPECT_TRUE(text.starts_with("{\n \"format\": \"invhw-kernel\",\n \"formatVersion\": 1,\n \"answers\": {")) << text;

    KernelRecording again;
    std::string reason;
    ASSERT_TRUE(parseKernelRecording(text, again, reason)) << reason;
    EXPECT_EQ(again.answers, recording.answers);
    EXPECT_EQ(again.errors, recording.errors);
    ASSERT_TRUE(again.find("links", ""));
    EXPECT_FALSE(again.find("links", "x"));
    EXPECT_FALSE(again.find("none", ""));
}

TEST(KernelRecording, whatIsWrongIsTold)
{
    const std::string begin = R"({"format": "invhw-kernel", "formatVersion": 1, )";
    const struct {
        std::string text;
        const char* reason;
    } cases[] = {
        {"", "no JSON at byte 1"},
        {"{\"format\": \"invhw-kernel\", }", "no JSON at byte 28"},
        {"\"\xFF\"", "no JSON at byte 2"},
        {"[]", "expected \"format\": \"invhw-kernel\" and \"formatVersion\": 1"},
        {"{}", "expected \"format\": \"invhw-kernel\" and \"formatVersion\": 1"},
        {R"({"format": "invhw-kernel", "formatVersion": 2})",
         "expected \"format\": \"invhw-kernel\" and \"formatVersion\": 1"},
        {begin + R"("answers": []})", "expected objects as \"answers\" and \"errors\""},
        {begin + R"("errors": 3})", "expected objects as \"answers\" and \"errors\""},
        {begin + R"("answers": {"links": []}})", "\"answers\", \"links\": expected an object of arguments and answers"},
        {begin + R"("errors": {"/a": "EWHAT"}})",
         "\"errors\", \"/a\": expected the name of an error, such as \"EACCES\""},
        {begin + R"("errors": {"/a": 13}})", "\"errors\", \"/a\": expected the name of an error, such as \"EACCES\""},
        {std::string(1'000'000, '['), "deeper than 16 values within values"},
    };
    for (const auto& one : cases) {
        KernelRecording recording;
        recording.errors["/kept"] = EIO;
        std::string reason;
        EXPECT_FALSE(parseKernelRecording(one.text, recording, reason)) << one.text.substr(0, 100);
        EXPECT_EQ(reason, one.reason);
        EXPECT_EQ(recording.errors.size(), 1u);
    }
}

TEST(BoundedJson, limitsAreKept)
{
    nlohmann::json value;
    std::string reason;
    EXPECT_TRUE(parseBounded("[[[0]]]", {3, 4}, value, reason));
    EXPECT_EQ(value, nlohmann::json::parse("[[[0]]]"));
    EXPECT_FALSE(parseBounded("[[[[]]]]", {3, 100}, value, reason));
    EXPECT_EQ(reason, "deeper than 3 values within values");
    EXPECT_FALSE(parseBounded("[0, 1, 2, 3]", {3, 4}, value, reason));
    EXPECT_EQ(reason, "more than 4 values");
    EXPECT_EQ(value, nlohmann::json::parse("[[[0]]]")); // as it was
    EXPECT_TRUE(
        parseBounded(R"({"a": [1, {"b": null, "c": -2}], "d": "x", "e": {}, "f": 1.5, "a": true})", {}, value, reason));
    EXPECT_EQ(value, nlohmann::json::parse(R"({"a": true, "d": "x", "e": {}, "f": 1.5})"));
}

TEST(ByteText, everyByteComesBack)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const std::string cases[] = {"",
                                 "plain",
                                 "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                                 all,
                                 "\xEF\x9E\x80 \xEF\x9F\xBF",
                                 "\xED\xA0\x80",
                                 "\xC0\x80",
                                 "\xE2\x82",
                                 "\xF4\x90\x80\x80",
                                 "\xF0\x80\x80\x80"};
    for (const std::string& bytes : cases) {
        const std::string text = textOfBytes(bytes);
        EXPECT_EQ(bytesOfText(text), bytes);
        EXPECT_EQ(nlohmann::json::parse(nlohmann::json(text).dump()), text); // throws when it is no UTF-8
    }
    EXPECT_EQ(textOfBytes("caf\xC3\xA9"), "caf\xC3\xA9");
    EXPECT_EQ(textOfBytes("caf\xE9"), "caf\xEF\x9F\xA9"); // U+F7E9
}

TEST(ErrorNames, everyErrorComesBack)
{
    for (int error = 1; error < 134; ++error)
        if (strerrorname_np(error) != nullptr) {
            EXPECT_EQ(errorNumber(errorName(error)), error);
        }
    EXPECT_EQ(errorName(EACCES), "EACCES");
    EXPECT_EQ(errorName(524), "EIO");
    EXPECT_EQ(errorName(-1), "EIO");
    EXPECT_EQ(errorNumber("EACCES"), EACCES);
    EXPECT_FALSE(errorNumber(""));
    EXPECT_FALSE(errorNumber("EACCE"));
}

TEST(RecordedErrors, areThoseOfThePaths)
{
    Tree tree;
    tree.file("/sys/uuid", "placeholder");
    tree.file("/sys/speed", "");
    tree.file("/dir/file", "");
    tree.file("/invhw-kernel.json",
              R"({"format": "invhw-kernel", "formatVersion": 1, "errors": {"/sys/uuid": "EACCES", "/closed/x": "EPERM",
                  "/sys/speed": "EINVAL", "/dir": "EACCES", "/fifo": "EMEDIUMTYPE", "/magic": "ELOOP"}})");
    KernelRecording recording;
    std::string reason;
    ASSERT_TRUE(readKernelRecording(tree.folder(), recording, reason)) << reason;
    RecordedErrors errors(recording);
    Notes notes;
    const Root root(tree.folder(), notes, &errors);

    EXPECT_EQ(root.read("/invhw-kernel.json"), std::nullopt);
    EXPECT_FALSE(root.exists("/invhw-kernel.json"));
    EXPECT_EQ(root.list("/"), (Names{"dir", "sys"}));
    EXPECT_EQ(root.read("/sys/speed"), std::nullopt);
    EXPECT_TRUE(root.exists("/sys/uuid"));
    EXPECT_EQ(root.read("/dir/file"), "");
    EXPECT_EQ(notes.text(), "");

    EXPECT_EQ(root.line("/sys/uuid"), std::nullopt);
    EXPECT_TRUE(notes.wasRefused());
    EXPECT_FALSE(root.exists("/closed/x"));
    EXPECT_EQ(root.realPath("/closed/x"), std::nullopt);
    EXPECT_EQ(root.list("/dir"), Names());
    EXPECT_EQ(root.read("/fifo"), std::nullopt);
    EXPECT_EQ(root.lines("/magic", [](std::string_view) { return true; }), std::nullopt);
    EXPECT_EQ(root.link("/magic"), std::nullopt);
    EXPECT_EQ(notes.text(),
              "/sys/uuid: Permission denied; /closed/x: Operation not permitted; /dir: Permission denied; "
              "/fifo: no regular file; /magic: Too many levels of symbolic links");
}

TEST(RecordedErrors, aFileThatIsNoRecordingIsTold)
{
    Tree tree;
    KernelRecording recording;
    std::string reason;
    EXPECT_FALSE(readKernelRecording(tree.at("/none"), recording, reason));
    EXPECT_EQ(reason, tree.at("/none") + ": No such file or directory");
    EXPECT_TRUE(readKernelRecording(tree.folder(), recording, reason)); // none at all is well
    EXPECT_TRUE(recording.answers.empty());
    tree.file("/invhw-kernel.json", "{");
    EXPECT_FALSE(readKernelRecording(tree.folder(), recording, reason));
    EXPECT_EQ(reason, tree.at("/invhw-kernel.json: no JSON at byte 2"));
    tree.sparse("/invhw-kernel.json", off_t{1} << 40);
    EXPECT_FALSE(readKernelRecording(tree.folder(), recording, reason));
    EXPECT_EQ(reason, tree.at("/invhw-kernel.json: too long"));
    unlink(tree.at("/invhw-kernel.json").c_str());
    tree.fifo("/invhw-kernel.json");
    EXPECT_FALSE(readKernelRecording(tree.folder(), recording, reason));
    EXPECT_EQ(reason, tree.at("/invhw-kernel.json: Wrong medium type"));
}
