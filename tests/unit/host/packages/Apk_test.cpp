#include "host/packages/Apk.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace host;

TEST(Apk, tellsWhatThePackageSays)
{
    std::vector<std::string> names;
    parseApkInstalled(
        "C:Q1abc=\nP:musl\nV:1.2.5-r0\nA:x86_64\nS:395000\nI:667649\nT:the C library\nU:https://x\nL:MIT\n"
        "o:musl-src\nm:A B <a@b>\nt:1709000000\nF:lib\nR:ld-musl-x86_64.so.1\na:0:0:755\nM:0:0:1777\n\n"
        "P:busybox\nV:1.36\nI:-1\n\nP:broken\n\nV:1\n\nP:last\nV:2",
        [&](const Package& package) {
            names.emplace_back(package.name);
            if (package.name == "musl") {
                EXPECT_EQ(package.version, "1.2.5-r0"); // whole, as everybody writes it
                EXPECT_EQ(package.revision, "");
                EXPECT_EQ(package.architecture, "x86_64");
                EXPECT_EQ(package.vendor, "A B <a@b>");
                EXPECT_EQ(package.sourcePackage, "musl-src");
                EXPECT_EQ(package.installedKB, 652u + 1u);
            } else
                EXPECT_FALSE(package.installedKB) << package.name;
        });
    EXPECT_EQ(names, (std::vector<std::string>{"musl", "busybox", "last"}));
}

TEST(Apk, worldNamesWhatWasAskedFor)
{
    const auto world = parseApkWorld("alpine-base\nbusybox>=1.36\npostgresql16=16.2-r0\nfoo@edge bar~1\n<odd\n!not\n");
    for (const char* name : {"alpine-base", "busybox", "postgresql16", "foo", "bar", "!not"})
        EXPECT_EQ(world.count(name), 1u) << name;
    EXPECT_EQ(world.size(), 6u);
}
