#include "host/Root.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "host/Notes.h"
#include "tests/unit/Capture.h"
#include "tests/unit/host/Rights.h"
#include "tests/unit/host/Tree.h"

using namespace host;
using Names = std::vector<std::string>;

// Every test runs with the kernel's own bounded look-up and with what stands in for it on kernels and in containers
// that have none.
class RootOf : public testing::TestWithParam<int>
{
protected:
    void check(const std::string& folder, const std::function<void(const Root&, Notes&)>& checks) const
    {
        inChild([&] {
            if (GetParam() != 0)
                denyCall(SYS_openat2, GetParam());
            Notes notes;
            const Root root(folder, notes);
            ASSERT_TRUE(root.isOpen());
            checks(root, notes);
        });
    }

    Tree tree_;
};

INSTANTIATE_TEST_SUITE_P(Way, RootOf, testing::Values(0, ENOSYS, EPERM), [](const auto& way) {
    return way.param == 0 ? "openat2" : way.param == ENOSYS ? "olderKernel" : "filtered";
});

TEST_P(RootOf, aFileIsReadWholeAndItsLineAlone)
{
    tree_.file("/etc/os-release", "NAME=x\nID=y\n");
    tree_.file("/model", std::string("Board B\0", 8));
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/etc/os-release"), "NAME=x\nID=y\n");
        EXPECT_EQ(root.line("/etc/os-release"), "NAME=x");
        EXPECT_EQ(root.line("/model"), "Board B");
        const MaybeFact fact = root.fact("/etc/os-release");
        ASSERT_TRUE(fact);
        EXPECT_EQ(fact->value, "NAME=x");
        EXPECT_EQ(fact->source, "/etc/os-release");
        EXPECT_TRUE(notes.wasFound());
        EXPECT_EQ(notes.text(), "");
    });
}

TEST_P(RootOf, whatIsNotThereIsAbsentWithoutANote)
{
    tree_.file("/file", "x");
    tree_.file("/blank", " \t\r\n\n second");
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/none"), std::nullopt);
        EXPECT_EQ(root.read("/file/below"), std::nullopt);
        EXPECT_EQ(root.read("/" + std::string(300, 'n')), std::nullopt);
        EXPECT_EQ(root.read("/" + std::string(10000, 'n')), std::nullopt);
        EXPECT_EQ(root.read(std::string_view("/file\0x", 7)), std::nullopt);
        EXPECT_EQ(root.realPath(std::string_view("/file\0x", 7)), std::nullopt);
        EXPECT_EQ(root.fact("/none"), std::nullopt);
        EXPECT_EQ(root.list("/none"), Names());
        EXPECT_EQ(root.list("/file"), Names());
        EXPECT_EQ(root.link("/none"), std::nullopt);
        EXPECT_EQ(root.realPath("/none"), std::nullopt);
        EXPECT_FALSE(root.exists("/none"));
        EXPECT_FALSE(notes.wasFound());
        EXPECT_EQ(root.line("/blank"), std::nullopt);
        EXPECT_EQ(root.link("/file"), std::nullopt);
        EXPECT_EQ(notes.text(), "");
    });
}

TEST_P(RootOf, numbersAreTheWholeLine)
{
    const struct {
        const char* text;
        std::optional<uint64_t> number;
    } cases[] = {{"12\n", 12},
                 {"0x1aF\n", 0x1AF},
                 {"18446744073709551615", UINT64_MAX},
                 {"18446744073709551616", {}},
                 {"-1\n", {}},
                 {"12 kB\n", {}},
                 {"0x\n", {}},
                 {"\n", {}}};
    for (const auto& one : cases)
        tree_.file(std::string("/") + one.text, one.text);
    check(tree_.folder(), [&](const Root& root, Notes&) {
        for (const auto& one : cases)
            EXPECT_EQ(root.number(std::string("/") + one.text), one.number) << one.text;
    });
}

TEST_P(RootOf, anEndlessFileIsCutAndNoted)
{
    tree_.sparse("/sparse", off_t{1} << 40);
    tree_.file("/exact", std::string(100, 'x'));
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/exact", 100), std::string(100, 'x'));
        EXPECT_EQ(notes.text(), "");
        EXPECT_EQ(root.read("/sparse"), std::string(Root::kFileLimit, '\0'));
        EXPECT_EQ(notes.text(), "/sparse: longer than 4194304 bytes");
        EXPECT_EQ(root.read("/exact", 99), std::string(99, 'x'));
        EXPECT_EQ(notes.text(), "/sparse: longer than 4194304 bytes; /exact: longer than 99 bytes");
    });
}

