#pragma once

#include "com/catalog/CatalogCheck.h"

// Enumerations and lists of words that attributes of more than one group have. They are each file's own: GCC under its
// sanitizers holds no address of an inline variable for a constant.

namespace report
{
// Enclosure types of SMBIOS 3.7, 7.4.1. Those that com/catalog knows keep its texts.
// clang-format off
constexpr vexEnumDef CHASSIS_TYPE_ENUM_DEF[] = {
    {1,       "Other"},
    {2,       "Unknown"},
    {3,       "Desktop"},
    {4,       "Low Profile Desktop"},
    {5,       "Pizza Box"},
    {6,       "Mini Tower"},
    {7,       "Tower"},
    {8,       "Portable"},
    {9,       "Laptop"},
    {10,      "Notebook"},
    {11,      "Handheld"},
    {12,      "Docking Station"},
    {13,      "All in One"},
    {14,      "Sub-notebook"},
    {15,      "Space-saving"},
    {16,      "Lunch Box"},
    {17,      "Main Server Chassis"},
    {18,      "Expansion Chassis"},
    {19,      "SubChassis"},
    {20,      "Bus Expansion Chassis"},
    {21,      "Peripheral Chassis"},
    {22,      "RAID Chassis"},
    {23,      "Rack Mount Chassis"},
    {24,      "Sealed-case PC"},
    {25,      "Multi-system chassis"},
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
