// Sources: the login records, where the time of the run level, a little after boot, stands for that of the boot; the
// output of runlevel; uname for the names. Without a run level in the login records there is no row.

#include "linux/UnixSystemParamsGroup.h"

#include <cstring>
#include <ctime>
#include <sys/utsname.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/system/LoginRecords.h"

namespace
{

// The group logs under the bit that belongs to no group, not under its own: readers of old logs know it so.
constexpr uint32_t kGroupMask = DEBUG_GENERAL;

int32_t askRunLevel()
{
    TextStream stream = TextStream::runCommand("/sbin/runlevel");
    return readRunLevel(stream);
}

utsname askNames()
{
    VEX_LOG(kGroupMask, VEX_LEVEL_DETAIL, "\nUnixSystemParams::getTable");
    utsname names = {};
    uname(&names);
    VEX_LOG(kGroupMask, VEX_LEVEL_DETAIL, "\nuname nodename=%s", names.nodename);
    return names;
}

// The local time as asctime writes it, newline included; empty for a time that has none.
const char* localTimeText(time_t time)
{
    const tm* local = localtime(&time);
    const char* text = local == nullptr ? nullptr : asctime(local);
    return text == nullptr ? "" : text;
}

void logRecord(const LoginRecord& record)
{
    VEX_LOG(kGroupMask, VEX_LEVEL_DETAIL, "\nRUNLEVEL line=%s", record.line);
    VEX_LOG(kGroupMask, VEX_LEVEL_DETAIL, "\nRUNLEVEL uptime=%ld %s", static_cast<long>(record.seconds),
            localTimeText(record.seconds));
}

} // namespace

UnixSystemParamsGroup::UnixSystemParamsGroup() : VexGroup(GROUP_UNIX_SYSTEM_PARAMS, 1) {}

int32_t readRunLevel(TextStream& stream)
{
    constexpr size_t kCurrentLevel = 2;
    char line[80];
    if (!stream.readLine(line))
        return 0;
    VEX_LOG(kGroupMask, VEX_LEVEL_DETAIL, "\nLinux runlevel=>%s<", line);
    return strlen(line) > kCurrentLevel ? static_cast<signed char>(line[kCurrentLevel]) - '0' : 0;
}

VexTable* UnixSystemParamsGroup::getTable()
{
    const VexGroupFrame frame(kGroupMask, "UnixSystemParams");
    const int32_t runLevel = askRunLevel();
    const utsname names = askNames();
    const std::optional<LoginRecord> record = findRunLevelRecord();
    if (!record)
        return nullptr;
    logRecord(*record);
    auto* const row = new VexTableRow;
    row->addDateTime(UNIX_SYSTEM_PARAMS_BOOT_TIME, static_cast<long>(record->seconds));
    row->addULong(UNIX_SYSTEM_PARAMS_RUN_LEVEL, static_cast<uint32_t>(runLevel));
    row->addString(UNIX_SYSTEM_PARAMS_HOSTNAME, names.nodename);
    row->addString(UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS, names.nodename);
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    table->addRow(row);
    return table;
}