TEST_P(RootOf, aLineThatIsTooLongIsCutAndNoted)
{
    tree_.file("/long", std::string(Root::kLineLimit + 1, 'x'));
    tree_.file("/more", "first\n" + std::string(Root::kLineLimit, 'x'));
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.line("/more"), "first");
        EXPECT_EQ(notes.text(), "");
        EXPECT_EQ(root.line("/long"), std::string(Root::kLineLimit, 'x'));
        EXPECT_EQ(notes.text(), "/long: its line is longer than 4096 bytes");
    });
}

TEST_P(RootOf, whatMayBlockIsNeverOpened)
{
    tree_.fifo("/fifo");
    tree_.folder("/folder");
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/fifo"), std::nullopt);
        EXPECT_EQ(root.line("/folder"), std::nullopt);
        EXPECT_EQ(root.list("/fifo"), Names());
        EXPECT_EQ(root.lines("/fifo", [](std::string_view) { return true; }), std::nullopt);
        EXPECT_TRUE(root.exists("/fifo"));
        EXPECT_EQ(notes.text(), "/fifo: no regular file; /folder: Is a directory");
    });
}

// A writer that waits for a reader of the FIFO must not be woken by a scan: it would then write to nobody.
TEST_P(RootOf, aWaitingWriterIsNotWoken)
{
    tree_.fifo("/fifo");
    const pid_t writer = fork();
    if (writer == 0)
        _exit(open(tree_.at("/fifo").c_str(), O_WRONLY) == -1);
    usleep(50'000);
    check(tree_.folder(), [](const Root& root, Notes&) { EXPECT_EQ(root.read("/fifo"), std::nullopt); });
    usleep(50'000);
    EXPECT_EQ(waitpid(writer, nullptr, WNOHANG), 0);
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
}

TEST_P(RootOf, noLinkLeadsOut)
{
    Tree outside;
    outside.file("/secret", "outside");
    tree_.file("/etc/inside", "inside");
    tree_.link("/absolute", outside.at("/secret"));
    tree_.link("/up", "../../../../../../../../.." + outside.at("/secret"));
    tree_.link("/a/folder", "../.." + outside.folder());
    tree_.link("/a/b/home", "/etc");
    tree_.link("/a/b/climb", "../../../../../../etc/inside");
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/absolute"), std::nullopt);
        EXPECT_EQ(root.read("/up"), std::nullopt);
        EXPECT_EQ(root.read("/a/folder/secret"), std::nullopt);
        EXPECT_EQ(root.list("/a/folder"), Names());
        EXPECT_EQ(root.list("/.."), (Names{"a", "absolute", "etc", "up"}));
        EXPECT_EQ(root.list("/a/folder/.."), Names());
        EXPECT_EQ(root.realPath("/up"), std::nullopt);
        EXPECT_EQ(root.read("/a/b/home/inside"), "inside");
        EXPECT_EQ(root.read("/a/b/climb"), "inside");
        EXPECT_EQ(root.realPath("/a/b/climb"), "/etc/inside");
        EXPECT_EQ(root.realPath("/a/b/../../../../etc/inside"), "/etc/inside");
        EXPECT_EQ(notes.text(), "");
    });
}

TEST_P(RootOf, linksThatLeadNowhereEnd)
{
    tree_.link("/loop", "loop");
    tree_.link("/one", "two");
    tree_.link("/two", "/one");
    tree_.link("/dangling", "missing/target");
    for (int i = 0; i < 50; ++i)
        tree_.link("/chain" + std::to_string(i), "chain" + std::to_string(i + 1));
    tree_.file("/chain50", "end");
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        EXPECT_EQ(root.read("/dangling"), std::nullopt);
        EXPECT_TRUE(root.exists("/dangling"));
        EXPECT_EQ(root.link("/dangling"), "missing/target");
        EXPECT_EQ(root.realPath("/dangling"), std::nullopt);
        EXPECT_EQ(root.read("/chain10"), "end"); // 40 links
        EXPECT_EQ(root.realPath("/chain10"), "/chain50");
        EXPECT_EQ(notes.text(), "");
        EXPECT_EQ(root.read("/loop"), std::nullopt);
        EXPECT_EQ(root.list("/one/below"), Names());
        EXPECT_EQ(root.read("/chain9"), std::nullopt); // 41
        EXPECT_EQ(root.realPath("/chain9"), std::nullopt);
        EXPECT_EQ(notes.text(), "/loop: Too many levels of symbolic links; /one/below: Too many levels of symbolic "
                                "links; /chain9: Too many levels of symbolic links");
    });
}

