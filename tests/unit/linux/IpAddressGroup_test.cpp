#include "linux/IpAddressGroup.h"

#include <gtest/gtest.h>
#include <string>

// "host name|domain" of a name, with "before" where nothing is written.
static std::string partsOf(const std::string& name)
{
    char hostName[256] = "before";
    char domain[256] = "before";
    splitHostName(name.c_str(), hostName, domain);
    return std::string(hostName) + "|" + domain;
}

TEST(IpAddress, anOfficialNameIsSplitAtItsFirstDot)
{
    EXPECT_EQ(partsOf("db1.lab.example.com"), "db1|lab.example.com");
    EXPECT_EQ(partsOf("db1."), "db1|");
    EXPECT_EQ(partsOf(".example"), "|example");
    EXPECT_EQ(partsOf("."), "|");
}

TEST(IpAddress, aNameWithoutADotIsAllHostName)
{
    EXPECT_EQ(partsOf("db1"), "db1|before");
    EXPECT_EQ(partsOf(""), "|before");
}

TEST(IpAddress, anOverlongNameIsCutAt255Bytes)
{
    EXPECT_EQ(partsOf(std::string(255, 'h')), std::string(255, 'h') + "|before");
    EXPECT_EQ(partsOf(std::string(1000, 'h')), std::string(255, 'h') + "|before");
    EXPECT_EQ(partsOf("h." + std::string(1000, 'd')), "h|" + std::string(253, 'd'));
}
