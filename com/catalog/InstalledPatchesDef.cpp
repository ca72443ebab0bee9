#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef INSTALLED_PATCH_ATTRS_DEF[] = {
    // id     name           type        max  enumeration
    {1,       "Index",       VEX_ULONG,  0,   nullptr},
    {2,       "Patch ID",    VEX_STRING, 32,  nullptr},
    {3,       "Status",      VEX_STRING, 32,  nullptr},
    {4,       "Supersede",   VEX_STRING, 32,  nullptr},
    {5,       "Package ID",  VEX_STRING, 64,  nullptr},
    {6,       "Description", VEX_STRING, 255, nullptr},
    {7,       "Publisher",   VEX_STRING, 128, nullptr},
    {8,       "ID",          VEX_STRING, 32,  nullptr},
    {VEX_END, nullptr,       0,          0,   nullptr},
};

constexpr uint32_t INSTALLED_PATCH_KEYS_DEF[] = {1, 8};
// clang-format on

static_assert(isWellFormed(INSTALLED_PATCH_ATTRS_DEF), "Installed Patches attributes: bad row");
static_assert(areKeysOf(INSTALLED_PATCH_KEYS_DEF, INSTALLED_PATCH_ATTRS_DEF),
              "Installed Patches: key without attribute");
