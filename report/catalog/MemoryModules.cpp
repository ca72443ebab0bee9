#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(MEMORY_MODULES_INDEX, PLAIN, "", "row number from 1"),
    known(MEMORY_MODULES_MODULE_SIZE_MB, PLAIN, "MB", "structure type 17, size or extended size; 0 for an empty slot"),
    known(MEMORY_MODULES_MAX_MODULE_SIZE_MB, PLAIN, "MB", "structure type 16, maximum capacity divided by its slots"),
    known(MEMORY_MODULES_SOCKET_NAME, PLAIN, "", "structure type 17, device locator", 64),
    known(MEMORY_MODULES_PACKAGING, PLAIN, "", "structure type 17, form factor"),
    known(MEMORY_MODULES_MEMORY_TYPE, PLAIN, "", "structure type 17, type detail and memory type"),
    text(MEMORY_MODULES_BANK_NAME, "Bank Name", 64, PLAIN, "structure type 17, bank locator"),
    text(MEMORY_MODULES_MANUFACTURER, "Manufacturer", 64, PLAIN, "structure type 17, manufacturer"),
    text(MEMORY_MODULES_PART_NUMBER, "Part Number", 64, PLAIN, "structure type 17, part number"),
    text(MEMORY_MODULES_SERIAL_NUMBER, "Serial Number", 64, IDENTIFYING, "structure type 17, serial number"),
    text(MEMORY_MODULES_ASSET_TAG, "Asset Tag", 64, IDENTIFYING, "structure type 17, asset tag"),
    number(MEMORY_MODULES_SPEED, "Speed", "MT/s", PLAIN, "structure type 17, speed or extended speed"),
    number(MEMORY_MODULES_CONFIGURED_SPEED, "Configured Speed", "MT/s", PLAIN, "structure type 17, configured speed or extended configured speed"),
    number(MEMORY_MODULES_RANK, "Rank", "", PLAIN, "structure type 17, attributes"),
    number(MEMORY_MODULES_DATA_WIDTH, "Data Width", "bits", PLAIN, "structure type 17, data width"),
    number(MEMORY_MODULES_TOTAL_WIDTH, "Total Width", "bits", PLAIN, "structure type 17, total width"),
    number(MEMORY_MODULES_CONFIGURED_VOLTAGE, "Configured Voltage", "mV", PLAIN, "structure type 17, configured voltage"),
    text(MEMORY_MODULES_FORM_FACTOR, "Form Factor", 32, PLAIN, "structure type 17, form factor"),
    text(MEMORY_MODULES_TYPE_DETAIL, "Type Detail", 128, PLAIN, "structure type 17, type detail"),
    number(MEMORY_MODULES_CORRECTED_ERRORS, "Corrected Errors", "", VOLATILE, "`/sys/devices/system/edac/mc/mc*/{dimm,rank}*/dimm_ce_count` of the one label that names socket, or bank and socket"),
    number(MEMORY_MODULES_UNCORRECTED_ERRORS, "Uncorrected Errors", "", VOLATILE, "`/sys/devices/system/edac/mc/mc*/{dimm,rank}*/dimm_ue_count`, likewise"),
};
// clang-format on

constexpr uint32_t kKeys[] = {MEMORY_MODULES_INDEX};
constexpr PairingDef kPairing[] = {{{MEMORY_MODULES_SOCKET_NAME, MEMORY_MODULES_BANK_NAME}}};

static_assert(isWellFormed(kAttributes), "MemoryModules: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "MemoryModules: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "MemoryModules: pairing without attribute");
} // namespace

constexpr GroupDef MEMORY_MODULES_GROUP = {
    .id = GROUP_MEMORY_MODULES,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "structure type 17: a row a slot; `/run/udev/data/+dmi:id` where a user may not read the table; "
              "`/sys/devices/system/edac`",
};
} // namespace report