TEST_P(RootOf, linksAreReadAsTheyStand)
{
    tree_.link("/sys/block/sda", "../devices/ata1/block/sda");
    tree_.folder("/sys/devices/ata1/block/sda");
    tree_.link("/driver", "../../drivers/nvme//");
    tree_.link("/root", "/");
    check(tree_.folder(), [](const Root& root, Notes&) {
        EXPECT_EQ(root.link("/sys/block/sda"), "../devices/ata1/block/sda");
        EXPECT_EQ(root.linkName("/sys/block/sda"), "sda");
        EXPECT_EQ(root.linkName("/driver"), "nvme");
        EXPECT_EQ(root.linkName("/root"), std::nullopt);
        EXPECT_EQ(root.linkName("/sys"), std::nullopt);
        EXPECT_EQ(root.realPath("/sys/block/sda"), "/sys/devices/ata1/block/sda");
        EXPECT_EQ(root.realPath("/root"), "/");
        EXPECT_EQ(root.realPath("/sys//./block/"), "/sys/block");
    });
}

TEST_P(RootOf, namesAreInNaturalOrder)
{
    for (const char* name : {"sda10", "sda2", "sda", "sda1", "nvme0n1p10", "nvme0n1p9", ".hidden", "sda02"})
        tree_.file(std::string("/block/") + name, "");
    check(tree_.folder(), [](const Root& root, Notes&) {
        EXPECT_EQ(root.list("/block"),
                  (Names{".hidden", "nvme0n1p9", "nvme0n1p10", "sda", "sda1", "sda2", "sda02", "sda10"}));
    });
}

TEST(Root, aHundredThousandNamesAreBounded)
{
    Tree tree;
    tree.folder("/many");
    const int folder = open(tree.at("/many").c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < 100'000; ++i)
        mknodat(folder, std::to_string(i).c_str(), S_IFREG | 0600, 0);
    close(folder);
    Notes notes;
    const Names names = Root(tree.folder(), notes).list("/many");
    ASSERT_EQ(names.size(), Root::kNameLimit);
    EXPECT_EQ(names.front(), "0");
    EXPECT_EQ(names.back(), "65535"); // the first ones, whatever order the file system has
    EXPECT_EQ(notes.text(), "/many: more than 65536 names");
}

TEST_P(RootOf, aRefusedFileIsTold)
{
    tree_.file("/product_uuid", "u");
    tree_.file("/closed/file", "f");
    chmod(tree_.at("/product_uuid").c_str(), 0400);
    chmod(tree_.at("/closed").c_str(), 0700);
    inChild([&] {
        ASSERT_NO_FATAL_FAILURE(becomeOrdinaryUser());
        if (GetParam() != 0)
            denyCall(SYS_openat2, GetParam());
        chmod(tree_.at("/product_uuid").c_str(), 0000); // where the test is an ordinary user's already
        chmod(tree_.at("/closed").c_str(), 0000);
        Notes notes;
        const Root root(tree_.folder(), notes);
        EXPECT_TRUE(root.exists("/product_uuid"));
        EXPECT_FALSE(notes.wasRefused());
        EXPECT_EQ(root.read("/product_uuid"), std::nullopt);
        EXPECT_EQ(root.line("/product_uuid"), std::nullopt);
        EXPECT_TRUE(notes.wasRefused());
        EXPECT_EQ(root.list("/closed"), Names());
        EXPECT_FALSE(root.exists("/closed/file"));
        EXPECT_EQ(notes.text(), "/product_uuid: Permission denied; /closed: Permission denied; "
                                "/closed/file: Permission denied");
    });
    chmod(tree_.at("/closed").c_str(), 0700);
}

TEST_P(RootOf, theWholeMachinesMagicLinksAreReadOnly)
{
    Tree outside;
    outside.file("/open", "by descriptor");
    const int opened = open(outside.at("/open").c_str(), O_RDONLY);
    check("/", [&](const Root& root, Notes& notes) {
        const std::string link = "/proc/self/fd/" + std::to_string(opened);
        EXPECT_EQ(root.link(link), outside.at("/open"));
        EXPECT_EQ(root.linkName("/proc/self/exe"), "host_test");
        EXPECT_TRUE(root.read("/proc/self/status").value_or("").starts_with("Name:"));
        EXPECT_TRUE(root.read("/proc/mounts"));
        EXPECT_TRUE(root.line("/proc/sys/kernel/ostype"));
        EXPECT_EQ(root.realPath("/proc/self"), "/proc/" + std::to_string(getpid()));
        EXPECT_EQ(notes.text(), "");
        EXPECT_FALSE(root.read(link));
        EXPECT_FALSE(root.read("/proc/self/exe"));
        EXPECT_EQ(root.list("/proc/self/root"), Names());
        EXPECT_EQ(root.realPath("/proc/self/cwd"), std::nullopt);
        EXPECT_EQ(notes.text(), link + ": Too many levels of symbolic links; "
                                       "/proc/self/exe: Too many levels of symbolic links; "
                                       "/proc/self/root: Too many levels of symbolic links; "
                                       "/proc/self/cwd: Too many levels of symbolic links");
    });
    close(opened);
}

TEST_P(RootOf, onlyChosenLinesOfADatabaseAreKept)
{
    std::string database = "# names\n8086  Intel\n\t1237  Bridge\n\t7000  ISA\n1234  Other\n\t1237  Not this\n";
    database += std::string(Root::kLineLimit + 1, '8') + "\n" + std::string(200'000, '\n') + "8087  Last";
    tree_.file("/pci.ids", database);
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        bool isVendor = false;
        const auto wanted = [&isVendor](std::string_view line) {
            if (!line.starts_with('\t'))
                isVendor = line.starts_with("808");
            return isVendor && !line.starts_with("\t7");
        };
        EXPECT_EQ(root.lines("/pci.ids", wanted), (Names{"8086  Intel", "\t1237  Bridge", "8087  Last"}));
        EXPECT_EQ(root.lines("/none", wanted), std::nullopt);
        EXPECT_EQ(notes.text(), "");
        EXPECT_FALSE(root.lines("/pci.ids", [](std::string_view) { return false; })->size());
    });
}

