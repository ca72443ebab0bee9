#include "host/text/NumberList.h"

#include <gtest/gtest.h>

#include <string>

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
        {"4-6,1-5,2-3,9,5-7", {1, 2, 3, 4, 5, 6, 7, 9}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(numbersOfList(c.list), c.numbers) << c.list;
}

TEST(NumbersOfList, isBounded)
{
    EXPECT_EQ(countOfList("0-4294967295"), 65536u);
    EXPECT_EQ(countOfList("0-4294967295,0-4294967295,7"), 65536u);
    std::string repeated;
    for (int i = 0; i < 20000; ++i)
        repeated += "0-65535,";
    EXPECT_EQ(countOfList(repeated), 65536u); // each number looked at 20,000 times would take a minute and more
}
