#include "linux/pci/ProcPci.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "linux/PCIDeviceGroup.h"
#include "linux/text/TextStream.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/TableText.h"
#include "tests/unit/linux/text/TextOf.h"

using Rows = std::vector<std::string>;

static Rows devicesOf(const std::string& listing)
{
    TextStream stream = textOf(listing);
    VexTable table(GROUP_PCI_DEVICE, 1);
    addProcPciDevices(stream, &table);
    return tableText(&table);
}

static std::string entry(const char* bus, const std::string& description)
{
    return std::string("  Bus  ") + bus + ":\n    " + description + "\n";
}

TEST(ProcPci, aDescribedDeviceIsNamedByDescriptionAndClass)
{
    EXPECT_EQ(
        devicesOf("PCI devices found:\n" +
                  entry("0, device   7, function  1", "IDE interface: Intel Corporation 82371AB PIIX4 IDE (rev 1).") +
                  "      Master Capable.  Latency=64.\n      I/O at 0xfcd0 [0xfcdf].\n"),
        Rows{"1=1|2=Intel Corporation 82371AB PIIX4 IDE (IDE interface)|3=0x01"});
}

TEST(ProcPci, furtherFunctionsOfADeviceWithTheSameNameAreSuppressed)
{
    const char ide[] = "IDE interface: Intel IDE (rev 1).";
    EXPECT_EQ(devicesOf(entry("0, device 7, function 1", ide) + entry("0, device 7, function 2", ide)),
              Rows{"1=1|2=Intel IDE (IDE interface)|3=0x01"});
    EXPECT_EQ(devicesOf(entry("0, device 7, function 1", ide) + entry("0, device 8, function 1", ide)),
              (Rows{"1=1|2=Intel IDE (IDE interface)|3=0x01", "1=2|2=Intel IDE (IDE interface)|3=0x01"}));
    EXPECT_EQ(devicesOf(entry("0, device 7, function 1", ide) + entry("1, device 7, function 1", ide)).size(), 2U);
    EXPECT_EQ(devicesOf(entry("0, device 7, function 1", ide) +
                        entry("0, device 7, function 2", "USB: Intel USB (rev 1).") +
                        entry("0, device 7, function 3", ide))
                  .size(),
              3U)
        << "only the row before is compared";
    EXPECT_EQ(devicesOf(entry("0, device 7, function 1", ide) +
                        entry("0, device 7, function 2", "IDE interface: Intel IDE (rev 2)."))
                  .size(),
              1U)
        << "the revision is not compared";
}

TEST(ProcPci, anUnknownDeviceIsNamedFromTheTablesByItsNumbers)
{
    EXPECT_EQ(
        devicesOf(entry("0, device 9, function 0", "Ethernet controller: Unknown vendor Unknown device (rev 8).") +
                  "      Vendor id=8086. Device id=1229.\n      Medium devsel.\n"),
        Rows{"1=1|2=Intel 82557/8/9 (Fast Ethernet LAN Controller)|3=0x08"});
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Ethernet controller: Intel Unknown device (rev 8).") +
                        "      Vendor id=8086. Device id=0.\n"),
              Rows{"1=1|2=Intel (Ethernet controller)|3=0x08"});
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Bridge: Unknown vendor Unknown device (rev 8).") +
                        "      Vendor id=1. Device id=1.\n"),
              Rows{"1=1|2=(Bridge)|3=0x08"});
}

TEST(ProcPci, anUnknownClassIsDroppedBeforeTheLookUp)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Unknown class: Intel Unknown device (rev 8).") +
                        "      Vendor id=8086. Device id=0.\n"),
              Rows{"1=1|2=Intel device|3=0x08"});
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Unknown class: Unknown vendor Unknown device (rev 8).") +
                        "      Vendor id=1. Device id=1.\n"),
              Rows{})
        << "nothing is left to name it by";
}

TEST(ProcPci, anUnknownClassIsNotAddedToADescription)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Unknown class [ff00]: Acme X1 (rev 3).")),
              Rows{"1=1|2=Acme X1|3=0x03"});
}

TEST(ProcPci, aDeviceWithNumbersInItsDescriptionIsNamedFromTheTables)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Class 0200: PCI device 8086:1229 (Intel Corp.) (rev 8).")),
              Rows{"1=1|2=Intel 82557/8/9 (Fast Ethernet LAN Controller)|3=0x08"});
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Class 0200: PCI device 0001:1229 (rev 8).")), Rows{})
        << "an empty name makes no row";
}

