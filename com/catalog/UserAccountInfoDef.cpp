#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef USER_ACCOUNT_INFO_ATTRS_DEF[] = {
    // id     name                  type        max   enumeration
    {1,       "User Name",          VEX_STRING, 64,   nullptr},
    {2,       "Domain",             VEX_STRING, 64,   nullptr},
    {3,       "Description",        VEX_STRING, 1024, nullptr},
    {4,       "Disabled",           VEX_STRING, 16,   nullptr},
    {5,       "Lockout",            VEX_STRING, 16,   nullptr},
    {6,       "Status",             VEX_STRING, 32,   nullptr},
    {7,       "PasswordChangeable", VEX_STRING, 16,   nullptr},
    {8,       "PasswordExpires",    VEX_STRING, 16,   nullptr},
    {9,       "PasswordRequired",   VEX_STRING, 16,   nullptr},
    {VEX_END, nullptr,              0,          0,    nullptr},
};

constexpr uint32_t USER_ACCOUNT_INFO_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isWellFormed(USER_ACCOUNT_INFO_ATTRS_DEF), "User Account Info attributes: bad row");
static_assert(areKeysOf(USER_ACCOUNT_INFO_KEYS_DEF, USER_ACCOUNT_INFO_ATTRS_DEF),
              "User Account Info: key without attribute");
