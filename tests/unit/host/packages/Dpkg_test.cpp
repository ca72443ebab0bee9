#include "host/packages/Dpkg.h"

#include <gtest/gtest.h>

using namespace host;

namespace
{
// A status file with one package in a state.
std::string inState(const std::string& status)
{
    return "Package: a\nStatus: " + status + "\nVersion: 1\nArchitecture: amd64\n";
}

size_t countOf(std::string_view text)
{
    size_t count = 0;
    parseDpkgStatus(text, [&count](const DpkgPackage&) { ++count; });
    return count;
}

Package named(std::string_view name, std::string_view architecture)
{
    Package package;
    package.name = name;
    package.architecture = architecture;
    return package;
}
} // namespace

TEST(VersionParts, aRevisionFollowsTheLastDash)
{
    const struct {
        std::string_view whole, version, revision;
    } cases[] = {
        {"1:2.3-4-5", "1:2.3-4", "5"}, {"1.0", "1.0", ""}, {"1.0-", "1.0", ""}, {"-1", "-1", ""}, {"", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(versionParts(c.whole).version, c.version) << c.whole;
        EXPECT_EQ(versionParts(c.whole).revision, c.revision) << c.whole;
    }
}

TEST(Kilobytes, countABegunOneWhole)
{
    EXPECT_EQ(kilobytes(0), 0u);
    EXPECT_EQ(kilobytes(1024), 1u);
    EXPECT_EQ(kilobytes(1025), 2u);
    EXPECT_EQ(kilobytes(UINT64_MAX), UINT64_MAX / 1024 + 1);
}

TEST(Dpkg, tellsWhatThePackageSays)
{
    size_t count = 0;
    parseDpkgStatus("Package: libc6\nStatus: install ok installed\nPriority: optional\nSection: libs\n"
                    "Installed-Size: 12985\nMaintainer: GNU Libc Maintainers <a@b>\nArchitecture: amd64\n"
                    "Multi-Arch: same\nSource: glibc (2.36-9)\nVersion: 2.36-9+deb12u10\n"
                    "Description: GNU C Library\n Contains: the standard\n Version: 9\n",
                    [&](const DpkgPackage& package) {
                        ++count;
                        EXPECT_EQ(package.name, "libc6");
                        EXPECT_EQ(package.version, "2.36");
                        EXPECT_EQ(package.revision, "9+deb12u10");
                        EXPECT_EQ(package.architecture, "amd64");
                        EXPECT_EQ(package.vendor, "GNU Libc Maintainers <a@b>");
                        EXPECT_EQ(package.category, "libs");
                        EXPECT_EQ(package.sourcePackage, "glibc");
                        EXPECT_EQ(package.installedKB, 12985u);
                        EXPECT_TRUE(package.isMultiarch);
                        EXPECT_FALSE(package.installDate);
                        EXPECT_FALSE(package.isAutomatic);
                    });
    EXPECT_EQ(count, 1u);
}

TEST(Dpkg, aPackageWithoutASourceIsItsOwn)
{
    parseDpkgStatus(inState("install ok installed") + "Multi-Arch: foreign\nInstalled-Size: much\n",
                    [](const DpkgPackage& package) {
                        EXPECT_EQ(package.sourcePackage, "a");
                        EXPECT_FALSE(package.installedKB);
                        EXPECT_FALSE(package.isMultiarch);
                    });
}

TEST(Dpkg, whatIsNotWholeIsNotInstalled)
{
    for (const char* state :
         {"install ok installed", "hold ok installed", "deinstall ok installed", "install reinstreq installed",
          "install ok triggers-pending", "install ok triggers-awaited"})
        EXPECT_EQ(countOf(inState(state)), 1u) << state;
    for (const char* state : {"install ok half-installed", "install reinstreq half-installed", "install ok unpacked",
                              "install ok half-configured", "deinstall ok config-files", "purge ok not-installed",
                              "unknown ok not-installed", "", "install ok", "installed ok"})
        EXPECT_EQ(countOf(inState(state)), 0u) << state;
}

TEST(Dpkg, aPackageWithoutNameOrVersionIsNone)
{
    EXPECT_EQ(countOf("Package:\nStatus: install ok installed\nVersion: 1\n"), 0u);
    EXPECT_EQ(countOf("Package: a\nStatus: install ok installed\nVersion:\n"), 0u);
}

TEST(AptStates, tellWhatWasInstalledForOthers)
{
    const AptStates states("Package: b\nArchitecture: amd64\nAuto-Installed: 1\n\n"
                           "Package: a\nArchitecture: i386\nAuto-Installed: 1\n\n"
                           "Package: c\nArchitecture: amd64\nAuto-Installed: 0\n");
    EXPECT_TRUE(states.isAutomatic(named("b", "amd64")));
    EXPECT_TRUE(states.isAutomatic(named("b", "all"))); // stands there with the machine's own architecture
    EXPECT_TRUE(states.isAutomatic(named("a", "i386")));
    EXPECT_FALSE(states.isAutomatic(named("a", "amd64")));
    EXPECT_FALSE(states.isAutomatic(named("c", "amd64")));
    EXPECT_FALSE(states.isAutomatic(named("c", "all")));
    EXPECT_FALSE(states.isAutomatic(named("z", "all")));
    EXPECT_FALSE(AptStates("").isAutomatic(named("a", "all")));
}
