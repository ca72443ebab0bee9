#include "linux/network/Gateway.h"

#include <gtest/gtest.h>
#include <string>

#include "linux/text/TextStream.h"
#include "tests/unit/linux/text/TextOf.h"

static std::string gatewayOf(std::string line, const char* key)
{
    char out[255] = "untouched";
    return getGateway(out, line.data(), key) == 1 ? out : std::string("none, ") + out;
}

static std::string gatewayOfFile(const std::string& text, const char* key, unsigned long size = 255)
{
    TextStream stream = textOf(text);
    char out[255] = "";
    return readGateway(stream, key, out, size) ? out : "none";
}

TEST(Gateway, aLineYieldsTheAddressBehindTheKey)
{
    EXPECT_EQ(gatewayOf("GATEWAY=192.168.1.1\n", "GATEWAY="), "192.168.1.1");
    EXPECT_EQ(gatewayOf("GATEWAY=\"192.168.1.1\"\n", "GATEWAY"), "192.168.1.1");
    EXPECT_EQ(gatewayOf("export GATEWAY = 10.0.0.138 # router", "GATEWAY"), "10.0.0.138");
}

TEST(Gateway, aRoutesLineWithAddressAndDashesYieldsTheAddress)
{
    EXPECT_EQ(gatewayOf("default 192.168.0.254 - -\n", "default"), "192.168.0.254");
    EXPECT_EQ(gatewayOf("default\t10.10.0.1\t0.0.0.0\teth0\n", "default"), "10.10.0.1");
}

TEST(Gateway, theTextRunsOverDigitsCommasApostrophesAndDots)
{
    EXPECT_EQ(gatewayOf("GATEWAY='10.0.0.1'\n", "GATEWAY="), "10.0.0.1'");
    EXPECT_EQ(gatewayOf("GATEWAY=1,2'3..4-5\n", "GATEWAY="), "1,2'3..4");
}

TEST(Gateway, aLineWithoutKeyOrWithoutDigitLeavesTheOutputAlone)
{
    EXPECT_EQ(gatewayOf("HOSTNAME=a1\n", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("GATEWAY=\n", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("gateway=10.0.0.1\n", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("GATEWAY=", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("", "default"), "none, untouched");
}

TEST(Gateway, aHashBeforeTheKeyDisablesTheLineOneBehindTheAddressDoesNot)
{
    EXPECT_EQ(gatewayOf("# GATEWAY=10.0.0.1\n", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("#GATEWAY=10.0.0.1\n", "GATEWAY="), "none, untouched");
    EXPECT_EQ(gatewayOf("GATEWAY=10.0.0.1 # the router\n", "GATEWAY="), "10.0.0.1");
    EXPECT_EQ(gatewayOf("GATEWAY=#10.0.0.1\n", "GATEWAY="), "10.0.0.1") << "only a # up to the key counts";
}

TEST(Gateway, aGatewayDeviceLineMatchesTheKeyWithoutEqualsSign)
{
    const char text[] = "DEVICE=eth0\nGATEWAYDEV=eth0\nGATEWAY=10.0.0.1\n";
    EXPECT_EQ(gatewayOfFile(text, "GATEWAY"), "0");
    EXPECT_EQ(gatewayOfFile(text, "GATEWAY="), "10.0.0.1");
}

TEST(Gateway, theFirstMatchingLineEndsTheSearch)
{
    EXPECT_EQ(gatewayOfFile("# default 1.1.1.1\ndefault\ndefault 2.2.2.2 -\ndefault 3.3.3.3 -\n", "default"),
              "2.2.2.2");
    EXPECT_EQ(gatewayOfFile("192.168.0.0 0.0.0.0 255.255.255.0 eth0\n", "default"), "none");
}

TEST(Gateway, onlyTheFirst299LinesAreRead)
{
    std::string text;
    for (int i = 0; i < 298; ++i)
        text += "\n";
    EXPECT_EQ(gatewayOfFile(text + "default 1.2.3.4\n", "default"), "1.2.3.4");
    EXPECT_EQ(gatewayOfFile(text + "\ndefault 1.2.3.4\n", "default"), "none");
}

TEST(Gateway, aLineLongerThanTheBufferIsReadInPieces)
{
    EXPECT_EQ(gatewayOfFile(std::string(250, ' ') + "default 1.2.3.4\n", "default"), "none") << "the key is cut in two";
    EXPECT_EQ(gatewayOfFile(std::string(240, ' ') + "default 1.2.3.4\n", "default"), "1.2.3.");
    EXPECT_EQ(gatewayOfFile("# " + std::string(252, ' ') + "default 1.2.3.4\n", "default"), "1.2.3.4")
        << "the # stands in another piece";
}

TEST(Gateway, theCopyStaysInsideTheOutput)
{
    EXPECT_EQ(gatewayOfFile("default 192.168.100.200\n", "default", 8), "192.168");
    EXPECT_EQ(gatewayOfFile("default " + std::string(300, '9') + "\n", "default"), std::string(246, '9'));
}

TEST(Gateway, aMissingFileHasNone)
{
    TextStream stream(nullptr);
    char out[16] = "";
    EXPECT_FALSE(readGateway(stream, "default", out, sizeof out));
}
