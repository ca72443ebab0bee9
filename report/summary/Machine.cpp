// What the machine is, what it runs, and its firmware.

#include "report/Text.h"
#include "report/summary/Sections.h"

namespace report::summary
{
namespace
{
// A maker's name is often the beginning of the product's already.
std::string makerAndProduct(const std::string& maker, const std::string& product)
{
    if (maker.empty() || lower(product).starts_with(lower(maker)))
        return product;
    return product.empty() ? maker : maker + ' ' + product;
}

std::string uptimeText(const Report& report)
{
    const auto seconds = numberOf(firstRow(report, GROUP_SCAN_INFO), SCAN_INFO_UPTIME);
    if (!seconds)
        return {};
    constexpr uint64_t kDay = 86400, kHour = 3600, kMinute = 60;
    const uint64_t days = *seconds / kDay;
    const std::string hours = std::to_string(*seconds % kDay / kHour) + " h ";
    return (days != 0 ? std::to_string(days) + " d " : "") + hours + std::to_string(*seconds % kHour / kMinute) +
           " min";
}

// As "uname -r" prints it, which invhw reports in parts.
std::string kernelRelease(const Row& system)
{
    std::string release = textOf(system, OPERATING_SYSTEM_KERNEL_RELEASE);
    if (!release.empty())
        return release;
    return joined(
        {textOf(system, OPERATING_SYSTEM_MAJOR_VERSION) + '.' + textOf(system, OPERATING_SYSTEM_MINOR_VERSION),
         textOf(system, OPERATING_SYSTEM_SUB_VERSION)},
        ".");
}

void addSystem(SummarySection& section, const Report& report)
{
    const Row& system = firstRow(report, GROUP_OPERATING_SYSTEM);
    addFact(section, "System", systemName(report));
    addFact(section, "Kernel",
            system.values.empty() ? "" : joined({kernelRelease(system), textOf(system, OPERATING_SYSTEM_ARCH)}, " "));
    std::string virtualization = textOf(system, OPERATING_SYSTEM_VIRTUALIZATION);
    if (virtualization == "None")
        virtualization.clear();
    addFact(section, "Virtualization", joined({virtualization, textOf(system, OPERATING_SYSTEM_CONTAINER)}, ", "));
    addFact(section, "Booted", textOf(system, OPERATING_SYSTEM_LAST_BOOT_UP_TIME));
    addFact(section, "Up for", uptimeText(report));
    if (numberOf(system, OPERATING_SYSTEM_REBOOT_PENDING) == 1U)
        addFact(section, "Reboot", "pending", Tone::WARN);
}
} // namespace

std::string machineName(const Report& report)
{
    std::string name = textOf(firstRow(report, GROUP_UNIX_SYSTEM_PARAMS), UNIX_SYSTEM_PARAMS_HOSTNAME);
    return name.empty() ? textOf(firstRow(report, GROUP_PC_SYSTEM_PARAMS), PC_SYSTEM_PARAMS_COMPUTER_NAME) : name;
}

std::string modelName(const Report& report)
{
    const Row& component = firstRow(report, GROUP_COMPONENTID);
    const Row& table = firstRow(report, GROUP_SMBIOS);
    std::string name = makerAndProduct(makersText(component, {COMPONENTID_MANUFACTURER}),
                                       makersText(component, {COMPONENTID_PRODUCT}));
    if (name.empty())
        name = makerAndProduct(makersText(table, {SMBIOS_SYSTEM_MANUFACTURER}),
                               makersText(table, {SMBIOS_SYSTEM_PRODUCT_NAME}));
    return name;
}

std::string systemName(const Report& report)
{
    const Row& system = firstRow(report, GROUP_OPERATING_SYSTEM);
    const std::string pretty = textOf(system, OPERATING_SYSTEM_PRETTY_NAME);
    return pretty.empty() ? textOf(system, OPERATING_SYSTEM_NAME) : pretty;
}

SummarySection machineSection(const Report& report)
{
    SummarySection section{.id = "machine", .title = "Machine"};
    const Row& component = firstRow(report, GROUP_COMPONENTID);
    const Row& enclosure = firstRow(report, GROUP_SYSTEM_ENCLOSURE);
    const Row& table = firstRow(report, GROUP_SMBIOS);
    addFact(section, "Name", machineName(report));
    addFact(section, "Model", modelName(report));
    const std::string version = makersText(component, {COMPONENTID_VERSION});
    if (modelName(report).find(version) == std::string::npos)
        addFact(section, "Version", version);
    addFact(section, "Form",
            joined({textOf(component, COMPONENTID_FORM_FACTOR), textOf(component, COMPONENTID_CHASSIS_TYPE),
                    numberText(enclosure, SYSTEM_ENCLOSURE_HEIGHT, " U")},
                   ", "));
    addFact(section, "Serial number", makersText(component, {COMPONENTID_SERIAL_NUMBER}));
    addFact(section, "System UUID", makersText(component, {COMPONENTID_SYSTEM_UUID}));
    std::string tag = makersText(enclosure, {SYSTEM_ENCLOSURE_ASSET_TAG});
    addFact(section, "Asset tag", tag.empty() ? makersText(table, {SMBIOS_ENCLOSURE_ASSET_TAG}) : std::move(tag));
    addSystem(section, report);
    for (const Row& row : rowsOf(report, GROUP_SITE))
        if (const std::string value = textOf(row, SITE_VALUE); !value.empty())
            addFact(section, "Site", textOf(row, SITE_NAME) + ": " + value);
    return section;
}

SummarySection firmwareSection(const Report& report)
{
    SummarySection section{.id = "firmware", .title = "Firmware"};
    const Row& firmware = firstRow(report, GROUP_FIRMWARE);
    const Row& table = firstRow(report, GROUP_SMBIOS);
    const auto add = [&](const char* label, uint32_t attribute, uint32_t older) {
        std::string text = makersText(firmware, {attribute});
        addFact(section, label, text.empty() ? makersText(table, {older}) : std::move(text));
    };
    add("Vendor", FIRMWARE_VENDOR, SMBIOS_BIOS_VENDOR);
    add("Version", FIRMWARE_VERSION, SMBIOS_BIOS_VERSION);
    add("Date", FIRMWARE_DATE, SMBIOS_BIOS_DATE);
    addFact(section, "Interface", textOf(firmware, FIRMWARE_INTERFACE));
    if (const auto secure = numberOf(firmware, FIRMWARE_SECURE_BOOT))
        addFact(section, "Secure boot", *secure != 0 ? "on" : "off", *secure != 0 ? Tone::GOOD : Tone::WARN);
    addFact(section, "SMBIOS", textOf(firmware, FIRMWARE_SMBIOS_VERSION));
    addFact(section, "Management", textOf(firmware, FIRMWARE_BMC));
    for (const Row& row : rowsOf(report, GROUP_TPM))
        addFact(section, "TPM", joined({textOf(row, TPM_VERSION), textOf(row, TPM_MANUFACTURER)}, ", "));
    addFact(section, "Board",
            joined({makersText(table, {SMBIOS_BOARD_MANUFACTURER}), makersText(table, {SMBIOS_BOARD_PRODUCT}),
                    makersText(table, {SMBIOS_BOARD_VERSION})},
                   " "));
    return section;
}
} // namespace report::summary
