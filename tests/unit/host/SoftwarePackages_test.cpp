// Software Packages of copies of machines.

#include <gtest/gtest.h>

#include "host/packages/Flatpak.h"
#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

namespace
{
constexpr const char* kStatus = "/var/lib/dpkg/status";

std::string paragraph(const std::string& name, const std::string& architecture, const std::string& more = "")
{
    return "Package: " + name + "\nStatus: install ok installed\nArchitecture: " + architecture + "\nVersion: 1.0-2\n" +
           more + "\n";
}

std::string shownPackage(const std::string& name, const std::string& architecture, const std::string& more = "")
{
    return "PackageID=" + name + ":" + architecture + "|Name=" + name +
           "|Version=1.0|Revision=2|Manager=dpkg|Architecture=" + architecture + more + "|SourcePackage=" + name;
}
} // namespace

TEST(SoftwarePackages, ofDpkg)
{
    const Tree tree;
    tree.file(kStatus, paragraph("libc6", "amd64", "Multi-Arch: same\nInstalled-Size: 7\n") +
                           paragraph("libc6", "i386", "Multi-Arch: same\n") + paragraph("tzdata", "all") +
                           "Package: gone\nStatus: deinstall ok config-files\nVersion: 1\nArchitecture: amd64\n");
    tree.file("/invhw-kernel.json", R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {"modificationTime": {
        "/var/lib/dpkg/info/libc6:amd64.list": 1700000000, "/var/lib/dpkg/info/tzdata.list": 1600000000,
        "/var/lib/dpkg/info/libc6.list": 1}}})");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES),
              (Rows{shownPackage("libc6", "amd64", "|InstalledSize=7|InstallDate=2023-11-14-22.13.20.0000000"),
                    shownPackage("libc6", "i386"),
                    shownPackage("tzdata", "all", "|InstallDate=2020-09-13-12.26.40.0000000")}));
}

TEST(SoftwarePackages, ofDpkgWithAptsMarks)
{
    const Tree tree;
    tree.file(kStatus, paragraph("a", "amd64") + paragraph("b", "amd64"));
    tree.file("/var/lib/apt/extended_states", "Package: b\nArchitecture: amd64\nAuto-Installed: 1\n");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES),
              (Rows{shownPackage("a", "amd64") + "|Automatic=No", shownPackage("b", "amd64") + "|Automatic=Yes"}));
}

TEST(SoftwarePackages, thatComesAgainIsOne)
{
    const Tree tree;
    tree.file(kStatus, paragraph("a", "amd64") + paragraph("a", "amd64") + paragraph("a", "i386"));
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES), (Rows{shownPackage("a", "amd64"), shownPackage("a", "i386")}));
    EXPECT_EQ(statusOf(tree, GROUP_SOFTWARE_PACKAGES),
              "Group=Software Packages|Result=Collected|Rows=2|Reason=dpkg: a package comes again");
}

TEST(SoftwarePackages, asksNoOtherFilesTime)
{
    const Tree tree;
    tree.file(kStatus, paragraph("../../../../etc/x", "amd64"));
    tree.file("/invhw-kernel.json", R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {"modificationTime": {
        "/var/lib/dpkg/info/../../../../etc/x.list": 1700000000}}})");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES), Rows{shownPackage("../../../../etc/x", "amd64")});
}

TEST(SoftwarePackages, ofApk)
{
    const Tree tree;
    tree.file("/lib/apk/db/installed", "P:musl\nV:1.2.5-r0\nA:x86_64\nI:1\no:musl\nm:M\n\nP:nginx\nV:1\nA:x86_64\n");
    tree.file("/etc/apk/world", "nginx>1\n");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES),
              (Rows{"PackageID=musl:x86_64|Name=musl|Version=1.2.5-r0|Vendor=M|Manager=apk|Architecture=x86_64|"
                    "InstalledSize=1|SourcePackage=musl|Automatic=Yes",
                    "PackageID=nginx:x86_64|Name=nginx|Version=1|Manager=apk|Architecture=x86_64|Automatic=No"}));
}

