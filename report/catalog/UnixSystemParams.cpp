#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(UNIX_SYSTEM_PARAMS_BOOT_TIME, VOLATILE, "", "`/proc/stat`, \"btime\""),
    known(UNIX_SYSTEM_PARAMS_RUN_LEVEL, PLAIN, "", "link `/etc/systemd/system/default.target` (else `/usr/lib/systemd/system/default.target`): 5 graphical, 3 multi-user, 1 rescue; else `/etc/inittab`, \"initdefault\""),
    known(UNIX_SYSTEM_PARAMS_HOSTNAME, IDENTIFYING, "", "`uname` node name"),
    known(UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS, IDENTIFYING, "", "`uname` node name"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "UnixSystemParams: bad row");
} // namespace

constexpr GroupDef UNIX_SYSTEM_PARAMS_GROUP = {
    .id = GROUP_UNIX_SYSTEM_PARAMS,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "`/proc/stat`, `uname`, the default target of systemd",
};
} // namespace report
