// Sources: the firmware's System Information structure, twice: from the parsed table, and read directly behind an
// entry point whose checksums hold, for what the table lacks; uname for the machine's kind. The texts are what the
// vendor left there; placeholders such as "System Model" count as nothing in the parsed table alone.

#include "linux/ComponentIDGroup.h"

#include <string>
#include <sys/mman.h>
#include <sys/utsname.h>

#include "SMBIOS/EntryPoint.h"
#include "SMBIOS/SMBIOSTable.h"
#include "SMBIOS/slm_mmap.h"
#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/firmware/FirmwareText.h"

namespace
{

constexpr size_t kMostDirectText = 31;
constexpr size_t kMostManufacturer = 255;

// Bytes of the System Information structure that hold string numbers.
constexpr int kManufacturer = 4;
constexpr int kProduct = 5;
constexpr int kVersion = 6;
constexpr int kSerialNumber = 7;

// The System Information structure as the group finds it itself, without the parsed table.
class DirectReading
{
public:
    DirectReading();
    DirectReading(const DirectReading&) = delete;
    DirectReading& operator=(const DirectReading&) = delete;
    ~DirectReading() { free_entry(&entry_, count_); }

    // True when there is an entry point, with or without a System Information structure behind it.
    bool succeeded() const { return succeeded_; }
    // The string whose number stands at that byte, cut to at most maxLength characters; fallback when there is none. An
    // empty string is a value.
    std::string stringAt(int byte, size_t maxLength, const std::string& fallback) const;

private:
    void readEntry(const smbios_table_entry_point& entryPoint);

    bool succeeded_ = false;
    smbios_sysinfo_table_entry entry_{};
    int count_ = 0;
};

DirectReading::DirectReading()
{
    smbios_table_entry_point entryPoint;
    const int result = find_table_ep(&entryPoint);
    VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nfind table entry point = %d", result);
    succeeded_ = result == 0;
    if (!succeeded_) {
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nCannot find table entry point");
        return;
    }
    VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nFind table entry point");
    readEntry(entryPoint);
}

void DirectReading::readEntry(const smbios_table_entry_point& entryPoint)
{
    const unsigned long address = entryPoint.tableAddress();
    void* handle;
    void* const mapping = slm_phys_mmap(address, address + entryPoint.tableLength(), 1, &handle);
    if (mapping == MAP_FAILED)
        return;
    const unsigned long offset = slm_page_off(address);
    count_ = find_entry(static_cast<const unsigned char*>(mapping) + offset, &entryPoint, &entry_);
    slm_phys_munmap(&handle);
}

std::string DirectReading::stringAt(int byte, size_t maxLength, const std::string& fallback) const
{
    const int number = entry_.header[byte];
    if (number < 1 || number > count_ || entry_.strings[number - 1] == nullptr)
        return fallback;
    return std::string(entry_.strings[number - 1]).substr(0, maxLength);
}

// Manufacturer; returns the text that the product's begins with.
std::string addManufacturer(VexTableRow* row, const SMBIOSTable1Data* parsed, const DirectReading& direct)
{
    std::string manufacturer = parsed == nullptr ? "" : validatedText(parsed->getManufacturer());
    if (manufacturer.empty()) {
        if (!direct.succeeded())
            return "";
        manufacturer = direct.stringAt(kManufacturer, kMostManufacturer, "Linux");
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nManufacturer retrieved for linux intel=%s",
                manufacturer.c_str());
    }
    row->addString(COMPONENTID_MANUFACTURER, manufacturer.c_str());
    return manufacturer;
}

void addProduct(VexTableRow* row, const SMBIOSTable1Data* parsed, const DirectReading& direct,
                const std::string& manufacturer, const utsname& system)
{
    std::string product = parsed == nullptr ? "" : validatedText(parsed->getProduct());
    if (!product.empty()) {
        if (!manufacturer.empty())
            product = manufacturer + " " + product;
    } else {
        if (!direct.succeeded())
            return;
        product = direct.stringAt(kProduct, std::string::npos, manufacturer.empty() ? system.machine : manufacturer);
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nProduct retrieved for linux intel=%s", product.c_str());
    }
    row->addString(COMPONENTID_PRODUCT, product.c_str());
}

} // namespace

ComponentIDGroup::ComponentIDGroup() : VexGroup(GROUP_COMPONENTID, 1) {}

VexTable* ComponentIDGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_COMPONENTID, "ComponentID");
    utsname system{};
    uname(&system);

    const DirectReading direct;
    const std::string type = direct.stringAt(kVersion, kMostDirectText, "");
    if (direct.succeeded())
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nType retrieved for linux intel=%s", type.c_str());

    const SMBIOSTable* table = availableSMBIOSTable();
    const SMBIOSTable1Data* parsed = table == nullptr ? nullptr : table->getTable1();
    std::string directSerial;
    if (parsed != nullptr) {
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nSMBIOS TABLE 1 IS AVAILABLE!\n");
    } else if (direct.succeeded()) {
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nSMBIOS TABLE 1 IS NOT AVAILABLE!\n");
        directSerial = direct.stringAt(kSerialNumber, kMostDirectText, "");
        VEX_LOG(DEBUG_COMPONENTID, VEX_LEVEL_DETAIL, "\nSerialNumber retrieved for linux intel=%s",
                directSerial.c_str());
    }

    auto* const row = new VexTableRow;
    const std::string manufacturer = addManufacturer(row, parsed, direct);
    addProduct(row, parsed, direct, manufacturer, system);
    const std::string serial = parsed == nullptr ? "" : validatedText(parsed->getSerialNumber());
    row->addString(COMPONENTID_SERIAL_NUMBER, serial.empty() ? directSerial.c_str() : serial.c_str());
    const std::string version = parsed == nullptr ? "" : validatedText(parsed->getVersion());
    if (!version.empty())
        row->addString(COMPONENTID_VERSION, version.c_str());
    row->addString(COMPONENTID_TYPE, type.c_str());

    auto* const result = new VexTable(getGroupId(), getGroupVersion());
    result->addRow(row);
    return result;
}
