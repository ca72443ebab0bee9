#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(USER_ACCOUNT_INFO_USER_NAME, IDENTIFYING, "", "`/etc/passwd`, name"),
    known(USER_ACCOUNT_INFO_DOMAIN, IDENTIFYING, "", "`uname` node name"),
    known(USER_ACCOUNT_INFO_DESCRIPTION, IDENTIFYING, "", "`/etc/passwd`, full name"),
    known(USER_ACCOUNT_INFO_DISABLED, PLAIN, "", "`/etc/shadow`, password that nothing matches, or expiry in the past: Yes or No"),
    known(USER_ACCOUNT_INFO_LOCKOUT, VOLATILE, "", "`/run/faillock/*`: Yes or No"),
    known(USER_ACCOUNT_INFO_STATUS, PLAIN, "", "Disabled, Locked Out or Enabled: from Disabled and Lockout"),
    known(USER_ACCOUNT_INFO_PASSWORD_CHANGEABLE, PLAIN, "", "`/etc/shadow`, minimum and maximum age: Yes or No"),
    known(USER_ACCOUNT_INFO_PASSWORD_EXPIRES, PLAIN, "", "`/etc/shadow`, maximum age below 99999: Yes or No"),
    known(USER_ACCOUNT_INFO_PASSWORD_REQUIRED, PLAIN, "", "`/etc/shadow`, password is not empty: Yes or No"),
    number(USER_ACCOUNT_INFO_USER_ID, "User ID", "", PLAIN, "`/etc/passwd`"),
    number(USER_ACCOUNT_INFO_GROUP_ID, "Group ID", "", PLAIN, "`/etc/passwd`"),
    text(USER_ACCOUNT_INFO_HOME, "Home", 4096, IDENTIFYING, "`/etc/passwd`"),
    text(USER_ACCOUNT_INFO_SHELL, "Shell", 255, PLAIN, "`/etc/passwd`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {USER_ACCOUNT_INFO_USER_NAME, USER_ACCOUNT_INFO_DOMAIN};

static_assert(isWellFormed(kAttributes), "UserAccountInfo: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "UserAccountInfo: key without attribute");
} // namespace

constexpr GroupDef USER_ACCOUNT_INFO_GROUP = {
    .id = GROUP_USER_ACCOUNT_INFO,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/etc/passwd` and `/etc/shadow` (status only, never a hash): a row an account",
};
} // namespace report
