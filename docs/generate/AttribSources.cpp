#include "docs/generate/AttribSources.h"

#include <iterator>
#include <string_view>

#include "com/VexAttribIds.h"
#include "com/VexCatalog.h"
#include "com/VexUtil.h"

namespace
{
struct Source {
    uint32_t groupId;
    uint32_t attribId;
    std::string_view idName;
    const char* text;
    const char* unit;
};

// The name of an enumerator, which the compiler writes into the name that it gives this function: "[id = NAME]" or
// "[with auto id = NAME; ...]".
template <auto id>
constexpr std::string_view nameOfId()
{
    constexpr std::string_view kFunction = __PRETTY_FUNCTION__;
    constexpr std::string_view kBefore = "id = ";
    constexpr size_t kStart = kFunction.find(kBefore) + kBefore.size();
    return kFunction.substr(kStart, kFunction.find_first_of(";]", kStart) - kStart);
}
static_assert(nameOfId<MEMORY_PAGE_SIZE>() == "MEMORY_PAGE_SIZE");

template <VexGroupId group, auto attrib>
constexpr Source source(const char* text, const char* unit = "")
{
    return {group, attrib, nameOfId<attrib>(), text, unit};
}

// In the catalog's order. "Structure type N" and "type N" are records of the firmware's structure table.
// clang-format off
constexpr Source kSources[] = {
    source<GROUP_COMPONENTID, COMPONENTID_MANUFACTURER>(                     "structure type 1, manufacturer; \"Linux\" when the record read directly names none"),
    source<GROUP_COMPONENTID, COMPONENTID_PRODUCT>(                          "manufacturer, a blank and the product of structure type 1; without a product the manufacturer, then `uname` machine"),
    source<GROUP_COMPONENTID, COMPONENTID_VERSION>(                          "structure type 1, version, from the parsed table only"),
    source<GROUP_COMPONENTID, COMPONENTID_SERIAL_NUMBER>(                    "structure type 1, serial number; empty when there is none"),
    source<GROUP_COMPONENTID, COMPONENTID_INSTALLATION>(                     "not produced on Linux"),
    source<GROUP_COMPONENTID, COMPONENTID_VERIFY>(                           "not produced on Linux"),
    source<GROUP_COMPONENTID, COMPONENTID_TYPE>(                             "version string of the type 1 structure read directly (31 characters); empty when there is none"),
    source<GROUP_PROCESSOR, PROCESSOR_INDEX>(                                "row number from 1"),
    source<GROUP_PROCESSOR, PROCESSOR_ID>(                                   "MD5 digest of the processor's identifying values"),
    source<GROUP_PROCESSOR, PROCESSOR_FAMILY>(                               "structure type 4, processor family; else looked up by signature"),
    source<GROUP_PROCESSOR, PROCESSOR_MAX_CLOCK_SPEED>(                      "`/proc/cpuinfo`, \"cpu MHz\", rounded to a nominal clock", "MHz"),
    source<GROUP_PROCESSOR, PROCESSOR_CURRENT_CLOCK_SPEED>(                  "structure type 4, current speed; else as MaxClockSpeed", "MHz"),
    source<GROUP_PROCESSOR, PROCESSOR_EXTERNAL_CLOCK_SPEED>(                 "structure type 4, external clock, when not 0", "MHz"),
    source<GROUP_PROCESSOR, PROCESSOR_MANUFACTURER>(                         "`/proc/cpuinfo`, \"vendor_id\"; empty when there is none"),
    source<GROUP_PROCESSOR, PROCESSOR_SERIAL_NUMBER>(                        "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_INTERFACE>(                            "structure type 4, upgrade code, stored as a number, when not 0"),
    source<GROUP_PROCESSOR, PROCESSOR_CHIP_FAMILY>(                          "`/proc/cpuinfo`, \"cpu family\""),
    source<GROUP_PROCESSOR, PROCESSOR_CHIP_MODEL>(                           "`/proc/cpuinfo`, \"model\""),
    source<GROUP_PROCESSOR, PROCESSOR_CHIP_STEPPING>(                        "`/proc/cpuinfo`, \"stepping\""),
    source<GROUP_PROCESSOR, PROCESSOR_CHIP_FEATURES>(                        "feature word made from `/proc/cpuinfo`, \"flags\" (else structure type 4), bit 31 cleared"),
    source<GROUP_PROCESSOR, PROCESSOR_FPU>(                                  "feature bit 0: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_VME>(                                  "feature bit 1: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_DEBUG_EXTENSION>(                      "feature bit 2: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_PAGE_SIZE_EXTENSIONS>(                 "feature bit 3: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_TIME_STAMP_COUNTER>(                   "feature bit 4: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_MODEL_SPECIFIC_REGISTERS>(             "feature bit 5: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_PHYSICAL_ADDRESS_EXTENSIONS>(          "feature bit 6: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_MACHINE_CHECK_EXCEPTIONS>(             "feature bit 7: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_CMPXCHG8B>(                            "feature bit 8: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_ON_CHIP_APIC>(                         "feature bit 9: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_FAST_SYSTEM_CALL>(                     "feature bit 11: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_MTRR>(                                 "feature bit 12: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_PAGE_GLOBAL_ENABLE>(                   "feature bit 13: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_MACHINE_CHECK_ARCHITECTURE>(           "feature bit 14: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_CONDITIONAL_MOVE>(                     "feature bit 15: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_PAGE_ATTRIBUTE_TABLE>(                 "feature bit 16: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_PSE36>(                                "feature bit 17: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_SERIAL_NUMBER_ENABLED>(                "feature bit 18: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_MMX>(                                  "feature bit 23: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_FXSR>(                                 "feature bit 24: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_SSE>(                                  "feature bit 25 or 26: Y or N"),
    source<GROUP_PROCESSOR, PROCESSOR_3DNOW>(                                "\"3dnow\" in `/proc/cpuinfo`, \"flags\": Y or N, when there is a flags line"),
    source<GROUP_PROCESSOR, PROCESSOR_BOARD>(                                "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_CPU_NUMBER>(                           "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_MODULE>(                               "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_ECACHE_MB>(                            "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_CPU_IMPL>(                             "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_CPU_MASK>(                             "not produced on Linux"),
    source<GROUP_PROCESSOR, PROCESSOR_CPU_ENABLED>(                          "\"H\" when hyper-threading is seen, else absent"),
    source<GROUP_MEMORY, MEMORY_TOTAL_PHYSICAL>(                             "`/proc/meminfo`, \"MemTotal\"; else `sysinfo`", "kB"),
    source<GROUP_MEMORY, MEMORY_FREE_PHYSICAL>(                              "`/proc/meminfo`, \"MemFree\"; else `sysinfo`", "kB"),
    source<GROUP_MEMORY, MEMORY_TOTAL_VIRTUAL>(                              "`/proc/meminfo`, \"SwapTotal\"; else `sysinfo`", "kB"),
    source<GROUP_MEMORY, MEMORY_FREE_VIRTUAL>(                               "`/proc/meminfo`, \"SwapFree\"; else `sysinfo`", "kB"),
    source<GROUP_MEMORY, MEMORY_TOTAL_PAGE>(                                 "Total Physical divided by the page size: kB by bytes, so 1/1024 of the pages"),
    source<GROUP_MEMORY, MEMORY_FREE_PAGE>(                                  "Free Physical divided by the page size: kB by bytes, so 1/1024 of the pages"),
    source<GROUP_MEMORY, MEMORY_PAGE_SIZE>(                                  "`getpagesize`", "bytes"),
    source<GROUP_MEMORY, MEMORY_MAX_MEMORY_MB>(                              "largest module size times slots, from the structures of types 5 and 16, when plausible", "MB"),
    source<GROUP_MEMORY, MEMORY_NUM_SLOTS>(                                  "number of memory slots in the structure table, when not 0"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_NAME>(                   "first release file that opens (`/etc/redhat-release`, `turbolinux-release`, `SuSE-release`, `UnitedLinux-release`); else \"Caldera Linux\" or \"Linux\""),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_TYPE>(                   "LINUX; Linux PPC when the release file says \"PPC\""),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_MAJOR_VERSION>(          "`uname` release, before the first dot"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_MINOR_VERSION>(          "`uname` release, between the first two dots"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_SUB_VERSION>(            "`uname` release, after the second dot; empty when there is none"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_INSTALL_DATE>(           "not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_REGISTERED_ORGANIZATION>("not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_REGISTERED_OWNER>(       "not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_PRODUCT_ID>(             "not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_ARCH>(                   "`uname` machine (19 characters); empty when `uname` fails"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_KERNEL_MODE>(            "always empty"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_DESCRIPTION>(            "as Name"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_LANGUAGE_VERSION>(       "not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_LOCALE_ID>(              "not produced on Linux"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_MESSAGES_LOCALE>(        "`setlocale` for messages, from the environment"),
    source<GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_LAST_BOOT_UP_TIME>(      "not produced on Linux"),
    source<GROUP_STORAGE, STORAGE_INDEX>(                                    "drive number from 1, over all probes"),
    source<GROUP_STORAGE, STORAGE_ID>(                                       "MD5 digest of geometry and size (Smart Array: and of the drive's letter or number)"),
    source<GROUP_STORAGE, STORAGE_TYPE>(                                     "IDE: `/proc/ide/*/*/media`; SCSI: peripheral type of INQUIRY; RAID: Hard Disk; floppy: Floppy/Diskette"),
    source<GROUP_STORAGE, STORAGE_MODEL>(                                    "IDE: `model` file after its first blank; SCSI: INQUIRY product; DAC960: RAID level; Smart Array: fixed text; floppy: drive-type name; may be empty"),
    source<GROUP_STORAGE, STORAGE_MANUFACTURER>(                             "IDE: `model` file before its first blank; SCSI: INQUIRY vendor; DAC960: controller name; Smart Array: \"Compaq\"; floppy: empty; may be empty"),
    source<GROUP_STORAGE, STORAGE_SERIAL_NUMBER>(                            "IDE: identify data; SCSI: serial-number page of INQUIRY; RAID: \"+\"; floppy: empty; may be empty"),
    source<GROUP_STORAGE, STORAGE_CYLINDERS>(                                "IDE: `geometry` file or HDIO_GETGEO; SCSI: HDIO_GETGEO or mode pages; DAC960 and Smart Array: `fdisk -l`; floppy: FDGETPRM"),
    source<GROUP_STORAGE, STORAGE_SECTORS>(                                  "as Cylinders (IDE: the second number of the `geometry` file)"),
    source<GROUP_STORAGE, STORAGE_HEADS>(                                    "as Cylinders (IDE: the third number of the `geometry` file)"),
    source<GROUP_STORAGE, STORAGE_TOTAL_SIZE>(                               "IDE: `capacity` file; SCSI: BLKGETSIZE, BLKGETSIZE64 or mode pages; DAC960 and Smart Array: `fdisk -l` or `/proc/driver/cciss/cciss0`; floppy: FDGETPRM", "MB"),
    source<GROUP_STORAGE, STORAGE_SECURITY_ENABLED>(                         "IDE hard disk: security word of the identify data; else Unsupported"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_INDEX>(                              "row number from 1, loopback not counted"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_ADDRESS>(                            "SIOCGIFADDR"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_DHCP_ENABLED>(                       "not produced on Linux"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_HOSTNAME>(                           "`gethostbyaddr`, before the first dot; may be empty"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_DOMAIN>(                             "`gethostbyaddr`, after the first dot; else `/etc/resolv.conf`, \"domain\"; may be empty"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_SUBNET>(                             "SIOCGIFNETMASK"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_GATEWAY>(                            "first found in `/etc/sysconfig/network-scripts/ifcfg-eth0`, `/etc/route.conf`, `/etc/sysconfig/network/routes`, `/etc/sysconfig/network`"),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_PRIMARY_DNS>(                        "`/etc/resolv.conf`, first IPv4 \"nameserver\""),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_SECONDARY_DNS>(                      "`/etc/resolv.conf`, second IPv4 \"nameserver\""),
    source<GROUP_IP_ADDRESS, IP_ADDRESS_PERMANENT_MAC>(                      "SIOCGIFHWADDR; may be empty"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_INDEX>(                    "row number from 1"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_ID>(                       "MD5 digest of the hardware address and the interface name"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_PERMANENT_ADDRESS>(        "SIOCGIFHWADDR"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_CURRENT_ADDRESS>(          "SIOCGIFHWADDR"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_TYPE>(                     "from the start of the interface name: eth, tr, slip, escon, ctc, iucv, ppp; else Other"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_MODEL>(                    "interface name (SIOCGIFCONF)"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_MANUFACTURER>(             "not produced on Linux"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_INSTALL_DATE>(             "not produced on Linux"),
    source<GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_CONNECTOR_TYPE>(           "not produced on Linux"),
    source<GROUP_REGIONAL, REGIONAL_LOCALE>(                                 "`setlocale` for character types, from the environment; empty when there is no such locale"),
    source<GROUP_REGIONAL, REGIONAL_TIME_ZONE_SECONDS>(                      "`timezone`, without its sign", "seconds"),
    source<GROUP_REGIONAL, REGIONAL_TIME_ZONE_PLUS_MINUS>(                   "sign of `timezone`: + east of or at UTC, - west of it"),
    source<GROUP_REGIONAL, REGIONAL_DAYLIGHT>(                               "`daylight`: T when the zone has daylight-saving time, else F"),
    source<GROUP_REGIONAL, REGIONAL_TIME_ZONE_NAME>(                         "`tzname[0]`; may be empty when TZ is no time zone"),
    source<GROUP_REGIONAL, REGIONAL_TIME_ZONE_DAYLIGHT_NAME>(                "`tzname[1]`; may be empty when TZ is no time zone"),
    source<GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_BOOT_TIME>(          "login records, time of the run-level record"),
    source<GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_RUN_LEVEL>(          "`/sbin/runlevel`, third character; 0 without it"),
    source<GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_HOSTNAME>(           "`uname` node name; may be empty"),
    source<GROUP_UNIX_SYSTEM_PARAMS, UNIX_SYSTEM_PARAMS_COMPUTER_ALIAS>(     "`uname` node name; may be empty"),
    source<GROUP_SCAN_INFO, SCAN_INFO_MANUFACTURER>(                         "fixed"),
    source<GROUP_SCAN_INFO, SCAN_INFO_MAJOR_VERSION>(                        "fixed"),
    source<GROUP_SCAN_INFO, SCAN_INFO_MINOR_VERSION>(                        "fixed"),
    source<GROUP_SCAN_INFO, SCAN_INFO_SCAN_DATE>(                            "`gettimeofday` at the start of the group"),
    source<GROUP_SCAN_INFO, SCAN_INFO_BUILD>(                                "fixed"),
    source<GROUP_SCAN_INFO, SCAN_INFO_UPTIME>(                               "now less the time of the run-level record, when there is one", "seconds"),
    source<GROUP_SMBIOS, SMBIOS_BIOS_VENDOR>(                                "type 0, vendor"),
    source<GROUP_SMBIOS, SMBIOS_BIOS_VERSION>(                               "type 0, version"),
    source<GROUP_SMBIOS, SMBIOS_BIOS_DATE>(                                  "type 0, release date as YYYY-MM-DD"),
    source<GROUP_SMBIOS, SMBIOS_BIOS_SIZE>(                                  "type 0, ROM size and \"K\""),
    source<GROUP_SMBIOS, SMBIOS_SYSTEM_MANUFACTURER>(                        "type 1, manufacturer"),
    source<GROUP_SMBIOS, SMBIOS_SYSTEM_PRODUCT_NAME>(                        "type 1, product"),
    source<GROUP_SMBIOS, SMBIOS_SYSTEM_VERSION>(                             "type 1, version"),
    source<GROUP_SMBIOS, SMBIOS_SYSTEM_SERIAL_NUMBER>(                       "type 1, serial number"),
    source<GROUP_SMBIOS, SMBIOS_SYSTEM_UUID>(                                "type 1, UUID as 32 hexadecimal digits"),
    source<GROUP_SMBIOS, SMBIOS_BOARD_MANUFACTURER>(                         "type 2, manufacturer"),
    source<GROUP_SMBIOS, SMBIOS_BOARD_PRODUCT>(                              "type 2, product"),
    source<GROUP_SMBIOS, SMBIOS_BOARD_VERSION>(                              "type 2, version"),
    source<GROUP_SMBIOS, SMBIOS_BOARD_SERIAL_NUMBER>(                        "type 2, serial number"),
    source<GROUP_SMBIOS, SMBIOS_ENCLOSURE_MANUFACTURER>(                     "type 3, manufacturer"),
    source<GROUP_SMBIOS, SMBIOS_ENCLOSURE_TYPE>(                             "type 3, enclosure type without its lock bit, when 1 to 25"),
    source<GROUP_SMBIOS, SMBIOS_ENCLOSURE_VERSION>(                          "type 3, version"),
    source<GROUP_SMBIOS, SMBIOS_ENCLOSURE_SERIAL_NUMBER>(                    "type 3, serial number"),
    source<GROUP_SMBIOS, SMBIOS_ENCLOSURE_ASSET_TAG>(                        "type 3, asset tag"),
    source<GROUP_SMBIOS, SMBIOS_ID>(                                         "MD5 digest of the texts that identify the machine"),
    source<GROUP_SMBIOS, SMBIOS_POWERON_PASSWORD>(                           "type 24, power-on password status"),
    source<GROUP_PARTITION, PARTITION_INDEX>(                                "row number from 1, over mounts and swap areas"),
    source<GROUP_PARTITION, PARTITION_TYPE>(                                 "Remote Drive for nfs, afs and smbfs; else Logical Drive"),
    source<GROUP_PARTITION, PARTITION_MEDIA_TYPE>(                           "from the file-system type and the device name"),
    source<GROUP_PARTITION, PARTITION_DEVICE_NAME>(                          "`/etc/mtab`, device (\"remote\" for a remote drive); `/proc/swaps`, path"),
    source<GROUP_PARTITION, PARTITION_PHYSICAL_SIZE>(                        "`statvfs`, all blocks; `/proc/swaps`, size", "kB"),
    source<GROUP_PARTITION, PARTITION_FS_TYPE>(                              "file-system type of `/etc/mtab`, by name; swap: Linux Swap"),
    source<GROUP_PARTITION, PARTITION_FS_ACCESS_POINT>(                      "`/etc/mtab`, device; `/proc/swaps`, path"),
    source<GROUP_PARTITION, PARTITION_FS_MOUNT_POINT>(                       "`/etc/mtab`, mount point, empty when the line has none; \"swap\""),
    source<GROUP_PARTITION, PARTITION_FS_TOTAL_SIZE>(                        "as Physical Size", "kB"),
    source<GROUP_PARTITION, PARTITION_FS_FREE_SIZE>(                         "`statvfs`, blocks free for users; `/proc/swaps`, size less used", "kB"),
    source<GROUP_PCI_DEVICE, PCI_DEVICE_INDEX>(                              "row number from 1"),
    source<GROUP_PCI_DEVICE, PCI_DEVICE_NAME>(                               "`/proc/pci`, description and class, or the PCI tables by id; else `/sbin/lspci -m`, vendor and device"),
    source<GROUP_PCI_DEVICE, PCI_DEVICE_REVISION>(                           "`/proc/pci`, \"rev\"; else `/sbin/lspci -m`, \"-r\", empty when there is none"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_INDEX>(                      "row number from 1"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_MODULE_SIZE_MB>(             "structure type 17, size; else type 6, installed size", "MB"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_MAX_MODULE_SIZE_MB>(         "largest module size that the structure table names", "MB"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_SOCKET_NAME>(                "type 17, device and bank locator; else type 6, socket designation; empty when the structure names none"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_PACKAGING>(                  "type 17, form factor; else type 6, SIMM or DIMM; empty when the structure tells another or none"),
    source<GROUP_MEMORY_MODULES, MEMORY_MODULES_MEMORY_TYPE>(                "type 17, type detail and memory type; else type 6, memory type; empty when the structure tells another or none"),
    source<GROUP_LPAR, LPAR_ID>(                                             "always empty"),
    source<GROUP_LPAR, LPAR_SHAREDPOOL_ID>(                                  "always empty"),
    source<GROUP_LPAR, LPAR_NODE_CAPACITY>(                                  "`get_nprocs`; with hyper-threading the processors of `/proc/cpuinfo` divided by their siblings"),
    source<GROUP_LPAR, LPAR_LPAR_CAPACITY>(                                  "always -1"),
    source<GROUP_LPAR, LPAR_SHAREDPOOL_CAPACITY>(                            "always -1"),
};
// clang-format on

bool isCollected(uint32_t groupId)
{
    for (const Source& source : kSources)
        if (source.groupId == groupId)
            return true;
    return false;
}
} // namespace

static const Source* findSource(uint32_t groupId, uint32_t attribId)
{
    for (const Source& source : kSources)
        if (source.groupId == groupId && source.attribId == attribId)
            return &source;
    return nullptr;
}

const char* attribSource(uint32_t groupId, uint32_t attribId)
{
    const Source* source = findSource(groupId, attribId);
    return source == nullptr ? nullptr : source->text;
}

std::string_view attribIdName(uint32_t groupId, uint32_t attribId)
{
    const Source* source = findSource(groupId, attribId);
    return source == nullptr ? "" : source->idName;
}

const char* attribUnit(uint32_t groupId, uint32_t attribId)
{
    const Source* source = findSource(groupId, attribId);
    return source == nullptr ? "" : source->unit;
}

bool sourcesAreComplete()
{
    const Source* next = kSources;
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        if (!isCollected(group->id))
            continue;
        for (const vexAttribDef* attrib = group->attributes; attrib->id != VEX_END; ++attrib, ++next)
            if (next == std::end(kSources) || next->groupId != group->id || next->attribId != attrib->id)
                return false;
    }
    return next == std::end(kSources);
}
