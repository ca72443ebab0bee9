#include "com/VexGroup.h"

#include <gtest/gtest.h>

#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "tests/unit/Capture.h"

namespace
{
class OneTableGroup final : public VexGroup
{
public:
    OneTableGroup() : VexGroup(GROUP_MEMORY, 1) {}
    VexTable* getTable() override { return new VexTable(getGroupId(), getGroupVersion()); }
};
} // namespace

TEST(VexGroup, knowsIdVersionAndName)
{
    VexGroup group(GROUP_UNIX_SYSTEM_PARAMS, 3);
    EXPECT_EQ(group.getGroupId(), 19UL);
    EXPECT_EQ(group.getGroupVersion(), 3UL);
    EXPECT_STREQ(group.getGroupName(), "UNIX System Params");
    EXPECT_STREQ(VexGroup(33, 1).getGroupName(), "Unknown");
}

TEST(VexGroup, baseCollectsNothingAndSaysSo)
{
    VexGroup group(GROUP_MEMORY, 1);
    EXPECT_EQ(capturedOutput([&] { EXPECT_EQ(group.getTable(), nullptr); }), "\nVexGroup::getTable");
}

TEST(VexGroup, collectionIsVirtual)
{
    OneTableGroup group;
    VexGroup& base = group;
    VexTable* const table = base.getTable();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getGroupId(), 3UL);
    delete table;
}
