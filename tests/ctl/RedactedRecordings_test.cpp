// Redacted copies of the recorded hosts: a scan of the copy is the redacted scan, and nothing that identifies is left.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "host/Scan.h"
#include "host/record/Redaction.h"
#include "report/Writer.h"
#include "report/redact/Values.h"

namespace fs = std::filesystem;
using namespace report;

namespace
{
const std::string kKey = "0123456789abcdef";

Report scanned(const std::string& root)
{
    host::ScanOptions options;
    options.root = root;
    options.deadlineSeconds = 20;
    Report report;
    std::string reason;
    EXPECT_TRUE(host::scan(options, report, reason)) << reason;
    return report;
}

Report redacted(Report report)
{
    IdentifyingValues values(kKey);
    for (const GroupRows& group : report.groups)
        for (const Row& row : group.rows)
            EXPECT_TRUE(values.gather(group, row));
    values.finish();
    for (GroupRows& group : report.groups)
        for (Row& row : group.rows)
            values.replace(group, row);
    return report;
}

// Digests are of what the copy holds; of addresses that nobody gave, as pseudonyms are, there is no identity.
bool isDerived(const GroupRows& group, const Value& value)
{
    return value.name() == "ID" || group.name() == "MachineIdentity";
}

// All identifying values of a report, a line each.
std::string identifyingLines(const Report& report)
{
    std::string lines;
    for (const GroupRows& group : report.groups)
        for (size_t row = 0; row < group.rows.size(); ++row)
            for (const Value& value : group.rows[row].values)
                if (value.attribute->isIdentifying && !isDerived(group, value))
                    lines += std::string(group.name()) + ' ' + std::to_string(row) + ' ' + value.attribute->element +
                             ": " + valueText(value) + '\n';
    return lines;
}

bool isSystemAccount(const Row& row)
{
    const Value* id = row.find("UserID");
    const auto* number = id != nullptr ? std::get_if<uint64_t>(&id->content) : nullptr;
    return number != nullptr && *number < 1000;
}

// Identifying values of a scan that its redaction replaces, long enough to be known again. System accounts and their
// folders are not searched for.
std::vector<std::string> replacedTexts(const Report& before, const Report& after)
{
    constexpr size_t kShortest = 8;
    std::vector<std::string> texts;
    for (size_t group = 0; group < before.groups.size(); ++group)
        for (size_t row = 0; row < before.groups[group].rows.size(); ++row)
            for (size_t i = 0; i < before.groups[group].rows[row].values.size(); ++i) {
                const Value& value = before.groups[group].rows[row].values[i];
                const std::string text = valueText(value);
                if (value.attribute->isIdentifying && !isDerived(before.groups[group], value) &&
                    !isSystemAccount(before.groups[group].rows[row]) && text.size() >= kShortest &&
                    text != valueText(after.groups[group].rows[row].values[i]))
                    texts.push_back(text);
            }
    return texts;
}

// Every name, link and byte of a folder.
std::string bytesOf(const std::string& folder)
{
    std::ostringstream all;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        all << entry.path().string().substr(folder.size()) << '\n';
        if (entry.is_symlink())
            all << fs::read_symlink(entry.path()).string() << '\n';
        else if (entry.is_regular_file())
            all << std::ifstream(entry.path(), std::ios::binary).rdbuf() << '\n';
        all.clear();
    }
    return all.str();
}

class Folder
{
public:
    Folder() : path_(testing::TempDir() + "invhw-redacted-XXXXXX")
    {
        if (mkdtemp(path_.data()) == nullptr)
            abort();
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

class RedactedRecordings : public testing::TestWithParam<const char*>
{
};
} // namespace

TEST_P(RedactedRecordings, giveTheRedactedScan)
{
    const std::string recording = std::string(INVHW_HOSTS) + "/" + GetParam();
    const Folder copy;
    std::string reason;
    ASSERT_TRUE(host::redactRecording(recording, copy.path(), kKey, reason)) << reason;
    const Report before = scanned(recording), expected = redacted(before);
    EXPECT_EQ(identifyingLines(scanned(copy.path())), identifyingLines(expected));
    const std::string bytes = bytesOf(copy.path());
    for (const std::string& text : replacedTexts(before, expected))
        EXPECT_EQ(bytes.find(text), std::string::npos) << text;
}

INSTANTIATE_TEST_SUITE_P(Hosts, RedactedRecordings,
                         testing::Values("arm-board", "laptop", "network", "old-kernel", "server-four-nodes",
                                         "virtual-machine"),
                         [](const testing::TestParamInfo<const char*>& host) {
                             std::string name = host.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
