#include "linux/system/LoginRecords.h"

#include <cstring>
#include <utmp.h>

std::optional<LoginRecord> findRunLevelRecord()
{
    struct utmp key {
    };
    key.ut_type = RUN_LVL;
    setutent();
    const struct utmp* const found = getutid(&key);
    std::optional<LoginRecord> record;
    if (found != nullptr) {
        record.emplace();
        record->seconds = static_cast<int32_t>(found->ut_tv.tv_sec);
        static_assert(sizeof record->line == sizeof found->ut_line + 1, "the field need not be terminated");
        memcpy(record->line, found->ut_line, sizeof found->ut_line);
        record->line[sizeof found->ut_line] = '\0';
    }
    endutent();
    return record;
}
