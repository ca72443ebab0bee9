#include "linux/system/LoginRecords.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <paths.h>
#include <string>
#include <unistd.h>
#include <utmp.h>
#include <vector>

namespace
{

// The login records of the C library are those of a file of the test's own.
class LoginRecords : public testing::Test
{
protected:
    LoginRecords() { utmpname(path_); }
    ~LoginRecords() override
    {
        utmpname(_PATH_UTMP);
        close(file_);
        unlink(path_);
    }

    void add(short type, const char* line, int32_t seconds) const
    {
        struct utmp record = {};
        record.ut_type = type;
        memcpy(record.ut_line, line, strnlen(line, sizeof record.ut_line)); // need not be terminated
        record.ut_tv.tv_sec = seconds;
        EXPECT_EQ(write(file_, &record, sizeof record), static_cast<ssize_t>(sizeof record));
    }

    char path_[32] = "/tmp/invhw_utmp_XXXXXX";
    const int file_ = mkstemp(path_);
};

} // namespace

TEST_F(LoginRecords, theFirstOfARunLevelIsFound)
{
    add(BOOT_TIME, "~", 1000);
    add(RUN_LVL, "~~", 1100000000);
    add(RUN_LVL, "later", 1200000000);
    const std::optional<LoginRecord> record = findRunLevelRecord();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->seconds, 1100000000);
    EXPECT_STREQ(record->line, "~~");
}

TEST_F(LoginRecords, aLineMayFillItsField)
{
    const std::string line(sizeof utmp::ut_line, 'x');
    add(RUN_LVL, line.c_str(), 1);
    const std::optional<LoginRecord> record = findRunLevelRecord();
    ASSERT_TRUE(record);
    EXPECT_EQ(record->line, line);
}

TEST_F(LoginRecords, withoutARunLevelThereIsNone)
{
    EXPECT_FALSE(findRunLevelRecord());
    add(BOOT_TIME, "~", 1000);
    EXPECT_FALSE(findRunLevelRecord());
}

TEST_F(LoginRecords, everySearchBeginsAtTheFirstAndClosesTheFile)
{
    add(RUN_LVL, "~~", 1100000000);
    const int before = dup(file_); // the descriptor that the next file gets
    close(before);
    for (int i = 0; i < 2; ++i) {
        const std::optional<LoginRecord> record = findRunLevelRecord();
        ASSERT_TRUE(record);
        EXPECT_EQ(record->seconds, 1100000000);
    }
    const int after = dup(file_);
    close(after);
    EXPECT_EQ(after, before);
}
