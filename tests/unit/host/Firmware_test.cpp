#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"
#include "tests/unit/host/firmware/FirmwareBytes.h"

namespace
{
// What a scan tells of the controller that watches over the machine.
std::string controllerOf(const Tree& tree)
{
    const Rows rows = collected(tree, GROUP_FIRMWARE);
    const size_t place = rows.size() == 1 ? rows[0].find("BMC=") : std::string::npos;
    return place == std::string::npos ? "" : rows[0].substr(place + 4);
}

std::string table(uint64_t interface, uint64_t version)
{
    return StructureBytes(38, 16).put(4, interface, 1).put(5, version, 1).bytes() + endOfTable();
}
} // namespace

TEST(Firmware, tellsTheManagementControllersInterfaceAndVersion)
{
    const Tree tree;
    tree.file("/sys/firmware/dmi/tables/DMI", table(1, 0x20));
    tree.folder("/sys/class/ipmi/ipmi0");
    EXPECT_EQ(controllerOf(tree), "KCS, IPMI 2.0");
    tree.file("/sys/firmware/dmi/tables/DMI", table(4, 0x15));
    EXPECT_EQ(controllerOf(tree), "SSIF, IPMI 1.5");
    tree.file("/sys/firmware/dmi/tables/DMI", table(9, 0x20));
    EXPECT_EQ(controllerOf(tree), "Unknown, IPMI 2.0");
}

TEST(Firmware, namesTheManagementControllersDeviceWhereTheTableDoesNotDescribeIt)
{
    const Tree tree;
    tree.file("/sys/firmware/dmi/tables/DMI", StructureBytes(38, 5).put(4, 1, 1).bytes() + endOfTable());
    EXPECT_EQ(controllerOf(tree), "") << "a structure that ends before its version";
    tree.folder("/sys/class/ipmi/ipmi0");
    EXPECT_EQ(controllerOf(tree), "ipmi0");
}
