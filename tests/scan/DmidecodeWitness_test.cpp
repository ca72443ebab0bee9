// What an independent reader of the same tables says: dmidecode reads a dump of the table that the scanned machine has.

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sstream>
#include <unistd.h>
#include <vector>

#include "FakeMachine.h"
#include "SMBIOS/SMBIOSTable.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

// One structure as dmidecode prints it: "Name: value" lines.
using Printed = std::multimap<std::string, std::string>;

static std::vector<unsigned char> entryPoint(const TableBytes& table, uint32_t address, unsigned minor)
{
    std::vector<unsigned char> entry = {'_', 'S', 'M', '_', 0, 0x1F, 2, static_cast<unsigned char>(minor)};
    entry.resize(16);
    entry.insert(entry.end(), {'_', 'D', 'M', 'I', '_', 0});
    const auto number = [&entry](uint32_t value, int width) {
        for (int i = 0; i < width; ++i)
            entry.push_back(static_cast<unsigned char>(value >> 8 * i));
    };
    number(static_cast<uint32_t>(table.length()), 2);
    number(address, 4);
    number(static_cast<uint32_t>(table.count()), 2);
    number(0x20 + minor, 1);
    const auto sum = [&entry](size_t first, size_t end) {
        unsigned total = 0;
        for (size_t i = first; i < end; ++i)
            total += entry[i];
        return static_cast<unsigned char>(0x100 - (total & 0xFF));
    };
    entry[21] = sum(16, 31);
    entry[4] = sum(0, 31);
    entry.push_back(0);
    return entry;
}

static std::string hex(const std::vector<unsigned char>& bytes)
{
    std::string text = "bytes";
    for (const unsigned char byte : bytes) {
        char number[4];
        snprintf(number, sizeof number, " %02X", byte);
        text += number;
    }
    return text + "\n";
}

static ScanResult scan(const TableBytes& table, unsigned minor)
{
    return FakeMachine()
        .memory("at 0xE0010\n" + hex(table.bytes()) + "at 0xF0000\n" + hex(entryPoint(table, 0xE0010, minor)))
        .scan();
}

// The structures of a type, in the table's order.
static std::vector<Printed> dmidecode(const TableBytes& table, unsigned minor, int type)
{
    char path[] = "/tmp/invhw_dmi_XXXXXX";
    close(mkstemp(path));
    FILE* const file = fopen(path, "wb");
    const std::vector<unsigned char> entry = entryPoint(table, 0x20, minor);
    fwrite(entry.data(), 1, entry.size(), file);
    fwrite(table.bytes().data(), 1, table.bytes().size(), file);
    fclose(file);
    const std::string command =
        "PATH=$PATH:/usr/sbin:/sbin dmidecode --from-dump " + std::string(path) + " -t " + std::to_string(type);
    std::vector<Printed> structures;
    FILE* const output = popen(command.c_str(), "r");
    char buffer[1000];
    while (fgets(buffer, sizeof buffer, output) != nullptr) {
        std::string line(buffer);
        line.erase(line.find_last_not_of("\n") + 1);
        if (line.compare(0, 7, "Handle ") == 0)
            structures.emplace_back();
        const size_t colon = line.find(": ");
        if (!structures.empty() && line[0] == '\t' && colon != std::string::npos)
            structures.back().emplace(line.substr(1, colon - 1), line.substr(colon + 2));
    }
    EXPECT_EQ(pclose(output), 0) << "dmidecode (package of that name) is needed";
    unlink(path);
    return structures;
}

static std::string find(const std::vector<Printed>& structures, size_t i, const std::string& name)
{
    if (i >= structures.size())
        return "(no structure)";
    const auto found = structures[i].find(name);
    return found == structures[i].end() ? "(not printed)" : found->second;
}

class Dmidecode : public testing::Test
{
protected:
    Dmidecode()
    {
        table_
            .add(Structure(0, 24)
                     .string(4, "Northbridge Systems")
                     .string(5, "NB2-1.17")
                     .word(6, 0xF000)
                     .string(8, "07/15/2004")
                     .byte(9, 15)
                     .byte(20, 0xFF)
                     .byte(21, 0xFF)
                     .byte(22, 0xFF)
                     .byte(23, 0xFF))
            .add(system())
            .add(Structure(2, 8).string(4, "Boards").string(5, "B-2500").string(6, "A03").string(7, "B0042"))
            .add(Structure(3, 21).string(4, "Cases").byte(5, 0x97).string(6, "1.0").string(7, "CH42").string(8, "tag"))
            .add(processor("PROC_1", 2800))
            .add(processor("PROC_2", 3067))
            .add(Structure(16, 15).byte(4, 3).byte(5, 3).byte(6, 6).dword(7, 0x400000).word(11, 0xFFFE).word(13, 4))
            .add(memory("DIMM1", "BANK1", 512))
            .add(memory("DIMM2", "BANK1", 2048))
            .add(memory("DIMM3", "BANK2", 0))
            .end();
    }

    static Structure system()
    {
        Structure structure(1, 27);
        structure.string(4, "Northbridge Systems").string(5, "Bridge 2500").string(6, "Rev. B").string(7, "NB25-0042");
        for (unsigned i = 0; i < 16; ++i)
            structure.byte(8 + i, 0x17 * i + 0x31);
        return structure;
    }
    static Structure processor(const char* socket, unsigned speed)
    {
        return Structure(4, 35)
            .string(4, socket)
            .byte(5, 3)
            .byte(6, 0xB3)
            .string(7, "Intel")
            .dword(8, 0xF29)
            .dword(12, 0xBFEBFBFF)
            .string(16, "Xeon")
            .byte(17, 0x8E)
            .word(18, 533)
            .word(20, 3600)
            .word(22, speed)
            .byte(24, 0x41)
            .byte(25, 4)
            .string(32, "P-1001");
    }
    static Structure memory(const char* locator, const char* bank, unsigned sizeMB)
    {
        return Structure(17, 27)
            .word(8, 72)
            .word(10, 64)
            .word(12, sizeMB)
            .byte(14, 9)
            .string(16, locator)
            .string(17, bank)
            .byte(18, 15)
            .word(19, 0x80)
            .word(21, 266);
    }

