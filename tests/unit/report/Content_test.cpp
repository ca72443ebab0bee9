#include "report/Content.h"

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"

using namespace report;

namespace
{
Content meaning(uint32_t group, uint32_t attribute, const char* text)
{
    const Attribute* known = findGroup(group)->find(attribute);
    return meaningOf({known, {}, contentOfText(known, text), {}, false});
}
} // namespace

TEST(Content, meansTheSameHoweverANumberIsWritten)
{
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "12"), Content(uint64_t{12}));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "012"), Content(uint64_t{12}));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "-1"), Content(uint64_t{UINT32_MAX}));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "-2147483648"), Content(uint64_t{0x80000000}));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "-2147483649"), Content("-2147483649"));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, "twelve"), Content("twelve"));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_INDEX, ""), Content(""));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_SIZE_BYTES, "18446744073709551615"), Content(UINT64_MAX));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_SIZE_BYTES, "18446744073709551616"), Content("18446744073709551616"));
    EXPECT_EQ(meaning(GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_TYPE, "LINUX"), Content(uint64_t{37}));
    EXPECT_EQ(meaning(GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_TYPE, "37"), Content(uint64_t{37}));
    EXPECT_EQ(meaning(GROUP_LPAR, LPAR_NODE_CAPACITY, "1,5"), Content(1.5));
    EXPECT_EQ(meaning(GROUP_LPAR, LPAR_NODE_CAPACITY, "1.500000"), Content(1.5));
    EXPECT_EQ(meaning(GROUP_LPAR, LPAR_NODE_CAPACITY, "inf"), Content("inf"));
    EXPECT_EQ(meaning(GROUP_STORAGE, STORAGE_MODEL, "012"), Content("012"));
}

TEST(Content, readsDateTimesOfBothForms)
{
    const DateTime leapDay{2024, 2, 29, 23, 59, 60, {}};
    EXPECT_EQ(parseXmlDateTime("2024-02-29-23.59.60.0000000"), leapDay);
    for (const char* text :
         {"", "2023-02-29-00.00.00.0000000", "2024-13-01-00.00.00.0000000", "2024-00-01-00.00.00.0000000",
          "2024-01-32-00.00.00.0000000", "2024-01-00-00.00.00.0000000", "2024-01-01-24.00.00.0000000",
          "2024-01-01-00.60.00.0000000", "2024-01-01-00.00.61.0000000", "2024-01-01-00.00.00.000000",
          "2024-01-01-00.00.00.0000001", "2024-01-01T00:00:00", "1900-02-29-00.00.00.0000000",
          " 2024-01-01-00.00.00.0000000"})
        EXPECT_FALSE(parseXmlDateTime(text)) << text;
    const auto offset = [](const char* text) { return parseRfc3339(std::string("2024-02-29T23:59:60") + text); };
    EXPECT_EQ(offset(""), leapDay);
    EXPECT_EQ(offset("Z")->offsetSeconds, 0);
    EXPECT_EQ(offset("+00:00")->offsetSeconds, 0);
    EXPECT_EQ(offset(".000Z")->offsetSeconds, 0);
    EXPECT_EQ(offset("-03:30")->offsetSeconds, -12600);
    for (const char* text : {".5Z", ".", ".Z", "z", "+1:00", "+01", "+0100", "+24:00", "+01:60", "+01:00 ", "Z0"})
        EXPECT_FALSE(offset(text)) << text;
}
