#pragma once

#include <cstddef>
#include <cstdint>

// Names of PCI vendors and devices by their numbers, for devices that the kernel cannot name.

// The texts stand in the rows: more than 5,000 rows of pointers would have to be relocated at the start of every scan,
// whether it looks anything up or not. A text that does not fit does not compile.

/// One vendor.
struct PciVendor {
    uint32_t vendorId;  // 16 bits
    char shortName[52]; // may be empty
    char fullName[48];
};

/// One device of a vendor; at most one of the names is empty.
struct PciDevice {
    uint16_t vendorId;
    uint16_t deviceId;
    char chipName[52];
    char description[104];
};

// Both tables have one all-zero row behind the counted ones.
extern const PciVendor PciVenTable[];
extern const size_t PciVenTableCount;
extern const PciDevice PciDevTable[];
extern const size_t PciDevTableCount;

/// The numbers that a table is ordered by, as one.
constexpr uint32_t pciSortKey(const PciVendor& vendor)
{
    return vendor.vendorId;
}
constexpr uint32_t pciSortKey(const PciDevice& device)
{
    return static_cast<uint32_t>(device.vendorId) << 16 | device.deviceId;
}

/// True when no row sorts before its predecessor.
template <typename Record>
constexpr bool isAscending(const Record* table, size_t count)
{
    for (size_t i = 1; i < count; ++i)
        if (pciSortKey(table[i]) < pciSortKey(table[i - 1]))
            return false;
    return true;
}

/// The first record of PciVenTable with that id, or null.
const PciVendor* findPciVendor(uint32_t vendorId);
/// The first record of PciDevTable with these ids, or null.
const PciDevice* findPciDevice(uint32_t vendorId, uint32_t deviceId);