    static constexpr unsigned kMinor = 4;
    TableBytes table_;
};

TEST_F(Dmidecode, agreesOnBiosSystemBoardAndEnclosure)
{
    const ScanResult result = scan(table_, kMinor);
    ASSERT_TRUE(result.ended()) << result.errors;
    const auto same = [&](const char* ours, int type, const char* theirs) {
        EXPECT_EQ(result.value("SMBIOS", 0, ours), find(dmidecode(table_, kMinor, type), 0, theirs)) << ours;
    };
    same("BIOSVendor", 0, "Vendor");
    same("BIOSVersion", 0, "Version");
    same("SystemManufacturer", 1, "Manufacturer");
    same("SystemProductName", 1, "Product Name");
    same("SystemVersion", 1, "Version");
    same("SystemSerialNumber", 1, "Serial Number");
    same("BoardManufacturer", 2, "Manufacturer");
    same("BoardProduct", 2, "Product Name");
    same("BoardVersion", 2, "Version");
    same("BoardSerialNumber", 2, "Serial Number");
    same("EnclosureManufacturer", 3, "Manufacturer");
    same("EnclosureType", 3, "Type");
    same("EnclosureVersion", 3, "Version");
    same("EnclosureSerialNumber", 3, "Serial Number");
    same("EnclosureAssetTag", 3, "Asset Tag");

    const std::string date = find(dmidecode(table_, kMinor, 0), 0, "Release Date"); // 07/15/2004
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSDate"),
              date.substr(6) + "-" + date.substr(0, 2) + "-" + date.substr(3, 2));
    const std::string size = find(dmidecode(table_, kMinor, 0), 0, "ROM Size");
    const unsigned long kilobytes =
        strtoul(size.c_str(), nullptr, 10) * (size.find("MB") != std::string::npos ? 1024 : 1);
    EXPECT_EQ(result.value("SMBIOS", 0, "BIOSSize"), std::to_string(kilobytes) + "K") << size;
    std::string uuid;
    for (const char c : find(dmidecode(table_, kMinor, 1), 0, "UUID"))
        if (c != '-')
            uuid += static_cast<char>(toupper(c));
    EXPECT_EQ(result.value("SMBIOS", 0, "SystemUUID"), uuid);
}

TEST_F(Dmidecode, agreesOnProcessors)
{
    const std::vector<Printed> theirs = dmidecode(table_, kMinor, 4);
    ASSERT_EQ(theirs.size(), 2u);
    SMBIOSTable ours(table_.bytes().data(), table_.length(), 0x24, table_.count());
    ours.parseData();
    for (int i = 0; i < 2; ++i) {
        const auto at = static_cast<size_t>(i);
        const SMBIOSTable4Data& processor = *ours.getTable4(i);
        EXPECT_EQ(processor.getSocket(), find(theirs, at, "Socket Designation"));
        EXPECT_EQ(processor.getManufacturer(), find(theirs, at, "Manufacturer"));
        EXPECT_EQ(processor.getVersion(), find(theirs, at, "Version"));
        EXPECT_EQ(std::to_string(processor.getCurrentSpeed()) + " MHz", find(theirs, at, "Current Speed"));
        EXPECT_EQ(std::to_string(processor.getMaxSpeed()) + " MHz", find(theirs, at, "Max Speed"));
        char volts[16];
        snprintf(volts, sizeof volts, "%.1f V", processor.getVoltageInVolts());
        EXPECT_EQ(volts, find(theirs, at, "Voltage"));
    }
    const ScanResult result = scan(table_, kMinor);
    EXPECT_EQ(result.value("Processor", 0, "CurrentClockSpeed") + " MHz", find(theirs, 0, "Current Speed"));
    EXPECT_EQ(result.value("Processor", 0, "ExternalClockSpeed") + " MHz", find(theirs, 0, "External Clock"));
    EXPECT_EQ(result.value("Processor", 0, "Interface"), find(theirs, 0, "Upgrade"));
}

TEST_F(Dmidecode, agreesOnMemoryDevices)
{
    const std::vector<Printed> theirs = dmidecode(table_, kMinor, 17);
    const ScanResult result = scan(table_, kMinor);
    ASSERT_EQ(result.rows("MemoryModules").size(), theirs.size());
    for (size_t i = 0; i < theirs.size(); ++i) {
        EXPECT_EQ(result.value("MemoryModules", i, "SocketName"),
                  find(theirs, i, "Locator") + "/" + find(theirs, i, "Bank Locator"));
        EXPECT_EQ(result.value("MemoryModules", i, "Packaging"), find(theirs, i, "Form Factor"));
        const std::string size = find(theirs, i, "Size");
        const unsigned long megabytes =
            strtoul(size.c_str(), nullptr, 10) * (size.find("GB") != std::string::npos ? 1024 : 1);
        EXPECT_EQ(result.value("MemoryModules", i, "ModuleSizeMB"), std::to_string(megabytes)) << size;
        EXPECT_EQ(result.value("MemoryModules", i, "MemoryType"),
                  find(theirs, i, "Type Detail") + " " + find(theirs, i, "Type"));
    }
}