TEST(SoftwarePackages, ofPacman)
{
    const Tree tree;
    const std::string local = "/var/lib/pacman/local/";
    tree.file(local + "ALPM_DB_VERSION", "9\n");
    tree.file(local + "zlib-1-2/desc", "%NAME%\nzlib\n\n%VERSION%\n1-2\n\n%INSTALLDATE%\n1700000000\n");
    tree.folder(local + "broken-1");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES),
              Rows{"PackageID=zlib|Name=zlib|Version=1-2|Manager=pacman|InstallDate=2023-11-14-22.13.20.0000000|"
                   "Automatic=No"});
}

TEST(SoftwarePackages, ofSnap)
{
    const Tree tree;
    tree.file("/snap/README", "");
    tree.file("/snap/core22/1380/meta/snap.yaml",
              "name: core22\nversion: '20240408'\narchitectures:\n- amd64\n- all\nsummary: base\n");
    tree.link("/snap/core22/current", "1380");
    tree.file("/snap/hello/x1/meta/snap.yaml",
              "name: hello\nversion: 2.10\narchitectures: [arm64, all]\napps:\n  name: no\n");
    tree.link("/snap/hello/current", "x1");
    tree.file("/snap/gone/3/meta/snap.yaml", "name: gone\nversion: 1\n");
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES),
              (Rows{"PackageID=core22:amd64|Name=core22|Version=20240408|Manager=snap|Architecture=amd64",
                    "PackageID=hello:arm64|Name=hello|Version=2.10|Manager=snap|Architecture=arm64"}));
}

TEST(SoftwarePackages, ofFlatpak)
{
    const Tree tree;
    const std::string app = "/var/lib/flatpak/app/org.example.App/";
    tree.link(app + "current", "x86_64/stable");
    tree.file(
        app + "x86_64/stable/0123/files/share/metainfo/org.example.App.metainfo.xml",
        "<component><releases>\n<release date=\"2024-01-01\" version=\"3.1\"/><release version=\"3.0\"/></releases>");
    tree.link(app + "x86_64/stable/active", "0123");
    tree.folder("/var/lib/flatpak/runtime/org.example.Platform/x86_64/23.08/456");
    tree.link("/var/lib/flatpak/runtime/org.example.Platform/x86_64/23.08/active", "456");
    tree.folder("/var/lib/flatpak/runtime/org.example.Platform/x86_64/22.08");
    EXPECT_EQ(
        collected(tree, GROUP_SOFTWARE_PACKAGES),
        (Rows{"PackageID=org.example.App:x86_64|Name=org.example.App|Version=3.1|Manager=flatpak|Architecture=x86_64",
              "PackageID=org.example.Platform:x86_64|Name=org.example.Platform|Version=23.08|Manager=flatpak|"
              "Architecture=x86_64"}));
}

TEST(SoftwarePackages, releasesAreReadWhereTheyAreWhole)
{
    using host::newestRelease;
    EXPECT_EQ(newestRelease("<release version='1'>"), "1");
    for (const char* text : {"", "<release ", "<release version=", "<release version=\"1", "<release version=1>",
                             "<release date='1'/>", "<release >version='1'", "<release version='>'"})
        EXPECT_EQ(newestRelease(text), "") << text;
}

#if !defined(__SANITIZE_ADDRESS__) // which keeps so much freed memory that every later process is slow to start and end
TEST(SoftwarePackages, areBounded)
{
    const Tree tree;
    std::string many;
    for (int i = 0; i < 210'000; ++i)
        many += "P:p" + std::to_string(i) + "\nV:1\n\n";
    tree.file("/lib/apk/db/installed", many);
    EXPECT_EQ(collected(tree, GROUP_SOFTWARE_PACKAGES).size(), 200'000u);
    EXPECT_EQ(statusOf(tree, GROUP_SOFTWARE_PACKAGES),
              "Group=Software Packages|Result=Collected|Rows=200000|Reason=apk: more than 200000 packages");
}
#endif

TEST(SoftwarePackages, ofHostileFilesEnd)
{
    const Tree tree;
    tree.file(kStatus, std::string(size_t{20} << 20, 'x'));
    EXPECT_EQ(statusOf(tree, GROUP_SOFTWARE_PACKAGES), "Group=Software Packages|Result=Empty|Rows=0");
    tree.sparse(kStatus, off_t{1} << 40);
    EXPECT_EQ(statusOf(tree, GROUP_SOFTWARE_PACKAGES), "Group=Software Packages|Result=Empty|Rows=0|Reason=" +
                                                           std::string(kStatus) + ": longer than 134217728 bytes");
}
