// Recordings of the machine that the tests run on.

#include "host/Record.h"

#include <gtest/gtest.h>
#include <sstream>

#include "host/Scan.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"
#include "tests/unit/Capture.h"
#include "tests/unit/host/Rights.h"
#include "tests/unit/host/Tree.h"

using namespace host;
namespace fs = std::filesystem;

namespace
{
report::Report scanned(const std::string& root)
{
    host::ScanOptions options;
    options.root = root;
    options.deadlineSeconds = 60;
    report::Report report;
    std::string reason;
    EXPECT_TRUE(scan(options, report, reason)) << reason;
    return report;
}

std::string json(const report::Report& report)
{
    std::ostringstream out;
    report::JsonWriter writer(out, true);
    report::write(report, writer);
    return out.str();
}

// Groups, rows and values but for what changes by itself, one line a value.
std::string lasting(const report::Report& report)
{
    std::string text;
    for (const report::GroupRows& group : report.groups)
        for (size_t row = 0; row < group.rows.size(); ++row)
            for (const report::Value& value : group.rows[row].values)
                if (!value.attribute->isVolatile && !value.attribute->isVolatileIfDynamic)
                    text += std::string(group.group->name) + ' ' + std::to_string(row) + ' ' + value.attribute->name +
                            ": " + report::valueText(value) + " (" + value.source + ")\n";
    return text;
}

std::string recordedTo(const std::string& folder)
{
    std::string reason;
    EXPECT_TRUE(record({}, folder, reason)) << reason;
    return folder;
}
} // namespace

TEST(Record, aScanOfTheRecordingIsTheScanOfTheMachine)
{
    Tree tree;
    const std::string folder = recordedTo(tree.at("/recording"));
    EXPECT_EQ(lasting(scanned(folder)), lasting(scanned("/")));
    struct stat status;
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
    ASSERT_EQ(stat((folder + "/invhw-kernel.json").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST(Record, everyScanOfTheRecordingIsTheSameWhereverItIsAndWhoeverScans)
{
    Tree tree;
    const std::string folder = recordedTo(tree.at("/recording"));
    const std::string first = json(scanned(folder));
    EXPECT_EQ(first.find("Milliseconds"), std::string::npos);
    fs::copy(folder, tree.at("/copy"), fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    fs::remove_all(folder);
    EXPECT_EQ(json(scanned(tree.at("/copy"))), first);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(tree.at("/copy")))
        if (!entry.is_symlink())
            chmod(entry.path().c_str(), entry.is_directory() ? 0755 : 0644);
    chmod(tree.at("/copy").c_str(), 0755);
    inChild([&] {
        ASSERT_NO_FATAL_FAILURE(becomeOrdinaryUser());
        EXPECT_EQ(json(scanned(tree.at("/copy"))), first);
    });
}

TEST(Record, anOrdinaryUsersViewIsHisOwn)
{
    Tree tree;
    chmod(tree.folder().c_str(), 0777);
    inChild([&] {
        ASSERT_NO_FATAL_FAILURE(becomeOrdinaryUser());
        const std::string folder = recordedTo(tree.at("/recording"));
        EXPECT_EQ(lasting(scanned(folder)), lasting(scanned("/")));
    });
}

TEST(Record, aGroupAloneTakesWhatItNeeds)
{
    Tree tree;
    std::string reason;
    RecordOptions options;
    size_t ready = 0;
    size_t all = 0;
    options.groups = {GROUP_MEMORY, GROUP_REGIONAL};
    options.onProgress = [&](size_t now, size_t of) {
        ready = now;
        all = of;
    };
    ASSERT_TRUE(record(options, tree.at("/recording/"), reason)) << reason;
    EXPECT_TRUE(fs::exists(tree.at("/recording/proc/meminfo")));
    EXPECT_FALSE(fs::exists(tree.at("/recording/proc/cpuinfo")));
    EXPECT_EQ(ready, 2u);
    EXPECT_EQ(all, 2u);
}

TEST(Record, aFolderThatHoldsSomethingIsLeftAlone)
{
    Tree tree;
    tree.file("/full/file", "x");
    tree.link("/link", "full");
    std::string reason;
    for (const char* name : {"/full", "/full/", "/full/file", "/link"}) {
        EXPECT_FALSE(record({}, tree.at(name), reason));
        EXPECT_EQ(reason, tree.at(name) + ": is there and no empty folder");
    }
    EXPECT_FALSE(record({}, tree.at("/none/recording"), reason));
    EXPECT_EQ(reason, tree.at("/none/recording") + ": No such file or directory");
    EXPECT_EQ(std::distance(fs::directory_iterator(tree.folder()), {}), 2);
    tree.folder("/empty");
    RecordOptions options;
    options.groups = {GROUP_MEMORY};
    EXPECT_TRUE(record(options, tree.at("/empty"), reason)) << reason;
    EXPECT_TRUE(fs::exists(tree.at("/empty/invhw-kernel.json")));
}

TEST(Record, whatDoesNotBecomeReadyIsRemoved)
{
    Tree tree;
    RecordOptions options;
    options.deadlineSeconds = 0.001;
    std::string reason;
    EXPECT_FALSE(record(options, tree.at("/recording"), reason));
    EXPECT_NE(reason.find("not ready in time"), std::string::npos) << reason;
    EXPECT_TRUE(fs::is_empty(tree.folder()));
}
