#include "report/diff/RowStore.h"

#include <cstdlib>

#include "tests/unit/report/RandomReport.h"
#include <gtest/gtest.h>

using namespace report;

namespace
{
void expectSame(const Row& stored, const Row& row)
{
    ASSERT_EQ(stored.values.size(), row.values.size());
    for (size_t i = 0; i < row.values.size(); ++i) {
        EXPECT_EQ(stored.values[i].attribute, row.values[i].attribute);
        EXPECT_EQ(stored.values[i].name(), row.values[i].name());
        EXPECT_EQ(stored.values[i].content, row.values[i].content);
        EXPECT_EQ(stored.values[i].markedKey, row.values[i].markedKey);
    }
}
} // namespace

TEST(RowStore, givesEveryRowAgainInAnyOrder)
{
    RowStore store;
    RandomReport random(3);
    std::vector<std::pair<uint64_t, Row>> rows;
    const Group& group = *findGroup("Storage");
    for (int i = 0; i < 6000; ++i) {
        Row row = random.row(group);
        row.values.push_back({nullptr, "Unknown", std::string(static_cast<size_t>(i), 'x'), "", i % 2 == 0});
        rows.emplace_back(store.add(row), row);
    }
    for (const auto& [place, row] : rows)
        expectSame(store.row(place, &group), row);
    for (size_t i = rows.size(); i-- > 0;)
        expectSame(store.row(rows[i].first, &group), rows[i].second);
    EXPECT_EQ(store.error(), 0);
}

TEST(RowStore, tellsThatThereIsNoRoom)
{
    const char* before = getenv("TMPDIR");
    const std::string kept = before != nullptr ? before : "";
    setenv("TMPDIR", "/nonexistent", 1);
    RowStore store;
    Row row;
    row.values.push_back({nullptr, "A", std::string(size_t{1} << 19, 'x'), "", false});
    const uint64_t place = store.add(row);
    EXPECT_EQ(store.row(place, nullptr).values.size(), 1u);
    for (int i = 0; i < 4; ++i)
        store.add(row);
    EXPECT_EQ(store.error(), ENOENT);
    EXPECT_TRUE(store.row(place, nullptr).values.empty());
    if (before != nullptr)
        setenv("TMPDIR", kept.c_str(), 1);
    else
        unsetenv("TMPDIR");
}
