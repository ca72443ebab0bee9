#include "host/packages/Pacman.h"

#include <gtest/gtest.h>

using namespace host;

TEST(Pacman, tellsWhatThePackageSays)
{
    const auto package = parsePacmanDescription(
        "%NAME%\nzlib\n\n%VERSION%\n1:1.3.1-2\n\n%BASE%\nzlib-base\n\n%DESC%\nCompression "
        "library\n\n%URL%\nhttps://x\n\n"
        "%ARCH%\nx86_64\n\n%INSTALLDATE%\n1714557295\n\n%PACKAGER%\nA B <a@b>\n\n%SIZE%\n349184\n\n"
        "%GROUPS%\nbase-devel\nmore\n\n%REASON%\n1\n\n%VALIDATION%\npgp\n");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->name, "zlib");
    EXPECT_EQ(package->version, "1:1.3.1-2");
    EXPECT_EQ(package->revision, "");
    EXPECT_EQ(package->architecture, "x86_64");
    EXPECT_EQ(package->vendor, "A B <a@b>");
    EXPECT_EQ(package->category, "base-devel");
    EXPECT_EQ(package->sourcePackage, "zlib-base");
    EXPECT_EQ(package->installedKB, 341u);
    EXPECT_EQ(package->installDate, 1714557295);
    EXPECT_EQ(package->isAutomatic, true);
}

TEST(Pacman, whatWasAskedForHasNoReason)
{
    const auto package = parsePacmanDescription("%NAME%\na\n\n%VERSION%\n1\n\n%SIZE%\n\n%INSTALLDATE%\nx\n");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->isAutomatic, false);
    EXPECT_FALSE(package->installedKB);
    EXPECT_FALSE(package->installDate);
}

TEST(Pacman, aValueIsNoName)
{
    const auto package = parsePacmanDescription("%NAME%\n%VERSION%\n%VERSION%\n2\n%NAME");
    ASSERT_TRUE(package);
    EXPECT_EQ(package->name, "%VERSION%");
    EXPECT_EQ(package->version, "2");
}

TEST(Pacman, aDescriptionWithoutNameOrVersionIsNone)
{
    for (const char* text : {"", "%NAME%\na\n", "%VERSION%\n1\n", "NAME\na\nVERSION\n1\n", "%NAME%"})
        EXPECT_FALSE(parsePacmanDescription(text)) << text;
}
