// The PCI Device group in whole scans: which source is read, and what a source that is missing or odd gives.

#include <gtest/gtest.h>
#include <string>

#include "FakeMachine.h"

namespace
{

constexpr char kLspci[] = "/sbin/lspci -m 2>/dev/null";
constexpr char kEthernet[] = "00:0d.0 \"Ethernet controller\" \"Intel Corp.\" \"82557 [Ethernet Pro 100]\" -r08\n";

ScanResult scanned(FakeMachine& machine)
{
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.ended()) << result.errors;
    return result;
}

} // namespace

TEST(PCIScan, procPciIsReadWhenItIsThere)
{
    FakeMachine machine;
    machine.file("/proc/pci", "  Bus  0, device   7, function  1:\n"
                              "    IDE interface: Intel Corporation 82371AB PIIX4 IDE (rev 1).\n");
    machine.command(kLspci, kEthernet);
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("PCIDevice").size(), 1U);
    EXPECT_EQ(result.value("PCIDevice", 0, "Index"), "1");
    EXPECT_EQ(result.value("PCIDevice", 0, "Name"), "Intel Corporation 82371AB PIIX4 IDE (IDE interface)");
    EXPECT_EQ(result.value("PCIDevice", 0, "Revision"), "0x01");
}

TEST(PCIScan, anEmptyProcPciHidesTheCommand)
{
    FakeMachine machine;
    machine.file("/proc/pci", "").command(kLspci, kEthernet);
    EXPECT_EQ(scanned(machine).rows("PCIDevice").size(), 0U);
}

TEST(PCIScan, theCommandIsReadWhenProcPciIsMissing)
{
    FakeMachine machine;
    machine.command(kLspci, kEthernet);
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("PCIDevice").size(), 1U);
    EXPECT_EQ(result.value("PCIDevice", 0, "Name"), "Intel Corp. 82557 [Ethernet Pro 100]");
    EXPECT_EQ(result.value("PCIDevice", 0, "Revision"), "0x08");
}

TEST(PCIScan, aCommandThatFailsOrDoesNotExistGivesAnEmptyTable)
{
    FakeMachine missing;
    const ScanResult withoutCommand = scanned(missing);
    EXPECT_EQ(withoutCommand.rows("PCIDevice").size(), 0U);
    EXPECT_FALSE(withoutCommand.logHas("could not obtain pci devices informations."));
    FakeMachine failing;
    failing.command(kLspci, "lspci: Cannot open /proc/bus/pci\n", 1);
    EXPECT_EQ(scanned(failing).rows("PCIDevice").size(), 0U);
}

TEST(PCIScan, aProcessThatCannotBeStartedIsLogged)
{
    FakeMachine machine;
    machine.commandFails(kLspci);
    const ScanResult result = scanned(machine);
    EXPECT_EQ(result.rows("PCIDevice").size(), 0U);
    EXPECT_TRUE(result.logHas("\nBegin Group PCI Device getTable()\ncould not obtain pci devices informations."
                              "\nEnd Group PCI Device getTable()\n"));
}

TEST(PCIScan, binaryOutputIsReadWithoutHarm)
{
    std::string bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += static_cast<char>(i * 7 % 256);
    FakeMachine machine;
    machine.command(kLspci, bytes + "\n" + kEthernet);
    const ScanResult result = scanned(machine);
    ASSERT_FALSE(result.rows("PCIDevice").empty());
    EXPECT_EQ(result.rows("PCIDevice").back().values[1].second, "Intel Corp. 82557 [Ethernet Pro 100]");
}

TEST(PCIScan, fiveThousandDevicesAreAllReported)
{
    std::string listing = "PCI devices found:\n";
    for (int i = 0; i < 5000; ++i)
        listing += "  Bus " + std::to_string(i / 32) + ", device " + std::to_string(i % 32) +
                   ", function  0:\n    Bridge: Unknown vendor Unknown device (rev 1).\n"
                   "      Vendor id=8086. Device id=1229.\n";
    FakeMachine machine;
    machine.file("/proc/pci", listing);
    const ScanResult result = scanned(machine);
    ASSERT_EQ(result.rows("PCIDevice").size(), 5000U);
    EXPECT_EQ(result.value("PCIDevice", 4999, "Index"), "5000");
    EXPECT_EQ(result.value("PCIDevice", 4999, "Name"), "Intel 82557/8/9 (Fast Ethernet LAN Controller)");
}
