#pragma once

#include "com/VexEnumValues.h"
#include "com/catalog/CatalogCheck.h"

// Enumerations and lists of words that attributes of more than one group have. They are each file's own: GCC under its
// sanitizers holds no address of an inline variable for a constant.

namespace report
{
// Enclosure types of SMBIOS 3.7, 7.4.1.
// clang-format off
constexpr vexEnumDef CHASSIS_TYPE_ENUM_DEF[] = {
#include "com/catalog/ChassisTypes.inc"
    {26,      "Compact PCI"},
    {27,      "Advanced TCA"},
    {28,      "Blade"},
    {29,      "Blade Enclosure"},
    {30,      "Tablet"},
    {31,      "Convertible"},
    {32,      "Detachable"},
    {33,      "IoT Gateway"},
    {34,      "Embedded PC"},
    {35,      "Mini PC"},
    {36,      "Stick PC"},
    {VEX_END, nullptr},
};
// clang-format on
static_assert(isAscending(CHASSIS_TYPE_ENUM_DEF), "chassis types: bad row");

constexpr const char* ADDRESS_FAMILY_WORDS[] = {"IPv4", "IPv6", nullptr};
} // namespace report
