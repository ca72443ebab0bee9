#include "host/text/NumberList.h"

#include <gtest/gtest.h>

using namespace host;
using Numbers = std::vector<uint32_t>;

TEST(NumbersOfList, takesNumbersAndRanges)
{
    static const struct {
        const char* list;
        Numbers numbers;
    } cases[] = {
        {"", {}},
        {"\n", {}},
        {"0", {0}},
        {"0-3,8\n", {0, 1, 2, 3, 8}},
        {"5-3", {}},
        {"1,,2", {1, 2}},
        {",", {}},
        {"x,1-y,z-2,3", {3}},
        {"1-2-3", {}},
        {"-1", {}},
        {"4294967295", {4294967295}},
        {"4294967296", {}},
        {"4294967294-4294967295", {4294967294, 4294967295}},
        {"8,1-2,2", {1, 2, 8}}, // ascending, each once, whoever wrote it
    };
    for (const auto& c : cases)
        EXPECT_EQ(numbersOfList(c.list), c.numbers) << c.list;
}

TEST(NumbersOfList, isBounded)
{
    EXPECT_EQ(countOfList("0-4294967295"), 65536u);
    EXPECT_EQ(countOfList("0-4294967295,0-4294967295,7"), 65536u);
}
