#include "linux/UnixSystemParamsGroup.h"

#include <cstring>
#include <ctime>
#include <sys/utsname.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/LoginRecords.h"

// The group logs under the bit that belongs to no group, not under its own: readers of old logs know it so.
static constexpr uint32_t DEBUG_THIS_GROUP = DEBUG_GENERAL;

UnixSystemParamsGroup::UnixSystemParamsGroup() : VexGroup(GROUP_UNIX_SYSTEM_PARAMS, 1) {}

int32_t readRunLevel(TextStream& stream)
{
    constexpr size_t CURRENT_LEVEL = 2;
    char line[80];
    if (!stream.readLine(line))
        return 0;
    VEX_LOG(DEBUG_THIS_GROUP, VEX_LEVEL_DETAIL, "\nLinux runlevel=>%s<", line);
    return strlen(line) > CURRENT_LEVEL ? static_cast<signed char>(line[CURRENT_LEVEL]) - '0' : 0;
}

static int32_t askRunLevel()
{
    TextStream stream = TextStream::runCommand("/sbin/runlevel");
    return readRunLevel(stream);
}

static utsname askNames()
{
    VEX_LOG(DEBUG_THIS_GROUP, VEX_LEVEL_DETAIL, "\nUnixSystemParams::getTable");
    utsname names = {};
    uname(&names);
    VEX_LOG(DEBUG_THIS_GROUP, VEX_LEVEL_DETAIL, "\nuname nodename=%s", names.nodename);
    return names;
}

// The local time as asctime writes it, newline included; empty for a time that has none.
static const char* localTimeText(time_t time)
{
    const tm* local = localtime(&time);
    const char* text = local == nullptr ? nullptr : asctime(local);
    return text == nullptr ? "" : text;
}

static void logRecord(const LoginRecord& record)
{
    VEX_LOG(DEBUG_THIS_GROUP, VEX_LEVEL_DETAIL, "\nRUNLEVEL line=%s", record.line);
    VEX_LOG(DEBUG_THIS_GROUP, VEX_LEVEL_DETAIL, "\nRUNLEVEL uptime=%ld %s", static_cast<long>(record.seconds),
            localTimeText(record.seconds));
}

VexTable* UnixSystemParamsGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_THIS_GROUP, "UnixSystemParams");
    const int32_t runLevel = askRunLevel();
    const utsname names = askNames();
    const std::optional<LoginRecord> record = findRunLevelRecord();
    if (!record)
        return nullptr;
    logRecord(*record);
    auto* row = new VexTableRow;
    row->addDateTime(UNIX_PAR_BOOT_TIME, static_cast<long>(record->seconds));
    row->addULong(UNIX_PAR_RUN_LEVEL, static_cast<uint32_t>(runLevel));
    row->addString(UNIX_PAR_HOSTNAME, names.nodename);
    row->addString(UNIX_PAR_COMPUTER_ALIAS, names.nodename);
    auto* table = new VexTable(getGroupId(), getGroupVersion());
    table->addRow(row);
    return table;
}
