#include "tests/ctl/SmallMachine.h"

#include <iterator>

#include "tests/unit/host/firmware/FirmwareBytes.h"

const char* const kSmallMachineAnswers = R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {
 "clock": {"": 1763764534}, "userId": {"": 0}, "pageSize": {"": 4096},
 "names": {"": {"system": "Linux", "node": "small", "release": "6.1.0", "version": "#1 SMP", "machine": "x86_64"}},
 "links": {"": [{"index": 1, "name": "lo", "hardwareType": 772, "flags": 73, "mtu": 65536},
  {"index": 2, "name": "enp1s0", "hardwareType": 1, "flags": 69699, "mtu": 1500, "address": "52:54:00:12:34:56",
   "permanentAddress": "52:54:00:12:34:56", "operationalState": "up"}]},
 "addresses": {"": [{"link": 2, "address": "192.0.2.20", "prefixLength": 24, "scope": 0, "isPermanent": true},
  {"link": 2, "address": "2001:db8::20", "prefixLength": 64, "scope": 0, "isPermanent": true}]},
 "routes": {"": [{"table": 254, "destination": "0.0.0.0", "prefixLength": 0, "gateway": "192.0.2.1", "link": 2,
   "metric": 100, "type": 1, "scope": 0, "flags": 0}]},
 "linkDriver": {"enp1s0": {"driver": "e1000e", "firmwareVersion": "0.5-4", "busAddress": "0000:01:00.0", "port": 0}},
 "fileSystemSize": {"/": {"totalBytes": 1000000000, "freeBytes": 600000000, "availableBytes": 500000000,
   "inodes": 65536, "freeInodes": 60000}}
}}
)";

