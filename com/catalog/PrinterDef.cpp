#include "com/VexCatalog.h"
#include "com/catalog/CatalogCheck.h"

// clang-format off
constexpr vexAttribDef PRINTER_ATTRS_DEF[] = {
    // id     name                  type        max  enumeration
    {1,       "Index",              VEX_ULONG,  0,   nullptr},
    {2,       "ID",                 VEX_STRING, 32,  nullptr},
    {3,       "Name",               VEX_STRING, 255, nullptr},
    {4,       "Port Name",          VEX_STRING, 255, nullptr},
    {5,       "Description",        VEX_STRING, 255, nullptr},
    {6,       "Is Local",           VEX_STRING, 1,   nullptr},
    {7,       "Location",           VEX_STRING, 255, nullptr},
    {8,       "Driver Name",        VEX_STRING, 255, nullptr},
    {9,       "Driver Version",     VEX_STRING, 255, nullptr},
    {10,      "Driver Path",        VEX_STRING, 255, nullptr},
    {11,      "Driver Data File",   VEX_STRING, 255, nullptr},
    {12,      "Driver Config File", VEX_STRING, 255, nullptr},
    {VEX_END, nullptr,              0,          0,   nullptr},
};

constexpr uint32_t PRINTER_KEYS_DEF[] = {1, 2};
// clang-format on

static_assert(isWellFormed(PRINTER_ATTRS_DEF), "Printer attributes: bad row");
static_assert(areKeysOf(PRINTER_KEYS_DEF, PRINTER_ATTRS_DEF), "Printer: key without attribute");
