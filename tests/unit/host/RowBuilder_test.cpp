#include "host/Collection.h"

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"

using namespace host;

TEST(RowBuilder, keepsTheCatalogsOrderAndTheLastValue)
{
    RowBuilder builder(GROUP_MEMORY);
    builder.number(MEMORY_AVAILABLE, 5, "b").number(MEMORY_TOTAL_PHYSICAL, 1, "a").number(MEMORY_AVAILABLE, 6, "c");
    const report::Row row = builder.take();
    ASSERT_EQ(row.values.size(), 2u);
    EXPECT_EQ(row.values[0].name(), "TotalPhysical");
    EXPECT_EQ(std::get<uint64_t>(row.values[0].content), 1u);
    EXPECT_EQ(row.values[1].name(), "Available");
    EXPECT_EQ(std::get<uint64_t>(row.values[1].content), 6u);
    EXPECT_EQ(row.values[1].source, "c");
}

TEST(RowBuilder, saturatesNumbersAndLeavesOutWhatIsAbsentOrUnknown)
{
    RowBuilder builder(GROUP_MEMORY);
    builder.number(MEMORY_TOTAL_PHYSICAL, uint64_t{1} << 32, "").number(MEMORY_FREE_PHYSICAL, std::nullopt, "");
    builder.number(999, 1, "").text(MEMORY_AVAILABLE, std::string_view(), "");
    const report::Row row = builder.take();
    ASSERT_EQ(row.values.size(), 1u);
    EXPECT_EQ(std::get<uint64_t>(row.values[0].content), 0xFFFFFFFFu);
}
