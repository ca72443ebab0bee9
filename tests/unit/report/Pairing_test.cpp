#include "report/diff/Pairing.h"

#include <gtest/gtest.h>

using namespace report;

namespace
{
// Rows with the names of every level (0: none) and a whole.
RowMarks marks(std::vector<std::vector<uint64_t>> names, std::vector<uint64_t> wholes)
{
    return {std::move(names), std::move(wholes)};
}

constexpr size_t N = NO_ROW;
} // namespace

TEST(Pairing, goesByTheFirstNameThatBothHave)
{
    // The second row has lost its first name and is known by its second one.
    EXPECT_EQ(pairRows(marks({{1, 2}, {11, 12}}, {1, 2}), marks({{0, 1}, {12, 11}}, {3, 4}), 1),
              (std::vector<size_t>{1, 0}));
}

TEST(Pairing, keepsApartWhatAFirstNameTellsApart)
{
    // Another disk under the old one's device name.
    EXPECT_EQ(pairRows(marks({{1}, {11}}, {1}), marks({{2}, {11}}, {1}), 1), (std::vector<size_t>{N}));
    // A name that several rows have tells nothing apart.
    EXPECT_EQ(pairRows(marks({{1, 1}, {11, 12}}, {1, 2}), marks({{2, 2}, {12, 11}}, {1, 2}), 1),
              (std::vector<size_t>{1, 0}));
}

TEST(Pairing, goesByTheOrderOfRowsWithOneKey)
{
    EXPECT_EQ(pairRows(marks({{5, 6, 5}}, {1, 2, 3}), marks({{6, 5, 5}}, {7, 8, 9}), 0),
              (std::vector<size_t>{1, 0, 2}));
    EXPECT_EQ(pairRows(marks({{5, 5}}, {1, 2}), marks({{5, 5, 5}}, {3, 4, 5}), 0), (std::vector<size_t>{0, 1}));
}

TEST(Pairing, pairsWhollyEqualRowsBeforeTheOrder)
{
    // A row in front of others with its key does not shift them.
    EXPECT_EQ(pairRows(marks({{5, 5}}, {1, 2}), marks({{5, 5, 5}}, {9, 1, 2}), 0), (std::vector<size_t>{1, 2}));
    EXPECT_EQ(pairRows(marks({}, {1, 2}), marks({}, {9, 1, 2}), 0), (std::vector<size_t>{1, 2}));
}

TEST(Pairing, leavesRowsWithAKeyOutOfTheOrderOfThoseWithout)
{
    EXPECT_EQ(pairRows(marks({{5, 0}}, {1, 2}), marks({{0, 6}}, {3, 4}), 0), (std::vector<size_t>{N, 0}));
    EXPECT_EQ(pairRows(marks({{5}}, {1}), marks({{6}}, {1}), 0), (std::vector<size_t>{N}));
}

TEST(Pairing, isTheSameFromBothEnds)
{
    const RowMarks a = marks({{1, 0, 3, 4, 4}, {7, 7, 0, 8, 9}}, {1, 2, 3, 4, 4});
    const RowMarks b = marks({{0, 3, 1, 4, 5, 4}, {7, 7, 8, 0, 9, 9}}, {4, 3, 2, 1, 4, 4});
    const std::vector<size_t> there = pairRows(a, b, 1), back = pairRows(b, a, 1);
    size_t pairs = 0;
    for (size_t i = 0; i < there.size(); ++i) {
        if (there[i] == NO_ROW)
            continue;
        ++pairs;
        EXPECT_EQ(back[there[i]], i);
    }
    EXPECT_EQ(pairs, static_cast<size_t>(std::count_if(back.begin(), back.end(), [](size_t i) { return i != N; })));
    EXPECT_GE(pairs, 4u);
}

TEST(Pairing, findsHashesThatStandThereOnce)
{
    EXPECT_EQ(onlyOnes({3, 1, 3, 0, 2}), (std::vector<bool>{false, true, false, false, true}));
}
