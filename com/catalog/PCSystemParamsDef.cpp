#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef PC_PAR_ATTRS_DEF[] = {
    // id     name              type        max  enumeration
    {1,       "Computer Name",  VEX_STRING, 255, nullptr},
    {2,       "User Name",      VEX_STRING, 255, nullptr},
    {3,       "Domain Name",    VEX_STRING, 128, nullptr},
    {4,       "Workgroup Name", VEX_STRING, 128, nullptr},
    {5,       "IE Version",     VEX_STRING, 64,  nullptr},
    {VEX_END, nullptr,          0,          0,   nullptr},
};
// clang-format on

static_assert(isWellFormed(PC_PAR_ATTRS_DEF), "PC System Params attributes: bad row");
