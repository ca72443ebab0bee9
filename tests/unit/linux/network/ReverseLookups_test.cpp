#include "linux/network/ReverseLookups.h"

#include <arpa/inet.h>
#include <cstdlib>
#include <gtest/gtest.h>

// The loopback's address: the file of hosts answers for it.
static void lookUpTheLoopback()
{
    ReverseLookups lookups;
    lookups.nameOf(in_addr{htonl(INADDR_LOOPBACK)});
}

TEST(ReverseLookups, theSearchListOfTheEnvironmentIsBackAfterwards)
{
    for (const char* value : {"", "lab.example.com office.example"}) {
        setenv("LOCALDOMAIN", value, 1);
        lookUpTheLoopback();
        EXPECT_STREQ(getenv("LOCALDOMAIN"), value);
    }
    unsetenv("LOCALDOMAIN");
    lookUpTheLoopback();
    EXPECT_EQ(getenv("LOCALDOMAIN"), nullptr);
}
