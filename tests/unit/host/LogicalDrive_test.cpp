#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

TEST(LogicalDrive, ofPathsIsDegradedWhenOneIsNotInUse)
{
    const auto degraded = [](const char* first, const char* second) {
        const Tree tree;
        tree.file("/sys/block/dm-0/dm/name", "mpatha\n");
        tree.file("/sys/block/dm-0/dm/uuid", "mpath-3500\n");
        for (const auto& [name, state] : {std::pair("sda", first), std::pair("sdb", second)}) {
            tree.folder(std::string("/sys/block/dm-0/slaves/") + name);
            if (state != nullptr)
                tree.file(std::string("/sys/block/") + name + "/device/state", state);
        }
        const Rows rows = collected(tree, GROUP_LOGICAL_DRIVE);
        const size_t place = rows.size() == 1 ? rows[0].find("Degraded=") : std::string::npos;
        return place == std::string::npos ? "" : rows[0].substr(place + 9, 2);
    };
    EXPECT_EQ(degraded("running\n", "running\n"), "No");
    EXPECT_EQ(degraded("running\n", "transport-offline\n"), "Ye");
    EXPECT_EQ(degraded("live\n", nullptr), "No");
    EXPECT_EQ(degraded(nullptr, nullptr), "");
}
