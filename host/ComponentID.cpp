// ComponentID: the machine as its maker names it, from the firmware's table; of boards without one from the device
// tree.

#include "host/Collectors.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/system/Virtualization.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kDeviceTree = "/sys/firmware/devicetree/base/";

// System Information (DSP0134, 7.2).
constexpr size_t kManufacturer = 4, kProduct = 5, kVersion = 6, kSerialNumber = 7, kSkuNumber = 25, kFamily = 26;

// Which form a chassis type (DSP0134, 7.4.1) is.
struct ChassisForm {
    uint8_t first, last;
    const char* form;
};
constexpr ChassisForm kForms[] = {
    {3, 7, "Desktop"},  {8, 10, "Laptop"},  {13, 13, "Desktop"}, {14, 14, "Laptop"}, {15, 16, "Desktop"},
    {17, 17, "Server"}, {23, 23, "Server"}, {24, 24, "Desktop"}, {25, 25, "Server"}, {28, 29, "Server"},
    {30, 30, "Tablet"}, {31, 32, "Laptop"}, {35, 36, "Desktop"},
};

const char* formOf(uint8_t chassisType)
{
    for (const ChassisForm& form : kForms)
        if (chassisType >= form.first && chassisType <= form.last)
            return form.form;
    return "Other";
}

// Device tree texts end with a zero byte.
MaybeFact deviceTreeText(const Root& root, const char* name)
{
    const std::string path = std::string(kDeviceTree) + name;
    const std::optional<std::string> text = root.read(path, Root::kLineLimit);
    if (!text || text->empty() || (*text)[0] == '\0')
        return std::nullopt;
    return Fact{text->substr(0, text->find('\0')), path};
}

// "raspberrypi,4-model-b" is a board of the maker before the comma.
MaybeFact deviceTreeVendor(const Root& root)
{
    MaybeFact compatible = deviceTreeText(root, "compatible");
    if (compatible)
        compatible->value.resize(std::min(compatible->value.find(','), compatible->value.size()));
    return compatible;
}

// "manufacturer product", as readers of this group know it.
MaybeFact productOf(const MaybeFact& manufacturer, MaybeFact product)
{
    if (manufacturer && product)
        product->value = manufacturer->value + ' ' + product->value;
    return product ? product : manufacturer;
}

void addFirmwareTexts(const FirmwareFacts& firmware, RowBuilder& row)
{
    const MaybeFact manufacturer = firmware.text(SMBIOS_SYSTEM, kManufacturer, "sys_vendor");
    const MaybeFact version = firmware.text(SMBIOS_SYSTEM, kVersion, "product_version");
    row.text(COMPONENTID_MANUFACTURER, manufacturer);
    row.text(COMPONENTID_PRODUCT, productOf(manufacturer, firmware.text(SMBIOS_SYSTEM, kProduct, "product_name")));
    row.text(COMPONENTID_VERSION, version);
    row.text(COMPONENTID_SERIAL_NUMBER, firmware.text(SMBIOS_SYSTEM, kSerialNumber, "product_serial"));
    row.text(COMPONENTID_TYPE, version);
    row.text(COMPONENTID_SYSTEM_UUID, firmware.systemUuid());
    row.text(COMPONENTID_SKU_NUMBER, firmware.text(SMBIOS_SYSTEM, kSkuNumber, "product_sku"));
    row.text(COMPONENTID_FAMILY, firmware.text(SMBIOS_SYSTEM, kFamily, "product_family"));
}

void addDeviceTreeTexts(const Root& root, RowBuilder& row)
{
    if (!row.has(COMPONENTID_MANUFACTURER))
        row.text(COMPONENTID_MANUFACTURER, deviceTreeVendor(root));
    if (!row.has(COMPONENTID_PRODUCT))
        row.text(COMPONENTID_PRODUCT, deviceTreeText(root, "model"));
    if (!row.has(COMPONENTID_SERIAL_NUMBER))
        row.text(COMPONENTID_SERIAL_NUMBER, deviceTreeText(root, "serial-number"));
}

// A container or a virtual machine is that, whatever chassis its firmware claims.
void addFormFactor(const Machine& machine, std::optional<uint8_t> chassisType, const std::string& source,
                   RowBuilder& row)
{
    if (const MaybeFact container = containerOf(machine))
        row.text(COMPONENTID_FORM_FACTOR, "Container", container->source);
    else if (const MaybeFact hypervisor = hypervisorOf(machine))
        row.text(COMPONENTID_FORM_FACTOR, "Virtual Machine", hypervisor->source);
    else if (chassisType)
        row.text(COMPONENTID_FORM_FACTOR, formOf(*chassisType), source);
}
} // namespace

void collectComponentID(const Machine& machine, Collection& collection)
{
    const FirmwareFacts firmware(machine.root, collection.notes());
    RowBuilder row(GROUP_COMPONENTID);
    addFirmwareTexts(firmware, row);
    addDeviceTreeTexts(machine.root, row);
    std::string source;
    const std::optional<uint8_t> chassisType = firmware.chassisType(source);
    row.number(COMPONENTID_CHASSIS_TYPE, chassisType, source);
    addFormFactor(machine, chassisType, source, row);
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