TEST_P(RootOf, whatIsChosenOfADatabaseIsBounded)
{
    tree_.sparse("/zeros", off_t{1} << 40);
    std::string lines;
    for (int i = 0; i < 100'000; ++i)
        lines += std::string(99, 'x') + '\n';
    tree_.file("/lines", lines);
    check(tree_.folder(), [](const Root& root, Notes& notes) {
        const auto all = [](std::string_view) { return true; };
        EXPECT_EQ(root.lines("/zeros", all), Names());
        EXPECT_EQ(notes.text(), "/zeros: not read to its end");
        const auto kept = root.lines("/lines", all);
        ASSERT_TRUE(kept);
        EXPECT_GT(kept->size(), 30'000u);
        EXPECT_LT(kept->size(), 42'000u);
        EXPECT_EQ(notes.text(), "/zeros: not read to its end; /lines: not read to its end");
    });
}

TEST(Root, aFolderThatIsNotThereIsNotOpen)
{
    Tree tree;
    tree.file("/file", "");
    Notes notes;
    EXPECT_FALSE(Root(tree.at("/none"), notes).isOpen());
    EXPECT_FALSE(Root(tree.at("/file"), notes).isOpen());
    EXPECT_EQ(Root(tree.at("/none"), notes).read("/etc/passwd"), std::nullopt);
    EXPECT_EQ(Root(tree.at("/none"), notes).list("/"), Names());
    EXPECT_EQ(Root(tree.at("/none"), notes).realPath("/"), std::nullopt);
    EXPECT_EQ(notes.text(),
              tree.at("/none") + ": No such file or directory; " + tree.at("/file") + ": Not a directory");
}

// The kernel gives up with EAGAIN while folders are renamed; no answer may be lost by that.
TEST(Root, renamesMeanwhileLoseNothing)
{
    Tree tree;
    tree.file("/a/b/c/file", "x");
    tree.link("/a/b/up", "../b/../b/c/file");
    const pid_t renamer = fork();
    if (renamer == 0)
        for (;;) {
            mkdir(tree.at("/moving").c_str(), 0700);
            rename(tree.at("/moving").c_str(), tree.at("/moved").c_str());
            rmdir(tree.at("/moved").c_str());
        }
    Notes notes;
    const Root root(tree.folder(), notes);
    int lost = 0;
    for (int i = 0; i < 20'000; ++i)
        lost += root.read("/a/b/c/../c/../../b/up") != "x";
    kill(renamer, SIGKILL);
    waitpid(renamer, nullptr, 0);
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(notes.text(), "");
}
