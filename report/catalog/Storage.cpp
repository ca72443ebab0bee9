#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kTransports[] = {"NVMe", "SATA",          "SAS",   "SCSI", "USB",   "virtio",
                                       "MMC",  "Fibre Channel", "iSCSI", "ATA",  "Other", nullptr};
constexpr const char* kPartitionTables[] = {"GPT", "MBR", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(STORAGE_INDEX, PLAIN, "", "row number from 1"),
    known(STORAGE_ID, PLAIN, "", "MD5 digest of geometry and size, as invhw makes it"),
    known(STORAGE_TYPE, PLAIN, "", "from the kind of device; optical drives by `/proc/sys/dev/cdrom/info`"),
    known(STORAGE_MODEL, PLAIN, "", "IDENTIFY block of an ATA disk; else the device's `model` or `name`"),
    known(STORAGE_MANUFACTURER, PLAIN, "", "the device's `vendor`; else the vendor of its PCI or USB device, or the first word of the model"),
    known(STORAGE_SERIAL_NUMBER, IDENTIFYING, "", "IDENTIFY block; else `vpd_pg80`, the device's `serial`, or the `serial` of its USB device"),
    known(STORAGE_CYLINDERS, PLAIN, "", "IDENTIFY block of an ATA disk, word 1"),
    known(STORAGE_SECTORS, PLAIN, "", "IDENTIFY block of an ATA disk, word 6"),
    known(STORAGE_HEADS, PLAIN, "", "IDENTIFY block of an ATA disk, word 3"),
    known(STORAGE_TOTAL_SIZE, PLAIN, "MB", "`/sys/block/*/size` divided by 2048"),
    known(STORAGE_SECURITY_ENABLED, PLAIN, "", "IDENTIFY block of an ATA disk, word 128; else Unsupported"),
    text(STORAGE_DEVICE_NAME, "Device Name", 255, PLAIN, "`/dev/` and the name of the folder in `/sys/block`"),
    quad(STORAGE_SIZE_BYTES, "Size Bytes", "bytes", PLAIN, "`/sys/block/*/size` times 512"),
    text(STORAGE_FIRMWARE_REVISION, "Firmware Revision", 64, PLAIN, "IDENTIFY block; else the device's `firmware_rev`, `rev` or `fwrev`"),
    word(STORAGE_TRANSPORT, "Transport", 16, kTransports, PLAIN, "from the place of the device in `/sys/devices` and its host's class"),
    yesNo(STORAGE_ROTATIONAL, "Rotational", PLAIN, "`/sys/block/*/queue/rotational`"),
    yesNo(STORAGE_REMOVABLE, "Removable", PLAIN, "`/sys/block/*/removable`"),
    yesNo(STORAGE_READ_ONLY, "Read Only", PLAIN, "`/sys/block/*/ro`"),
    number(STORAGE_LOGICAL_SECTOR_SIZE, "Logical Sector Size", "bytes", PLAIN, "`/sys/block/*/queue/logical_block_size`"),
    number(STORAGE_PHYSICAL_SECTOR_SIZE, "Physical Sector Size", "bytes", PLAIN, "`/sys/block/*/queue/physical_block_size`"),
    text(STORAGE_WWN, "WWN", 255, IDENTIFYING, "`/sys/block/*/wwid`; else the device's `wwid`, or `/run/udev/data`, ID_WWN"),
    text(STORAGE_BUS_ADDRESS, "Bus Address", 64, PLAIN, "nearest PCI, USB, virtio or SCSI address in the device's path"),
    text(STORAGE_DRIVER, "Driver", 64, PLAIN, "`driver` link of the controller"),
    word(STORAGE_PARTITION_TABLE, "Partition Table", 8, kPartitionTables, PLAIN, "`/run/udev/data`, ID_PART_TABLE_TYPE; else libblkid"),
    text(STORAGE_MULTIPATH, "Multipath", 255, PLAIN, "name of the multipath map in `/sys/block/*/holders`"),
    yesNo(STORAGE_DISCARD, "Discard", PLAIN, "`/sys/block/*/queue/discard_max_bytes` is not 0"),
    text(STORAGE_ZONED, "Zoned", 32, PLAIN, "`/sys/block/*/queue/zoned`"),
    number(STORAGE_PERCENTAGE_USED, "Percentage Used", "%", VOLATILE, "NVMe health log, percentage used"),
    number(STORAGE_AVAILABLE_SPARE, "Available Spare", "%", VOLATILE, "NVMe health log, available spare"),
    number(STORAGE_CRITICAL_WARNING, "Critical Warning", "", VOLATILE, "NVMe health log, critical warning bits"),
    number(STORAGE_POWER_ON_HOURS, "Power On Hours", "hours", VOLATILE, "NVMe health log, power on hours"),
    quad(STORAGE_DATA_WRITTEN_BYTES, "Data Written Bytes", "bytes", VOLATILE, "NVMe health log, data units written times 512,000"),
    number(STORAGE_TEMPERATURE_CELSIUS, "Temperature Celsius", "degrees Celsius", VOLATILE, "NVMe health log, composite temperature; else `temp1_input` of the device's `hwmon`; not below zero"),
};
// clang-format on

constexpr uint32_t kKeys[] = {STORAGE_DEVICE_NAME};
constexpr PairingDef kPairing[] = {{{STORAGE_WWN}}, {{STORAGE_SERIAL_NUMBER}}, {{STORAGE_DEVICE_NAME}}};

static_assert(isWellFormed(kAttributes), "Storage: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Storage: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "Storage: pairing without attribute");
} // namespace

constexpr GroupDef STORAGE_GROUP = {
    .id = GROUP_STORAGE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source =
        "`/sys/block` and `/run/udev/data`: a row a whole device (disks, NVMe, virtio, MMC, optical, tape, floppy)",
};
} // namespace report
