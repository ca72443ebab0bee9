#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef COMPONENTID_ATTRS_DEF[] = {
    // id                       name             type        max  enumeration
    {COMPONENTID_MANUFACTURER,  "Manufacturer",  VEX_STRING, 64,  nullptr},
    {COMPONENTID_PRODUCT,       "Product",       VEX_STRING, 128, nullptr},
    {COMPONENTID_VERSION,       "Version",       VEX_STRING, 64,  nullptr},
    {COMPONENTID_SERIAL_NUMBER, "Serial Number", VEX_STRING, 64,  nullptr},
    {COMPONENTID_INSTALLATION,  "Installation",  VEX_STRING, 64,  nullptr},
    {COMPONENTID_VERIFY,        "Verify",        VEX_STRING, 64,  nullptr},
    {COMPONENTID_TYPE,          "Type",          VEX_STRING, 32,  nullptr},
    {VEX_END,                   nullptr,         0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(COMPONENTID_ATTRS_DEF), "ComponentID attributes: bad row");
