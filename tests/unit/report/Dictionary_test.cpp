#include "report/redact/Dictionary.h"

#include <gtest/gtest.h>

using namespace report;

namespace
{
Dictionary of(std::vector<std::pair<std::string, std::string>> rows)
{
    Dictionary dictionary;
    for (const auto& [from, to] : rows)
        EXPECT_TRUE(dictionary.add(from, to));
    dictionary.finish();
    return dictionary;
}
} // namespace

TEST(Dictionary, findsLongTextsAnywhere)
{
    const Dictionary dictionary = of({{"S7E0NX0W", "P3I4TP1K"}, {"skerryhost", "ddvkiumnop"}});
    EXPECT_EQ(dictionary.replaced("nvme-xS7E0NX0Wy"), "nvme-xP3I4TP1Ky");
    EXPECT_EQ(dictionary.replaced("SkerryHost.lan and SKERRYHOST"), "DdvkiuMnop.lan and DDVKIUMNOP");
    EXPECT_EQ(dictionary.replaced("skerryhos"), "skerryhos");
    EXPECT_EQ(dictionary.replaced(""), "");
}

TEST(Dictionary, findsShortTextsAsWords)
{
    const Dictionary dictionary =
        of({{"ada", "cvy"}, {"skerry", "ddvkiu"}, {"12", "34"}, {"12345", "99999"}, {"123456", "654321"}});
    EXPECT_EQ(dictionary.replaced("/home/ada:ada@x"), "/home/cvy:cvy@x");
    EXPECT_EQ(dictionary.replaced("adam ada-x x ada"), "adam ada-x x ada");
    EXPECT_EQ(dictionary.replaced("skerry--vg skerrys by-skerry_1"), "ddvkiu--vg skerrys by-ddvkiu_1");
    EXPECT_EQ(dictionary.replaced("12 12345 123456 1234567"), "12 12345 654321 1234567");
}

TEST(Dictionary, takesTheLongestThatMayStandThere)
{
    const Dictionary dictionary = of({{"abcd", "1111"}, {"abcdefgh", "22222222"}, {"abcdef", "333333"}});
    EXPECT_EQ(dictionary.replaced("abcdefgh abcdefg abcdef abcd abcdex"), "22222222 abcdefg 333333 1111 abcdex");
    EXPECT_EQ(of({{"abcd", "1111"}, {"abcd-efgh", "2222-2222"}}).replaced("abcd-efg"), "1111-efg");
}

TEST(Dictionary, findsTheFormsOfFileNames)
{
    const Dictionary dictionary = of({{"6a1b-22c3", "27d5-2912"}, {"my serial 1", "ab cdefgh 2"}});
    EXPECT_EQ(dictionary.replaced("dev-by\\x2duuid-6A1B\\x2d22C3.swap"), "dev-by\\x2duuid-27D5\\x2d2912.swap");
    EXPECT_EQ(dictionary.replaced("usb-my_serial_1-0:0 my\\x20serial\\x201"),
              "usb-ab_cdefgh_2-0:0 ab\\x20cdefgh\\x202");
}

TEST(Dictionary, findsAddressesAsAWhole)
{
    Dictionary dictionary;
    dictionary.addAddress("10.0.0.1", "10.7.7.7");
    dictionary.addAddress("fe80::1", "fe80::9");
    dictionary.finish();
    EXPECT_EQ(dictionary.replaced("10.0.0.1:/x 10.0.0.10 110.0.0.1 10.0.0.1.5 1.10.0.0.1 (10.0.0.1)."),
              "10.7.7.7:/x 10.0.0.10 110.0.0.1 10.0.0.1.5 1.10.0.0.1 (10.7.7.7).");
    EXPECT_EQ(dictionary.replaced("[fe80::1]:80 fe80::1:2 fe80::1%eth0"), "[fe80::9]:80 fe80::1:2 fe80::9%eth0");
}

TEST(Dictionary, keepsTheFirstReplacementOfATextThatComesTwice)
{
    EXPECT_EQ(of({{"abcdefgh", "11111111"}, {"ABCDEFGH", "22222222"}}).replaced("abcdefgh"), "11111111");
}

TEST(Dictionary, isQuickWithManyTextsOfOneBeginning)
{
    Dictionary dictionary;
    for (int i = 0; i < 50000; ++i)
        dictionary.add("prefixprefix" + std::to_string(i), "replacement!" + std::to_string(i));
    dictionary.finish();
    std::string text;
    for (int i = 0; i < 50000; ++i)
        text += "prefixprefix" + std::to_string(i) + ' ';
    const std::string made = dictionary.replaced(text);
    EXPECT_EQ(made.find("prefix"), std::string::npos);
    EXPECT_EQ(made.size(), text.size());
}
