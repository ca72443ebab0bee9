#include <string>

#include <gtest/gtest.h>

#include "report/Catalog.h"

// What every group is to users' scripts: its keys, what pairs its rows, and the attributes that it has beyond those of
// the model, in their order. Written here a second time, so that a slip in a group's file shows.

namespace
{
struct Expected {
    const char* name;
    uint32_t id;
    const char* keys;
    const char* pairings;
    const char* added;
};

// In report order.
constexpr Expected kGroups[] = {
    {"ComponentID", 1, "", "", "System UUID, SKU Number, Family, Chassis Type, Form Factor"},
    {"Processor", 2, "Index, ID", "Socket Name",
     "Model Name, Socket Name, Cores, Threads, Online Threads, Microcode, L1d Cache, L1i Cache, L2 Cache, L3 Cache, "
     "Minimum Frequency, Maximum Frequency, NUMA Nodes, Virtualization, Flags"},
    {"Processor Vulnerability", 101, "Name", "", "Name, State"},
    {"NUMA Node", 108, "Node", "", "Node, Total Memory, Processors, Distances"},
    {"Memory", 3, "", "", "Available, Swap Total, Swap Free, Installed MB"},
    {"Memory Modules", 31, "Index", "Socket Name + Bank Name",
     "Bank Name, Manufacturer, Part Number, Serial Number, Asset Tag, Speed, Configured Speed, Rank, Data Width, "
     "Total Width, Configured Voltage, Form Factor, Type Detail, Corrected Errors, Uncorrected Errors"},
    {"Operating System", 4, "", "",
     "Distribution ID, Version ID, Pretty Name, Kernel Release, Kernel Version, Command Line, Boot Time, Machine ID, "
     "Virtualization, Container, Init System, Security Module, Lockdown, Reboot Pending"},
    {"Storage", 5, "Device Name", "WWN, Serial Number, Device Name",
     "Device Name, Size Bytes, Firmware Revision, Transport, Rotational, Removable, Read Only, Logical Sector Size, "
     "Physical Sector Size, WWN, Bus Address, Driver, Partition Table, Multipath, Discard, Zoned, Percentage Used, "
     "Available Spare, Critical Warning, Power On Hours, Data Written Bytes, Temperature Celsius"},
    {"Disk Partition", 8, "Device Name", "Partition UUID",
     "Parent Device, Size Bytes, Start Sector, Partition UUID, Partition Type, Partition Label, FS UUID, FS Label, "
     "FS Type Name"},
    {"Logical Drive", 11, "Name", "UUID", "Level, State, Members, UUID, Size Bytes, Degraded, Encrypted"},
    {"IP Address", 6, "Interface, Address, Prefix Length", "",
     "Interface, Address Family, Prefix Length, Scope, Dynamic"},
    {"Route", 102, "Table, Address Family, Destination, Prefix Length, Gateway, Interface, Metric", "",
     "Table, Address Family, Destination, Prefix Length, Gateway, Interface, Metric"},
    {"Network Adapter", 7, "Interface", "Permanent Address + Interface",
     "Interface, Kind, Driver, Bus Address, Link State, Speed, Duplex, MTU, Firmware Version, Master"},
    {"Regional", 15, "", "", ""},
    {"UNIX System Params", 19, "", "", ""},
    {"PC System Params", 21, "", "", ""},
    {"Scan Info", 20, "", "", ""},
    {"Partition", 27, "FS Mount Point, FS Access Point", "FS UUID + FS Mount Point",
     "FS Type Name, Options, FS UUID, FS Label, Total Bytes, Free Bytes, Inodes, Free Inodes, Device Number, "
     "Subvolume"},
    {"SMBIOS", 24, "", "", ""},
    {"System Enclosure", 16, "", "", "Chassis Type, Height, SKU Number"},
    {"Firmware", 103, "", "", "Vendor, Version, Date, Release, Interface, Secure Boot, SMBIOS Version, BMC"},
    {"Firmware Resource", 104, "Class", "", "Class, Type, Version, Lowest Version"},
    {"TPM", 105, "Name", "", "Name, Version, Manufacturer"},
    {"PCI Device", 29, "Slot", "Slot",
     "Slot, Vendor ID, Device ID, Subsystem Vendor ID, Subsystem Device ID, Class ID, Class Name, Vendor Name, "
     "Device Name, Driver, NUMA Node, Link Speed, Link Width, Maximum Link Speed, Maximum Link Width, IOMMU Group"},
    {"USB Device", 28, "Bus Path", "Serial Number + Vendor ID + Product ID, Bus Path",
     "Bus Path, Speed, Driver, Vendor Name"},
    {"Video", 13, "Bus Address", "", "Bus Address, Driver, Connectors"},
    {"Monitor", 32, "Bus Address, Connector", "Serial Number + Product Code",
     "Bus Address, Connector, Product Code, Width, Height, Preferred Mode"},
    {"Keyboard", 10, "Name, Physical Path", "", "Name, Physical Path, Bus"},
    {"Pointing Device", 9, "Name, Physical Path", "", "Name, Physical Path, Bus"},
    {"Serial Port", 22, "Name", "", "Address, IRQ, UART Type"},
    {"Parallel Port", 23, "Name", "", "Address, IRQ"},
    {"Printer", 14, "Name", "", "Device URI, Default"},
    {"Modem", 30, "Interface", "", "Interface, Driver"},
    {"Battery", 106, "Name", "Serial Number",
     "Name, Manufacturer, Model, Serial Number, Technology, Design Capacity, Full Capacity, Cycle Count, Status"},
    {"Sensor", 107, "Chip, Bus Address, Name", "", "Chip, Bus Address, Name, Kind, Value, Unit"},
    {"Kernel Module", 109, "Name", "", "Name, Version, Size Bytes, Signed, Out Of Tree"},
    {"Software Packages", 25, "Manager, Package ID, Version", "Manager + Package ID",
     "Manager, Architecture, Installed Size, Install Date, Source Package, Automatic"},
    {"Installed Patches", 26, "ID", "", ""},
    {"Service Info", 35, "Service Name", "", "Unit File State"},
    {"User Account Info", 36, "User Name, Domain", "", "User ID, Group ID, Home, Shell"},
    {"IPX Address", 12, "Index", "", ""},
    {"Lpar", 34, "", "", ""},
    {"Site", 110, "Name", "", "Name, Value"},
    {"Machine Identity", 111, "Basis", "", "Basis, Machine Key"},
    {"Scan Status", 112, "Group", "", "Group, Result, Rows, Milliseconds, Reason"},
};

void append(std::string* list, const char* separator, std::string_view name)
{
    if (!list->empty())
        *list += separator;
    *list += name;
}

std::string keysOf(const report::Group& group)
{
    std::string keys;
    for (const uint32_t id : group.keys)
        append(&keys, ", ", group.find(id)->name);
    return keys;
}

std::string pairingsOf(const report::Group& group)
{
    std::string pairings;
    for (const report::PairingDef& pairing : group.pairing) {
        std::string ids;
        for (const uint32_t id : pairing.ids)
            if (id != 0)
                append(&ids, " + ", group.find(id)->name);
        append(&pairings, ", ", ids);
    }
    return pairings;
}

std::string addedTo(const report::Group& group)
{
    std::string added;
    for (const report::Attribute& attribute : group.attributes)
        if (attribute.id >= report::FIRST_ADDED_ID)
            append(&added, ", ", attribute.name);
    return added;
}
} // namespace

TEST(CatalogGroups, areWhatUsersRelyOn)
{
    ASSERT_EQ(report::catalog().size(), std::size(kGroups));
    for (size_t i = 0; i < std::size(kGroups); ++i) {
        const report::Group& group = report::catalog()[i];
        SCOPED_TRACE(kGroups[i].name);
        EXPECT_EQ(group.name, kGroups[i].name);
        EXPECT_EQ(group.id, kGroups[i].id);
        EXPECT_EQ(keysOf(group), kGroups[i].keys);
        EXPECT_EQ(pairingsOf(group), kGroups[i].pairings);
        EXPECT_EQ(addedTo(group), kGroups[i].added);
    }
}

TEST(CatalogGroups, markTheirKeysInEveryAttribute)
{
    for (const report::Group& group : report::catalog()) {
        size_t marked = 0;
        for (const report::Attribute& attribute : group.attributes)
            marked += attribute.isKey;
        EXPECT_EQ(marked, group.keys.size()) << group.name;
        for (const uint32_t id : group.keys)
            EXPECT_TRUE(group.find(id)->isKey) << group.name;
    }
}
