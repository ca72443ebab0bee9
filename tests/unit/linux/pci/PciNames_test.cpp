#include "linux/pci/PciNames.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "com/Owned.h"
#include "tests/unit/LogCapture.h"

static std::string nameOf(unsigned long vendorId, unsigned long deviceId, const char* classText)
{
    const OwnedText name(lookupPCI(vendorId, deviceId, classText));
    return name.get();
}

static std::string suseName(const char* line, size_t size = 512)
{
    char out[512];
    memset(out, 'x', sizeof out);
    processSuSEline(line, out, size);
    return out;
}

TEST(PciNames, aKnownDeviceIsNamedByVendorChipAndDescription)
{
    EXPECT_EQ(nameOf(0x8086, 0x1229, ""), "Intel 82557/8/9 (Fast Ethernet LAN Controller)");
    EXPECT_EQ(nameOf(0x8086, 0x1229, "Ethernet controller"), "Intel 82557/8/9 (Fast Ethernet LAN Controller)");
    EXPECT_EQ(nameOf(0x003D, 0x00D1, ""), "Lockheed Martin i740 PCI") << "without chip name";
    EXPECT_EQ(nameOf(0x0E11, 0x0002, ""), "Compaq ISA Bridge") << "without description";
}

TEST(PciNames, anUnknownDeviceOfAKnownVendorIsNamedByItsClass)
{
    EXPECT_EQ(nameOf(0x8086, 0x0000, ""), "Intel device");
    EXPECT_EQ(nameOf(0x8086, 0x0000, "Ethernet controller"), "Intel (Ethernet controller)");
    EXPECT_EQ(nameOf(0x0033, 0x0001, ""), "Paradyne Corp. device") << "the full name stands in for the short one";
}

TEST(PciNames, anUnknownVendorLeavesTheClassAlone)
{
    EXPECT_EQ(nameOf(0x0001, 0x0001, "Ethernet controller"), "(Ethernet controller)");
    EXPECT_EQ(nameOf(0x0001, 0x0001, ""), "");
    EXPECT_EQ(nameOf(0, 0, ""), "");
}

TEST(PciNames, aNameIsCutAt179Characters)
{
    const std::string classText(300, 'c');
    EXPECT_EQ(nameOf(0x0001, 0, classText.c_str()), "(" + std::string(178, 'c'));
    EXPECT_EQ(nameOf(0x8086, 0, classText.c_str()), "Intel (" + std::string(172, 'c'));
}

TEST(PciNames, everyLookUpIsLogged)
{
    const LogCapture log;
    nameOf(0x8086, 0xABCD, "");
    EXPECT_EQ(log.text(), "\n.. looking up vendor 0x8086 device 0xabcd");
}

TEST(PciNames, aLineWithNumbersOnlyIsNamedFromTheTables)
{
    EXPECT_EQ(suseName("    Class 0200: PCI device 8086:1229"), "Intel 82557/8/9 (Fast Ethernet LAN Controller)");
    EXPECT_EQ(suseName("PCI device 8086:fffe (Intel Corp.)"), "Intel device");
    EXPECT_EQ(suseName("PCI device 0001:0001"), "");
}

TEST(PciNames, aLineWithoutBothNumbersGivesTheEmptyText)
{
    EXPECT_EQ(suseName(""), "");
    EXPECT_EQ(suseName("PCI device"), "");
    EXPECT_EQ(suseName("PCI device "), "");
    EXPECT_EQ(suseName("PCI device 8086"), "");
    EXPECT_EQ(suseName("PCI device 8086:"), "");
    EXPECT_EQ(suseName("PCI device :1229"), "");
    EXPECT_EQ(suseName("PCI device 8086 1229"), "");
    EXPECT_EQ(suseName("PCI device zz:1229"), "");
    EXPECT_EQ(suseName("PCI device 99999999999999999999:1229"), "");
}

TEST(PciNames, theNameStaysInsideTheOutput)
{
    EXPECT_EQ(suseName("PCI device 8086:1229", 6), "Intel");
    EXPECT_EQ(suseName("PCI device 8086:1229", 1), "");
    char untouched = 'x';
    processSuSEline("PCI device 8086:1229", &untouched, 0);
    EXPECT_EQ(untouched, 'x');
}