TEST(ProcPci, aDescriptionWithoutRevisionHasRevisionZero)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Host bridge: Acme X1.")),
              Rows{"1=1|2=Acme X1. (Host bridge)|3=0x00"});
}

TEST(ProcPci, theRevisionIsTwoHexadecimalDigits)
{
    static const struct {
        const char* text;
        const char* revision;
    } cases[] = {
        {"(rev 178)", "0xB2"},
        {"(rev 0x1f)", "0x1F"},
        {"(rev 010)", "0x08"},
        {"(rev)", "0x00"},
        {"(revision 3)", "0x00"},
        {"(rev 3", "0x03"},
        {"(rev3)", "0x03"},
        {"(rev -1)", "0xFF"},
        {"(rev 4660)", "0x12"},
        {"(rev", "0x00"},
        {"(rev 99999999999)", "0x7F"},
        {"(rev 1) (rev 2)", "0x01"},
        {"(rev -99999999999)", "0x80"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(devicesOf(entry("0, device 9, function 0", std::string("Host bridge: Acme X1 ") + c.text)),
                  Rows{std::string("1=1|2=Acme X1 (Host bridge)|3=") + c.revision})
            << c.text;
}

TEST(ProcPci, aDescriptionLineWithoutColonMakesNoRow)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Host bridge Acme X1 (rev 1).") +
                        "    Host bridge: Acme X2 (rev 1).\n"),
              Rows{})
        << "and the next line is no description any more";
}

TEST(ProcPci, aLineWithoutNumbersKeepsWaitingForThem)
{
    const std::string unknown = entry("0, device 9, function 0", "Bridge: Unknown vendor Unknown device (rev 8).");
    EXPECT_EQ(
        devicesOf(unknown + "      Medium devsel.\n      Vendor id=8086.\n      Vendor id=8086. Device id=1229.\n"),
        Rows{"1=1|2=Intel 82557/8/9 (Fast Ethernet LAN Controller)|3=0x08"});
    EXPECT_EQ(devicesOf(unknown + entry("0, device 10, function 0", "Host bridge: Acme X1 (rev 2).")),
              Rows{"1=1|2=Acme X1 (Host bridge)|3=0x02"})
        << "a bus line starts the next entry";
}

TEST(ProcPci, aLineThatIsNoBusLineIsIgnored)
{
    EXPECT_EQ(devicesOf("  Bus 0, device 1:\n    Host bridge: Acme X1 (rev 1).\n"), Rows{});
    EXPECT_EQ(devicesOf("  bus 0, device 1, function 0:\n    Host bridge: Acme X1 (rev 1).\n"), Rows{});
    EXPECT_EQ(devicesOf(""), Rows{});
}

TEST(ProcPci, aLineLongerThanTheBufferComesInPieces)
{
    const std::string description = "Host bridge: " + std::string(300, 'd') + " (rev 1).";
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", description)),
              Rows{"1=1|2=" + std::string(255 - 17, 'd') + " (Host bridge)|3=0x00"});
}

TEST(ProcPci, aDescriptionThatStartsWithItsRevisionStaysInsideTheLine)
{
    EXPECT_EQ(devicesOf(entry("0, device 9, function 0", "Host bridge: (rev 1).")),
              Rows{"1=1|2=(rev 1). (Host bridge)|3=0x01"});
}

TEST(ProcPci, everyStepIsLogged)
{
    const LogCapture log;
    devicesOf(entry("0, device   7, function  1", "IDE interface: Acme IDE (rev 1).") +
              entry("0, device   7, function  2", "IDE interface: Acme IDE (rev 1).") +
              entry("1, device   0, function  0", "Bridge: Unknown vendor Unknown device (rev 8).") +
              "      Vendor id=8086. Device id=0.\n");
    EXPECT_EQ(log.text(), "\n    |Bus 0 Device 7"
                          "\n    |    IDE interface: Acme IDE (rev 1)."
                          "\nWrote: >Acme IDE (IDE interface)< rev: >0x01<"
                          "\n    |Bus 0 Device 7"
                          "\n    |    IDE interface: Acme IDE (rev 1)."
                          "\nWrote: >Acme IDE (IDE interface)< rev: >0x01<"
                          "\n^^^^ skipped because it's a dupe"
                          "\n    |Bus 1 Device 0"
                          "\n    |    Bridge: Unknown vendor Unknown device (rev 8)."
                          "\n    |      Vendor id=8086. Device id=0."
                          "\n.. looking up vendor 0x8086 device 0x0"
                          "\nWrote: >Intel (Bridge)< rev: >0x08<");
}
