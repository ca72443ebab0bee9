#include "linux/pci/PciTables.h"

#include <gtest/gtest.h>
#include <string>

#include "com/Owned.h"
#include "com/md5file.h"

TEST(PciTables, areInAscendingOrderWithAnAllZeroRowAtTheEnd)
{
    EXPECT_TRUE(isAscending(PciVenTable, PciVenTableCount));
    EXPECT_TRUE(isAscending(PciDevTable, PciDevTableCount));
    const PciVendor& vendorEnd = PciVenTable[PciVenTableCount];
    EXPECT_TRUE(vendorEnd.vendorId == 0 && vendorEnd.shortName[0] == '\0' && vendorEnd.fullName[0] == '\0');
    const PciDevice& deviceEnd = PciDevTable[PciDevTableCount];
    EXPECT_TRUE(deviceEnd.vendorId == 0 && deviceEnd.deviceId == 0 && deviceEnd.chipName[0] == '\0' &&
                deviceEnd.description[0] == '\0');
}

TEST(PciTables, aTableOutOfOrderIsNoticed)
{
    static constexpr PciVendor rising[] = {{1, "", ""}, {1, "", ""}, {2, "", ""}};
    static constexpr PciVendor falling[] = {{1, "", ""}, {3, "", ""}, {2, "", ""}};
    static_assert(isAscending(rising, 3));
    static_assert(!isAscending(falling, 3));
    static constexpr PciDevice devices[] = {{1, 9, "", ""}, {2, 1, "", ""}, {2, 0, "", ""}};
    static_assert(isAscending(devices, 2));
    static_assert(!isAscending(devices, 3));
}

TEST(PciTables, everyRecordIsFoundAtTheFirstOneOfItsNumber)
{
    for (size_t i = 0; i < PciVenTableCount; ++i) {
        const PciVendor* found = findPciVendor(PciVenTable[i].vendorId);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->vendorId, PciVenTable[i].vendorId);
        EXPECT_TRUE(found == PciVenTable || found[-1].vendorId < found->vendorId);
    }
    for (size_t i = 0; i < PciDevTableCount; ++i) {
        const PciDevice& device = PciDevTable[i];
        const PciDevice* found = findPciDevice(device.vendorId, device.deviceId);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(pciSortKey(*found), pciSortKey(device));
        EXPECT_TRUE(found == PciDevTable || pciSortKey(found[-1]) < pciSortKey(*found));
    }
}

TEST(PciTables, everyVendorOfADeviceIsKnownByName)
{
    for (size_t i = 0; i < PciVenTableCount; ++i)
        EXPECT_TRUE(PciVenTable[i].shortName[0] != '\0' || PciVenTable[i].fullName[0] != '\0') << i;
    for (size_t i = 0; i < PciDevTableCount; ++i)
        EXPECT_TRUE(PciDevTable[i].chipName[0] != '\0' || PciDevTable[i].description[0] != '\0') << i;
}

TEST(PciTables, holdTheWellKnownRows)
{
    static const PciVendor vendors[] = {{0x8086, "Intel", "Intel Corporation"},
                                        {0xFFFE, "VMware", "VMware Inc."},
                                        {0xFFFF, "BAD!", "ILLEGITIMATE VENDOR ID"},
                                        {0x0033, "", "Paradyne Corp."}};
    for (const PciVendor& vendor : vendors) {
        const PciVendor* found = findPciVendor(vendor.vendorId);
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found->shortName, vendor.shortName);
        EXPECT_STREQ(found->fullName, vendor.fullName);
    }
    static const PciDevice devices[] = {{0x8086, 0x1229, "82557/8/9", "Fast Ethernet LAN Controller"},
                                        {0x8086, 0x100F, "82545EM", "Gigabit Ethernet Controller (copper)"},
                                        {0x003D, 0x00D1, "", "i740 PCI"},
                                        {0x0E11, 0x0002, "ISA Bridge", ""},
                                        {0xFFFF, 0xFFFF, "NO-DEVICE", "No device on PCI bus"}};
    for (const PciDevice& device : devices) {
        const PciDevice* found = findPciDevice(device.vendorId, device.deviceId);
        ASSERT_NE(found, nullptr);
        EXPECT_STREQ(found->chipName, device.chipName);
        EXPECT_STREQ(found->description, device.description);
    }
}

// A snapshot is replaced as a whole, with these digests; a slip in one of its thousands of rows is none.
TEST(PciTables, areTheWholeSnapshotToTheLetter)
{
    std::string vendors;
    for (size_t i = 0; i < PciVenTableCount; ++i) {
        const PciVendor& vendor = PciVenTable[i];
        vendors += std::to_string(vendor.vendorId) + '\t' + vendor.shortName + '\t' + vendor.fullName + '\n';
    }
    EXPECT_STREQ(OwnedText(md5_checksum(vendors.c_str())).get(), "aed43281f71930c0da4a7bcb3f262227");

    std::string devices;
    for (size_t i = 0; i < PciDevTableCount; ++i) {
        const PciDevice& device = PciDevTable[i];
        devices += std::to_string(pciSortKey(device)) + '\t' + device.chipName + '\t' + device.description + '\n';
    }
    EXPECT_STREQ(OwnedText(md5_checksum(devices.c_str())).get(), "6641969159f0fdf15c48cdfe7b9e6b12");
}

TEST(PciTables, aNumberThatIsNotThereOrNeedsMoreThan16BitsIsNotFound)
{
    EXPECT_EQ(findPciVendor(0), nullptr) << "the all-zero row is no vendor";
    EXPECT_EQ(findPciVendor(0x8085), nullptr);
    EXPECT_EQ(findPciVendor(0x18086), nullptr);
    EXPECT_EQ(findPciVendor(0xFFFFFFFF), nullptr);
    EXPECT_EQ(findPciDevice(0, 0), nullptr);
    EXPECT_EQ(findPciDevice(0x8086, 0x0000), nullptr);
    EXPECT_EQ(findPciDevice(0x8086, 0x11229), nullptr);
    EXPECT_EQ(findPciDevice(0x18086, 0x1229), nullptr);
}
