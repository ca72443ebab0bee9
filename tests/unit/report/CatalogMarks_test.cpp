#include <map>
#include <string>

#include <gtest/gtest.h>

#include "report/Catalog.h"

// Every mark of the catalog, written here a second time: what has no line here has no mark.

namespace
{
struct Marked {
    const char* group;
    const char* attribute;
    const char* marks;
};

// v volatile, i identifying, y yes or no; d volatile where Dynamic is Yes, a identifying when made of a hardware
// address, h identifying when it holds the name of a host or user.
constexpr Marked kMarked[] = {
    {"ComponentID", "Serial Number", "i"},
    {"ComponentID", "System UUID", "i"},
    {"Processor", "ID", "v"},
    {"Processor", "CurrentClockSpeed", "v"},
    {"Processor", "Serial Number", "i"},
    {"Processor", "Online Threads", "v"},
    {"Memory", "Free Physical", "v"},
    {"Memory", "Free Virtual", "v"},
    {"Memory", "Free Page", "v"},
    {"Memory", "Available", "v"},
    {"Memory", "Swap Free", "v"},
    {"Memory Modules", "Serial Number", "i"},
    {"Memory Modules", "Asset Tag", "i"},
    {"Memory Modules", "Corrected Errors", "v"},
    {"Memory Modules", "Uncorrected Errors", "v"},
    {"Operating System", "Last Boot Up Time", "v"},
    {"Operating System", "Command Line", "i"},
    {"Operating System", "Boot Time", "v"},
    {"Operating System", "Machine ID", "i"},
    {"Operating System", "Reboot Pending", "vy"},
    {"Storage", "Serial Number", "i"},
    {"Storage", "Rotational", "y"},
    {"Storage", "Removable", "y"},
    {"Storage", "Read Only", "y"},
    {"Storage", "WWN", "i"},
    {"Storage", "Discard", "y"},
    {"Storage", "Percentage Used", "v"},
    {"Storage", "Available Spare", "v"},
    {"Storage", "Critical Warning", "v"},
    {"Storage", "Power On Hours", "v"},
    {"Storage", "Data Written Bytes", "v"},
    {"Storage", "Temperature Celsius", "v"},
    {"Disk Partition", "Free Size", "v"},
    {"Disk Partition", "Partition UUID", "i"},
    {"Disk Partition", "FS UUID", "i"},
    {"Logical Drive", "Free Size", "v"},
    {"Logical Drive", "State", "v"},
    {"Logical Drive", "UUID", "i"},
    {"Logical Drive", "Degraded", "vy"},
    {"Logical Drive", "Encrypted", "y"},
    {"IP Address", "Address", "id"},
    {"IP Address", "Hostname", "i"},
    {"IP Address", "Domain", "i"},
    {"IP Address", "Gateway", "id"},
    {"IP Address", "Primary DNS", "id"},
    {"IP Address", "Secondary DNS", "id"},
    {"IP Address", "Permanent Mac Address", "i"},
    {"IP Address", "Interface", "a"},
    {"IP Address", "Dynamic", "y"},
    {"Route", "Destination", "i"},
    {"Route", "Gateway", "i"},
    {"Route", "Interface", "a"},
    {"Network Adapter", "ID", "i"}, // a digest of the hardware address
    {"Network Adapter", "Permanent Address", "i"},
    {"Network Adapter", "Current Address", "i"},
    {"Network Adapter", "Model", "a"}, // the interface's name where the device has none
    {"Network Adapter", "Interface", "a"},
    {"Network Adapter", "Master", "a"},
    {"Network Adapter", "Link State", "v"},
    {"Network Adapter", "Speed", "v"},
    {"Network Adapter", "Duplex", "v"},
    {"UNIX System Params", "Boot Time", "v"},
    {"UNIX System Params", "Hostname", "i"},
    {"UNIX System Params", "Computer Alias", "i"},
    {"PC System Params", "Computer Name", "i"},
    {"PC System Params", "User Name", "vi"},
    {"PC System Params", "Domain Name", "i"},
    {"PC System Params", "Workgroup Name", "i"},
    {"Scan Info", "Scan Date", "v"},
    {"Scan Info", "Uptime", "v"},
    {"Partition", "FS Access Point", "h"},
    {"Partition", "FS Mount Point", "h"},
    {"Partition", "FS Free Size", "v"},
    {"Partition", "Options", "i"},
    {"Partition", "FS UUID", "i"},
    {"Partition", "Free Bytes", "v"},
    {"Partition", "Free Inodes", "v"},
    {"SMBIOS", "System Serial Number", "i"},
    {"SMBIOS", "System UUID", "i"},
    {"SMBIOS", "Board Serial Number", "i"},
    {"SMBIOS", "Enclosure Serial Number", "i"},
    {"SMBIOS", "Enclosure Asset Tag", "i"},
    {"System Enclosure", "Serial Number", "i"},
    {"System Enclosure", "Asset Tag", "i"},
    {"Firmware", "Secure Boot", "y"},
    {"USB Device", "ID", "i"}, // a digest with the serial number in it
    {"USB Device", "Device Address", "v"},
    {"USB Device", "Parent Address", "v"},
    {"USB Device", "Serial Number", "i"},
    {"Monitor", "ID", "i"}, // likewise
    {"Monitor", "Serial Number", "i"},
    {"Printer", "Port Name", "i"}, // the same as Device URI
    {"Printer", "Device URI", "i"},
    {"Printer", "Default", "y"},
    {"Modem", "Interface", "a"},
    {"Battery", "Serial Number", "i"},
    {"Battery", "Full Capacity", "v"},
    {"Battery", "Cycle Count", "v"},
    {"Battery", "Status", "v"},
    {"Sensor", "Value", "v"},
    {"Kernel Module", "Signed", "y"},
    {"Kernel Module", "Out Of Tree", "y"},
    {"Software Packages", "Automatic", "y"},
    {"Service Info", "Started", "v"},
    {"Service Info", "State", "v"},
    {"Service Info", "Status", "v"},
    {"User Account Info", "User Name", "i"},
    {"User Account Info", "Domain", "i"},
    {"User Account Info", "Description", "i"},
    {"User Account Info", "Lockout", "v"},
    {"User Account Info", "Home", "i"},
    {"IPX Address", "Address", "i"},
    {"IPX Address", "Node Address", "i"}, // a hardware address
    {"Lpar", "Lpar ID", "i"},
    {"Machine Identity", "Machine Key", "i"},
    {"Scan Status", "Rows", "v"},
    {"Scan Status", "Milliseconds", "v"},
};

std::string marksOf(const report::Attribute& attribute)
{
    std::string marks;
    marks += attribute.isVolatile ? "v" : "";
    marks += attribute.isIdentifying ? "i" : "";
    marks += attribute.isYesNo ? "y" : "";
    marks += attribute.isVolatileIfDynamic ? "d" : "";
    marks += attribute.isIdentifyingIfAddress ? "a" : "";
    marks += attribute.isIdentifyingIfHostOrUser ? "h" : "";
    return marks;
}
} // namespace

TEST(CatalogMarks, areWhatUsersRelyOn)
{
    std::map<std::string, std::string> expected;
    for (const Marked& row : kMarked)
        EXPECT_TRUE(expected.emplace(std::string(row.group) + ": " + row.attribute, row.marks).second) << row.attribute;
    size_t found = 0;
    for (const report::Group& group : report::catalog())
        for (const report::Attribute& attribute : group.attributes) {
            const auto line = expected.find(group.name + ": " + attribute.name);
            EXPECT_EQ(marksOf(attribute), line == expected.end() ? "" : line->second)
                << group.name << ": " << attribute.name;
            found += line != expected.end();
        }
    EXPECT_EQ(found, expected.size());
}

TEST(CatalogMarks, yesAndNoAreNumbersWithTexts)
{
    for (const report::Group& group : report::catalog())
        for (const report::Attribute& attribute : group.attributes)
            if (attribute.isYesNo) {
                EXPECT_EQ(attribute.type, VEX_ULONG) << attribute.name;
                EXPECT_STREQ(report::enumText(attribute.enums, 1), "Yes") << attribute.name;
                EXPECT_STREQ(report::enumText(attribute.enums, 0), "No") << attribute.name;
            }
}
