#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(PC_SYSTEM_PARAMS_COMPUTER_NAME, IDENTIFYING, "", "`uname` node name"),
    known(PC_SYSTEM_PARAMS_USER_NAME, VOLATILE | IDENTIFYING, "", "`/run/systemd/users`, first user with a session"),
    known(PC_SYSTEM_PARAMS_DOMAIN_NAME, IDENTIFYING, "", "`/proc/sys/kernel/domainname` unless \"(none)\"; else `/etc/resolv.conf`, \"search\" or \"domain\""),
    known(PC_SYSTEM_PARAMS_WORKGROUP_NAME, IDENTIFYING, "", "`/etc/samba/smb.conf`, \"workgroup\""),
    known(PC_SYSTEM_PARAMS_IE_VERSION, PLAIN, "", "not produced by invhwctl"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "PCSystemParams: bad row");
} // namespace

constexpr GroupDef PC_SYSTEM_PARAMS_GROUP = {
    .id = GROUP_PC_SYSTEM_PARAMS,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "the kernel's names, `/etc/resolv.conf`",
};
} // namespace report
