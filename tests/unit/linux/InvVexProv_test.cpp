#include "linux/InvVexProv.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <malloc.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <vector>

#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexDebug.h"
#include "tests/unit/Capture.h"

namespace
{
// From here on the process can open no file: neither a log nor the firmware's memory nor anything else of the machine
// that runs the test.
void forbidOpening()
{
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_openat, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_open, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {std::size(filter), filter};
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program), 0);
    ASSERT_EQ(open("/dev/null", O_RDONLY), -1);
    ASSERT_EQ(fopen("/dev/null", "r"), nullptr);
}

// Runs action between vexInit and vexTerm in a child process that can open no file.
void withProvider(const std::function<void()>& action)
{
    inChild([&] {
        ASSERT_NO_FATAL_FAILURE(forbidOpening());
        vexInit(0, 0, nullptr);
        action();
        vexTerm();
    });
}
} // namespace

TEST(Provider, supportedGroupsAreSixteenEntriesInReportOrder)
{
    withProvider([] {
        uint32_t* const list = vexGetSupportedTables();
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(std::vector<uint32_t>(list, list + 16),
                  (std::vector<uint32_t>{1, 2, 3, 31, 4, 5, 6, 7, 15, 19, 20, 27, 24, 29, 34, 0xFFFFFFFF}));
        vexFreeSupportedTables(list);
    });
}

TEST(Provider, everyListIsANewOne)
{
    withProvider([] {
        uint32_t* const first = vexGetSupportedTables();
        uint32_t* const second = vexGetSupportedTables();
        EXPECT_NE(first, second);
        first[0] = 99;
        EXPECT_EQ(second[0], 1U);
        vexFreeSupportedTables(first);
        vexFreeSupportedTables(second);
    });
}

TEST(Provider, idsWithoutCollectorGiveNull)
{
    withProvider([] {
        for (const uint32_t id : {0U,  8U,  9U,  10U, 11U, 12U, 13U, 14U, 16U, 17U, 18U,         21U,        22U,
                                  23U, 25U, 26U, 28U, 30U, 32U, 33U, 35U, 36U, 37U, 0x80000001U, 0xFFFFFFFFU})
            EXPECT_EQ(vexGetTable(id), nullptr) << id;
    });
}

TEST(Provider, nullIsFreedWithoutHarm)
{
    const size_t before = mallinfo2().uordblks;
    vexFreeTable(nullptr);
    vexFreeSupportedTables(nullptr);
    EXPECT_EQ(mallinfo2().uordblks, before);
}

TEST(Provider, freedTableTakesItsRowsAlong)
{
    const auto makeAndFree = [] {
        auto* table = new VexTable(3, 1);
        table->addRow(new VexTableRow);
        vexFreeTable(table);
        return mallinfo2().uordblks;
    };
    const size_t once = makeAndFree(); // fills the allocator's caches
    EXPECT_EQ(makeAndFree(), once);
}

TEST(Provider, initSetsTheMasksAndTermClearsThem)
{
    inChild([] {
        ASSERT_NO_FATAL_FAILURE(forbidOpening());
        vexInit(0x12345678, 2, "any.log");
        EXPECT_EQ(_vexDebugCategory, 0x12345678U);
        EXPECT_EQ(_vexDebugLevel, 2U);
        vexTerm();
        EXPECT_EQ(_vexDebugCategory, 0U);
        EXPECT_EQ(_vexDebugLevel, 0U);
    });
}

TEST(Provider, givesNoTableBeforeInitAndAfterTerm)
{
    inChild([] {
        ASSERT_NO_FATAL_FAILURE(forbidOpening());
        EXPECT_EQ(vexGetTable(GROUP_MEMORY), nullptr);
        vexInit(0, 0, nullptr);
        uint32_t* const list = vexGetSupportedTables();
        vexTerm();
        for (const uint32_t* id = list; *id != VEX_END; ++id)
            EXPECT_EQ(vexGetTable(*id), nullptr) << *id;
        vexFreeSupportedTables(list);
    });
}
