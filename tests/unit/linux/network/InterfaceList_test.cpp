#include "linux/network/InterfaceList.h"

#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

TEST(InterfaceList, aHardwareAddressIsWrittenInUpperCaseHexadecimal)
{
    ifreq answer = {};
    static const unsigned char bytes[] = {0x00, 0x0D, 0x60, 0x8A, 0xFF, 0xF2, 0x77};
    memcpy(answer.ifr_hwaddr.sa_data, bytes, sizeof bytes);
    MacText text = "";
    formatMac(answer, text);
    EXPECT_STREQ(text, "00:0D:60:8A:FF:F2");
}

TEST(InterfaceList, aRequestNamesTheInterfaceAndNothingElse)
{
    ifreq entry;
    memset(&entry, 0xEE, sizeof entry);
    strcpy(entry.ifr_name, "eth0:1");
    const ifreq request = requestFor(entry);
    EXPECT_STREQ(request.ifr_name, "eth0:1");
    static const char zeros[sizeof request.ifr_ifru] = {};
    EXPECT_EQ(memcmp(&request.ifr_ifru, zeros, sizeof zeros), 0);
}

TEST(InterfaceList, aSocketIsClosedWithItsScopeEvenWhenItsDescriptorIsTheFirst)
{
    const int saved = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    {
        const InterfaceSocket first(SOCK_DGRAM);
        EXPECT_TRUE(first.isOpen());
        EXPECT_NE(fcntl(STDIN_FILENO, F_GETFD), -1);
    }
    EXPECT_EQ(fcntl(STDIN_FILENO, F_GETFD), -1);
    dup2(saved, STDIN_FILENO);
    close(saved);
}
