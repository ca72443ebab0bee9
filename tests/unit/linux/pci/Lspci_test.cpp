#include "linux/pci/Lspci.h"

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
    addLspciDevices(stream, &table);
    return tableText(&table);
}

TEST(Lspci, aLineYieldsVendorAndDeviceWithTheRevision)
{
    EXPECT_EQ(devicesOf("00:0d.0 \"Ethernet controller\" \"Intel Corp.\" \"82557 [Ethernet Pro 100]\" -r08\n"),
              Rows{"1=1|2=Intel Corp. 82557 [Ethernet Pro 100]|3=0x08"});
    EXPECT_EQ(devicesOf("00:01.0 \"IDE interface\" \"Acme\" \"X1\" -rb2 -p8a \"Other\" \"Board\""),
              Rows{"1=1|2=Acme X1|3=0xb2"});
}

TEST(Lspci, aLineWithoutRevisionOptionHasAnEmptyRevision)
{
    EXPECT_EQ(devicesOf("00:01.0 \"IDE interface\" \"Acme\" \"X1\" -p8a \"\" \"\"\n"), Rows{"1=1|2=Acme X1|3="});
    EXPECT_EQ(devicesOf("00:01.0 \"IDE interface\" \"Acme\" \"X1\" -r -p8a\n"), Rows{"1=1|2=Acme X1|3="});
}

TEST(Lspci, theRevisionStandsBehindTheFirstDashRWhereverThatIs)
{
    EXPECT_EQ(devicesOf("00:01.0 \"Bridge\" \"Acme\" \"Multi-rate X1\" -r08\n"),
              Rows{"1=1|2=Acme Multi-rate X1|3=0xate"});
}

TEST(Lspci, aLineWithAnEmptyOrUnclosedFieldMakesNoRow)
{
    EXPECT_EQ(devicesOf("00:01.0 \"Bridge\" \"\" \"X1\" -r08\n"), Rows{});
    EXPECT_EQ(devicesOf("00:01.0 \"Bridge\" \"Acme\" \"\" -r08\n"), Rows{});
    EXPECT_EQ(devicesOf("00:01.0 \"Bridge\" \"Acme\" \"X1\n"), Rows{});
    EXPECT_EQ(devicesOf("00:01.0 \"Bridge\" \"Acme\n"), Rows{});
    EXPECT_EQ(devicesOf("00:01.0 Bridge\n\n\""), Rows{});
}

TEST(Lspci, rowsAreNumberedAndNotComparedWithEachOther)
{
    const std::string line = "00:01.0 \"Bridge\" \"Acme\" \"X1\"\n";
    EXPECT_EQ(devicesOf(line + "noise\n" + line), (Rows{"1=1|2=Acme X1|3=", "1=2|2=Acme X1|3="}));
}

TEST(Lspci, aLineLongerThanTheBufferIsReadInPieces)
{
    const std::string prefix = "00:01.0 \"Bridge\" \"Acme\" \"X1\" ";
    EXPECT_EQ(devicesOf(prefix + std::string(400, '-') + "\n"), Rows{"1=1|2=Acme X1|3="});
    EXPECT_EQ(devicesOf(prefix + std::string(223, 'x') + "-r08\n"), Rows{"1=1|2=Acme X1|3=0x0"});
    EXPECT_EQ(devicesOf(std::string(255, ' ') + prefix + "\n"), Rows{"1=1|2=Acme X1|3="});
}

TEST(Lspci, aFailedLineLeavesTheOutputAlone)
{
    LspciDevice device{.name = "before", .revision = "before"};
    EXPECT_FALSE(parseLspciLine("00:01.0 \"Bridge\" \"Acme\" \"\"", &device));
    EXPECT_EQ(device.name, "before");
    EXPECT_EQ(device.revision, "before");
}
