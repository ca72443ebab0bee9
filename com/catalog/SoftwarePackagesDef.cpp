#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef INSTALLED_PKGS_ATTRS_DEF[] = {
    // id     name          type        max  enumeration
    {1,       "Package ID", VEX_STRING, 64,  nullptr},
    {2,       "Name",       VEX_STRING, 128, nullptr},
    {3,       "Version",    VEX_STRING, 32,  nullptr},
    {4,       "Revision",   VEX_STRING, 32,  nullptr},
    {5,       "Vendor",     VEX_STRING, 64,  nullptr},
    {6,       "Category",   VEX_STRING, 64,  nullptr},
    {VEX_END, nullptr,      0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(INSTALLED_PKGS_ATTRS_DEF), "Software Packages attributes: bad row");
