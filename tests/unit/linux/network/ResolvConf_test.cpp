#include "linux/network/ResolvConf.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "linux/text/TextStream.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/linux/text/TextOf.h"

// "domain|name server 1|name server 2", starting with a domain as the reverse look-up gave it.
static std::string settingsOf(const std::string& text, const char* domain = "")
{
    TextStream stream = textOf(text);
    ResolvConf settings;
    strcpy(settings.domain, domain);
    readResolvConf(stream, &settings);
    return std::string(settings.domain) + "|" + settings.nameServer1 + "|" + settings.nameServer2;
}

TEST(ResolvConf, theFirstTwoNameServersAreTaken)
{
    EXPECT_EQ(settingsOf("nameserver 10.0.0.1\nnameserver\t10.0.0.2 # second\n"), "|10.0.0.1|10.0.0.2");
    EXPECT_EQ(settingsOf(" \t nameserver 10.0.0.1"), "|10.0.0.1|");
    EXPECT_EQ(settingsOf("\n"), "||");
}

TEST(ResolvConf, theLineBehindTheSecondNameServerIsNeverRead)
{
    EXPECT_EQ(settingsOf("nameserver 1.1.1.1\nnameserver 2.2.2.2\nnameserver 3.3.3.3\ndomain late.example\n"),
              "|1.1.1.1|2.2.2.2");
    EXPECT_EQ(settingsOf("nameserver 1.1.1.1\ndomain early.example\nnameserver 2.2.2.2\n"),
              "early.example|1.1.1.1|2.2.2.2");
}

TEST(ResolvConf, anAddressOfMoreThanFifteenCharactersIsDropped)
{
    EXPECT_EQ(settingsOf("nameserver fe80::1:2:3:4:5%eth0\nnameserver 192.168.100.200\n"), "|192.168.100.200|");
    EXPECT_EQ(settingsOf("nameserver 123456789012345\nnameserver 1234567890123456\n"), "|123456789012345|");
    EXPECT_EQ(settingsOf("nameserver ::1\n"), "|::1|") << "only the length tells the families apart";
}

TEST(ResolvConf, aNameServerLineWithoutAddressIsSkipped)
{
    EXPECT_EQ(settingsOf("nameserver\nnameserver  \t\nnameserver 10.0.0.1\n"), "|10.0.0.1|");
}

TEST(ResolvConf, theDomainOfTheReverseLookUpWins)
{
    EXPECT_EQ(settingsOf("domain lab.example\n"), "lab.example||");
    EXPECT_EQ(settingsOf("domain lab.example\n", "office.example"), "office.example||");
    EXPECT_EQ(settingsOf("domain one.example\ndomain two.example\n"), "one.example||");
}

TEST(ResolvConf, aDomainEndsAtAHash)
{
    EXPECT_EQ(settingsOf("domain lab.example#comment\n"), "lab.example||");
    EXPECT_EQ(settingsOf("domain # none\n"), "none||") << "a # is a delimiter, not the start of a comment";
    EXPECT_EQ(settingsOf("domain #\ndomain lab.example\n"), "lab.example||");
}

TEST(ResolvConf, everyOtherLineIsIgnored)
{
    EXPECT_EQ(settingsOf("# nameserver 1.1.1.1\n;domain x\nsearch a b\noptions timeout:1\nnameservers 2.2.2.2\n"
                         "NAMESERVER 3.3.3.3\n#nameserver 4.4.4.4\n"),
              "||");
}

TEST(ResolvConf, aLongLineComesInPieces)
{
    EXPECT_EQ(settingsOf("domain " + std::string(400, 'd') + "\n"), std::string(247, 'd') + "||");
    EXPECT_EQ(settingsOf(std::string(254, ' ') + "nameserver 10.0.0.1\n"), "|10.0.0.1|");
}

TEST(ResolvConf, everyFindingIsLogged)
{
    const LogCapture log;
    settingsOf("domain\ndomain lab.example\nnameserver 1.1.1.1\nnameserver 2.2.2.2\n");
    EXPECT_EQ(log.text(), "\n/etc/resolv.conf domain name null"
                          "\nusing domainName from /etc/resolv.conf: [lab.example]"
                          "\nnameserver1=>1.1.1.1<\nnameserver2=>2.2.2.2<");
}