namespace
{
struct SmallFile {
    const char* path;
    const char* content;
};

constexpr SmallFile kFiles[] = {
    {"/etc/default/locale", "LANG=de_DE.UTF-8\n"},
    {"/etc/hostname", "small\n"},
    {"/etc/hosts", "192.0.2.20 small.example.net small\n"},
    {"/etc/invhw/site.d/owner.conf", "owner = the second floor\n"},
    {"/etc/machine-id", "0123456789abcdef0123456789abcdef\n"},
    {"/etc/os-release",
     "ID=debian\nVERSION_ID=\"12\"\nNAME=\"Debian GNU/Linux\"\nPRETTY_NAME=\"Debian GNU/Linux 12\"\n"},
    {"/etc/resolv.conf", "search example.net\nnameserver 192.0.2.53\n"},
    {"/etc/samba/smb.conf", "[global]\nworkgroup = OFFICE\n"},
    {"/proc/1/comm", "systemd\n"},
    {"/proc/cmdline", "root=/dev/sda1 ro password=geheim\n"},
    {"/proc/cpuinfo", "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 142\nmodel name\t: A "
                      "Processor\nstepping\t: "
                      "10\nmicrocode\t: 0xf0\ncpu MHz\t\t: 1800.000\nphysical id\t: 0\nflags\t\t: fpu vmx\n\n"
                      "processor\t: 1\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 142\nmodel name\t: A "
                      "Processor\nstepping\t: "
                      "10\nmicrocode\t: 0xf0\ncpu MHz\t\t: 1900.000\nphysical id\t: 0\nflags\t\t: fpu vmx\n\n"},
    {"/proc/meminfo", "MemTotal:        8000000 kB\nMemFree:         1000000 kB\nMemAvailable:    5000000 kB\n"
                      "SwapTotal:       2000000 kB\nSwapFree:        1900000 kB\n"},
    {"/proc/self/mountinfo", "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw,errors=remount-ro\n"
                             "23 22 0:21 / /proc rw - proc proc rw\n"},
    {"/proc/stat", "cpu  1 2 3 4\nbtime 1763760000\n"},
    {"/proc/swaps", "Filename Type Size Used Priority\n/dev/zram0 partition 2000000 100000 -2\n"},
    {"/proc/sys/kernel/domainname", "(none)\n"},
    {"/proc/uptime", "4534.12 8000.00\n"},
    {"/proc/version", "Linux version 6.1.0\n"},
    {"/run/udev/data/b8:0", "E:ID_SERIAL_SHORT=ZAD0ABCD\nE:ID_PART_TABLE_TYPE=gpt\n"},
    {"/run/udev/data/b8:1",
     "E:ID_FS_TYPE=ext4\nE:ID_FS_UUID=11111111-2222-3333-4444-555555555555\nE:ID_FS_LABEL=top\n"},
    {"/sys/class/dmi/id/bios_date", "01/02/2024\n"},
    {"/sys/class/dmi/id/bios_vendor", "A Vendor\n"},
    {"/sys/class/dmi/id/bios_version", "1.2\n"},
    {"/sys/class/dmi/id/chassis_type", "10\n"},
    {"/sys/class/dmi/id/product_name", "Notebook 5\n"},
    {"/sys/class/dmi/id/product_serial", "SN0001\n"},
    {"/sys/class/dmi/id/product_uuid", "00112233-4455-6677-8899-aabbccddeeff\n"},
    {"/sys/class/dmi/id/sys_vendor", "A Maker\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/dev", "8:0\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/queue/logical_block_size", "512\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/queue/rotational", "1\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/removable", "0\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/ro", "0\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/dev", "8:1\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/partition", "1\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/size", "1951744\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/start", "2048\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/uevent",
     "DEVNAME=sda1\nDEVTYPE=partition\nPARTN=1\nPARTNAME=root\nPARTUUID=aaaaaaaa-0001\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/size", "1953792\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/model", "ST1000\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/rev", "0001\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/type", "0\n"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/vendor", "ATA\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/class", "0x020000\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/device", "0x10d3\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/net/enp1s0/duplex", "full\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/net/enp1s0/speed", "1000\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/revision", "0x01\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/subsystem_device", "0x0001\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/subsystem_vendor", "0x8086\n"},
    {"/sys/devices/pci0000:00/0000:01:00.0/vendor", "0x8086\n"},
    {"/sys/devices/system/cpu/cpu0/cache/index0/level", "1\n"},
    {"/sys/devices/system/cpu/cpu0/cache/index0/shared_cpu_list", "0\n"},
    {"/sys/devices/system/cpu/cpu0/cache/index0/size", "32K\n"},
    {"/sys/devices/system/cpu/cpu0/cache/index0/type", "Data\n"},
    {"/sys/devices/system/cpu/cpu0/topology/core_cpus_list", "0\n"},
    {"/sys/devices/system/cpu/cpu0/topology/physical_package_id", "0\n"},
    {"/sys/devices/system/cpu/cpu1/cache/index0/level", "1\n"},
    {"/sys/devices/system/cpu/cpu1/cache/index0/shared_cpu_list", "1\n"},
    {"/sys/devices/system/cpu/cpu1/cache/index0/size", "32K\n"},
    {"/sys/devices/system/cpu/cpu1/cache/index0/type", "Data\n"},
    {"/sys/devices/system/cpu/cpu1/topology/core_cpus_list", "1\n"},
    {"/sys/devices/system/cpu/cpu1/topology/physical_package_id", "0\n"},
    {"/sys/devices/system/cpu/online", "0-1\n"},
    {"/sys/devices/system/cpu/possible", "0-1\n"},
    {"/sys/devices/system/cpu/present", "0-1\n"},
    {"/sys/devices/system/cpu/vulnerabilities/meltdown", "Mitigation: PTI\n"},
    {"/sys/devices/system/node/node0/cpulist", "0-1\n"},
    {"/sys/devices/system/node/node0/distance", "10\n"},
    {"/sys/devices/system/node/node0/meminfo", "Node 0 MemTotal:        8000000 kB\n"},
    {"/sys/devices/virtual/block/md0/dev", "9:0\n"},
    {"/sys/devices/virtual/block/md0/md/array_state", "clean\n"},
    {"/sys/devices/virtual/block/md0/md/degraded", "0\n"},
    {"/sys/devices/virtual/block/md0/md/level", "raid1\n"},
    {"/sys/devices/virtual/block/md0/md/uuid", "99999999-8888-7777-6666-555555555555\n"},
    {"/sys/devices/virtual/block/md0/size", "2048\n"},
    {"/sys/kernel/security/lsm", "lockdown,apparmor\n"},
    {"/usr/share/misc/pci.ids", "8086  Intel Corporation\n\t10d3  82574L Gigabit\nC 02  Network controller\n"
                                "\t00  Ethernet controller\n"},
};

constexpr SmallFile kLinks[] = {
    {"/etc/localtime", "/usr/share/zoneinfo/UTC"},
    {"/sys/block/md0", "../devices/virtual/block/md0"},
    {"/sys/block/sda", "../devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda"},
    {"/sys/bus/pci/devices/0000:01:00.0", "../../../devices/pci0000:00/0000:01:00.0"},
    {"/sys/class/block/sda", "../../devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda"},
    {"/sys/class/block/sda1", "../../devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1"},
    {"/sys/class/net/enp1s0", "../../devices/pci0000:00/0000:01:00.0/net/enp1s0"},
    {"/sys/dev/block/8:1", "../../devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1"},
    {"/sys/devices/pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0/block/sda/device", "../../../0:0:0:0"},
    {"/sys/devices/pci0000:00/0000:01:00.0/driver", "../../../bus/pci/drivers/e1000e"},
    {"/sys/devices/pci0000:00/0000:01:00.0/net/enp1s0/device", "../../../0000:01:00.0"},
    {"/sys/devices/pci0000:00/0000:01:00.0/subsystem", "../../../bus/pci"},
};

// Memory of two slots, one of them empty, and a processor.
std::string firmwareTable()
{
    const std::string module = StructureBytes(17, 40, 0x1100)
                                   .put(8, 64, 2)
                                   .put(10, 64, 2)
                                   .put(12, 8192, 2)
                                   .put(14, 0x0D, 1)
                                   .string(16, "DIMM A")
                                   .string(17, "BANK 0")
                                   .put(18, 0x1A, 1)
                                   .put(21, 3200, 2)
                                   .string(23, "A Maker")
                                   .string(24, "MEM0001")
                                   .bytes();
    const std::string empty = StructureBytes(17, 40, 0x1101).string(16, "DIMM B").bytes();
    const std::string array =
        StructureBytes(16, 23, 0x1000).put(4, 3, 1).put(5, 3, 1).put(7, 1 << 24, 4).put(13, 2, 2).bytes();
    const std::string system = StructureBytes(1, 27, 0x0001).string(4, "A Maker").string(5, "Notebook 5").bytes();
    return system + array + module + empty + endOfTable();
}

// A 64-bit entry point (DSP0134, 5.2.2).
std::string entryPoint(size_t tableSize)
{
    std::string bytes("_SM3_\0\x18\x03\x03\0\x01\0", 12);
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(tableSize >> (8 * i));
    bytes += std::string(8, '\0');
    unsigned sum = 0;
    for (const char byte : bytes)
        sum += static_cast<unsigned char>(byte);
    bytes[5] = static_cast<char>(-sum);
    return bytes;
}
} // namespace

void addSmallMachine(const Tree& tree)
{
    for (const SmallFile& file : kFiles)
        tree.file(file.path, file.content);
    for (const SmallFile& link : kLinks)
        tree.link(link.path, link.content);
    const std::string table = firmwareTable();
    tree.file("/sys/firmware/dmi/tables/DMI", table);
    tree.file("/sys/firmware/dmi/tables/smbios_entry_point", entryPoint(table.size()));
    tree.file("/invhw-kernel.json", kSmallMachineAnswers);
}
