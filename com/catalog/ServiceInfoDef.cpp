#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef SERVICE_INFO_ATTRS_DEF[] = {
    // id     name            type        max   enumeration
    {1,       "Service Name", VEX_STRING, 32,   nullptr},
    {2,       "Display Name", VEX_STRING, 64,   nullptr},
    {3,       "Description",  VEX_STRING, 1024, nullptr},
    {4,       "Path Name",    VEX_STRING, 255,  nullptr},
    {5,       "Service Type", VEX_STRING, 64,   nullptr},
    {6,       "Started",      VEX_STRING, 16,   nullptr},
    {7,       "Start Mode",   VEX_STRING, 16,   nullptr},
    {8,       "Start Name",   VEX_STRING, 255,  nullptr},
    {9,       "State",        VEX_STRING, 16,   nullptr},
    {10,      "Status",       VEX_STRING, 16,   nullptr},
    {VEX_END, nullptr,        0,          0,    nullptr},
};

constexpr uint32_t SERVICE_INFO_KEYS_DEF[] = {1};
// clang-format on

static_assert(isWellFormed(SERVICE_INFO_ATTRS_DEF), "Service Info attributes: bad row");
static_assert(areKeysOf(SERVICE_INFO_KEYS_DEF, SERVICE_INFO_ATTRS_DEF), "Service Info: key without attribute");
