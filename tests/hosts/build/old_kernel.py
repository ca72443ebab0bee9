"""A PC of 2008 with kernel 4.4: BIOS, SMBIOS 2.5 with a 32-bit entry point, an IDE disk, a DVD writer, no lists of cores,
no udev data of later forms, System V init."""

import accounts
import edid
import inputs
import smbios
import sysfs
import system

GB = 1 << 30
CLOCK = 1483272000  # 2017-01-01 12:00:00 UTC
FLAGS = ("fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush dts acpi mmx fxsr sse sse2 ss ht "
         "tm pbe syscall nx lm constant_tsc pni ssse3 vmx")
MODEL = "Intel(R) Core(TM)2 Duo CPU     E8400  @ 3.00GHz"


def firmware(machine):
    table = smbios.begun("Award Software International, Inc.", "F9", "07/29/2008", (0xFF, 0xFF), 1,
                         ("Gable Technology Co., Ltd.", "P35-DS3", " ", "To Be Filled By O.E.M.",
                          "00000000-0000-0000-0000-001fd0112233", "", ""),
                         ("Gable Technology Co., Ltd.", "P35-DS3", "x.x", "Default string"),
                         ("Gable Technology Co., Ltd.", 3, "None", "None", "None", 0, ""))
    smbios.processor(table, "Socket 775", "Intel", MODEL, 0xBF, 333, 4000, 3000, 0x15, 2, 2)
    array = smbios.memory_array(table, 8 * GB, 4, 3)
    for slot in range(4):
        installed = slot % 2 == 0
        smbios.memory_module(table, array, f"A{slot}", f"Bank{slot // 2 * 2}/{slot // 2 * 2 + 1}", 2048 if installed else 0, 0x09,
                             0x13 if installed else 0x02, 0x80, 800 if installed else 0, 0, "None", "None", "None", 0, 64, 64, 0)
    table.end()
    smbios.install(machine, table, smbios.entry_point_32(table, 2, 5))
    smbios.show(machine, {"sys_vendor": "Gable Technology Co., Ltd.", "product_name": "P35-DS3", "chassis_type": "3"})


def processors(machine):
    sysfs.processors(machine, "0-1", "0-1", {n: (0, n, str(n)) for n in range(2)}, [
        (1, "Data", "32K", str), (1, "Instruction", "32K", str), (2, "Unified", "6144K", lambda n: "0-1")],
        has_core_list=False)
    system.cpuinfo(machine, range(2), lambda n: {
        "vendor_id": "GenuineIntel", "cpu family": 6, "model": 23, "model name": MODEL, "stepping": 6,
        "microcode": "0x60f", "cpu MHz": "2997.098", "physical id": 0, "flags": FLAGS})
    system.cpuid(machine)


def disks(machine):
    ide = sysfs.pci(machine, "pci0000:00/0000:00:1f.1", 0x8086, 0x2850, 0x01018A, (0x1458, 0x5001), "ata_piix", 3)
    ahci = sysfs.pci(machine, "pci0000:00/0000:00:1f.2", 0x8086, 0x2922, 0x010601, (0x1458, 0xB005), "ahci", 2)
    old = sysfs.ata_host(machine, ide, 1, 0, sysfs.ata_identify("ST3120026A", "3JT1ABCD", "3.06", security=0x0021,
                                                                 serial_ata=0))
    sysfs.scsi_disk(machine, old, "0:0:0:0", "sda", "8:0", 234441648,
                    {"vendor": "ATA     ", "model": "ST3120026A      ", "rev": "3.06"}, {"rotational": 1},
                    properties={"ID_PART_TABLE_TYPE": "dos"})
    disk = f"{old}/target0:0:0/0:0:0:0/block/sda"
    sysfs.partition(machine, disk, "sda1", 1, "8:1", 63, 224669970, {
        "ID_FS_TYPE": "ext3", "ID_FS_UUID": "a7f3c0de-0815-4711-9b1e-33cafe445566", "ID_FS_LABEL": "alt \\x22root\\x22",
        "ID_FS_LABEL_ENC": "alt\\x20\\x22root\\x22", "ID_PART_ENTRY_TYPE": "0x83", "ID_PART_ENTRY_UUID": "000b5f3c-01"})
    sysfs.partition(machine, disk, "sda5", 5, "8:5", 224685153, 9751392, {
        "ID_FS_TYPE": "swap", "ID_FS_UUID": "4f1b2c3d-aaaa-bbbb-cccc-ddddeeeeffff", "ID_PART_ENTRY_TYPE": "0x82",
        "ID_PART_ENTRY_UUID": "000b5f3c-05"})
    new = sysfs.ata_host(machine, ahci, 3, 2, sysfs.ata_identify("SAMSUNG HD103SJ", "S246J9AB123456", "1AJ10001",
                                                                  security=0x0029))
    sysfs.scsi_disk(machine, new, "2:0:0:0", "sdb", "8:16", 1953525168,
                    {"vendor": "ATA     ", "model": "SAMSUNG HD103SJ ", "rev": "0001", "wwid": "naa.50024e90041a2b3c"},
                    {"rotational": 1}, serial_page="S246J9AB123456      ")
    dvd = sysfs.ata_host(machine, ahci, 4, 3, sysfs.ata_identify("HL-DT-STDVD-RAM GH22NS30", "K1ABC", "1.01",
                                                                    configuration=0x85C0))
    sysfs.scsi_disk(machine, dvd, "3:0:0:0", "sr0", "11:0", 2097151,
                    {"vendor": "HL-DT-ST", "model": "DVD-RAM GH22NS30", "rev": "1.01"},
                    {"rotational": 1, "logical_block_size": 2048, "physical_block_size": 2048}, 1)
    machine.file("/proc/sys/dev/cdrom/info", "CD-ROM information, Id: cdrom.c 3.20 2003/12/17\n\ndrive name:\t\tsr0\n"
                 "drive speed:\t\t48\nCan read DVD:\t\t1\nCan write CD-R:\t\t1\nCan write CD-RW:\t1\nCan write DVD-R:\t1\n"
                 "Can write DVD-RAM:\t1\n")
    floppy = sysfs.block(machine, "/sys/devices/platform/floppy.0/block/fd0", "2:0", 8, {"rotational": 1}, 1)
    machine.link_to(f"{floppy}/device", "/sys/devices/platform/floppy.0")
    sysfs.on_bus(machine, "/sys/devices/platform/floppy.0", "platform", "floppy")
    for index in range(2):
        sysfs.block(machine, f"/sys/devices/virtual/block/loop{index}", f"7:{index}", 0, {})
    system.mounts(machine, system.PSEUDO + [
        ("8:1", "/", "/", "rw,relatime", "ext3", "/dev/sda1", "rw,errors=remount-ro,data=ordered"),
        ("0:37", "/", "/home", "rw,relatime", "nfs", "nas:/export/home",
         "rw,vers=3,rsize=65536,wsize=65536,hard,proto=tcp,addr=192.0.2.5"),
        ("0:38", "/", "/mnt/music\\040box", "rw,relatime", "cifs", "//nas/music",
         "rw,vers=1.0,username=carol,password=hunter2,addr=192.0.2.5"),
    ])
    system.swaps(machine, [("/dev/sda5", "partition", 4875692, 12)])
    machine.size("/", 113094422528, 70127493120, 64358027264, 7028736, 6713201)
    machine.size("/home", 1967316500480, 901943132160, 901943132160, 122101760, 120004321)


def network(machine):
    card = sysfs.pci(machine, "pci0000:00/0000:00:1c.4/0000:03:00.0", 0x10EC, 0x8168, 0x020000, (0x1458, 0xE000), "r8169", 2,
                     now=("2.5 GT/s", 1), most=("2.5 GT/s", 1))
    sysfs.pci(machine, "pci0000:00/0000:00:00.0", 0x8086, 0x29C0, 0x060000, (0x1458, 0x5000), revision=2)
    sysfs.net(machine, "eth0", card, 100, "full")
    machine.answer("links", [
        {"index": 1, "name": "lo", "hardwareType": 772, "flags": 65609, "mtu": 65536, "address": "00:00:00:00:00:00",
         "operationalState": "unknown"},
        {"index": 2, "name": "eth0", "hardwareType": 1, "flags": 69699, "mtu": 1500, "address": "00:1f:d0:11:22:33",
         "operationalState": "up"}])
    machine.answer("linkDriver", {"driver": "r8169", "firmwareVersion": "rtl8168d-2.fw", "busAddress": "0000:03:00.0",
                                  "port": 0}, "eth0")
    machine.answer("addresses", [
        {"link": 2, "address": "192.0.2.10", "prefixLength": 25, "scope": 0, "isPermanent": True}])
    machine.answer("routes", [
        {"table": 254, "destination": "0.0.0.0", "prefixLength": 0, "gateway": "192.0.2.1", "link": 2, "type": 1},
        {"table": 254, "destination": "192.0.2.0", "prefixLength": 25, "link": 2, "type": 1, "scope": 253}])
    machine.file("/var/lib/dhcp/dhclient.eth0.leases", "lease {\n}\n")
    machine.file("/etc/resolv.conf", "search home.example\nnameserver 192.0.2.1\n")


def desk(machine):
    """A tube, a keyboard and a wheel mouse on PS/2."""
    graphics = sysfs.pci(machine, "pci0000:00/0000:00:01.0/0000:01:00.0", 0x10DE, 0x0622, 0x030000, (0x1458, 0x3485), "nouveau",
                         0xA1)
    machine.files(graphics, {"boot_vga": 1})
    machine.file(f"{graphics}/resource", "0x00000000f4000000 0x00000000f4ffffff 0x0000000000040200\n"
                                         "0x00000000e0000000 0x00000000efffffff 0x000000000014220c\n")
    tube = edid.block(1, "SNY", 0x0150, 8010203, 23, 2000, (40, 30), [
        edid.text(edid.TEXT, "Trinitron"), edid.ranges((48, 120), (30, 107), 230), edid.text(edid.NAME, "CPD-G400")],
        digital=False, preferred=False)
    sysfs.card(machine, graphics, 0, {"DVI-I-1": tube, "DVI-I-2": b""})
    sysfs.framebuffer(machine, graphics, 1280, 1024, 32)
    inputs.install(machine, [
        inputs.power_button(1), inputs.ps2_keyboard(0),
        inputs.device(0x11, 2, 5, "ImPS/2 Generic Wheel Mouse", "isa0060/serio1/input0",
                      "platform/i8042/serio1/input/input3", "mouse0 event3", EV="7", KEY="70000 0 0 0 0", REL="103")])
    inputs.repeat(machine, 0, 250, 33)
    machine.file("/etc/default/keyboard", 'XKBMODEL="pc105"\nXKBLAYOUT="latam"\n')
    machine.files("/sys/module/psmouse/parameters", {"resolution": 200})


def build():
    machine = system.recorded_by_root()
    firmware(machine)
    processors(machine)
    system.memory(machine, 4045128, 1823404, 2987716, 4875692, 4875680)
    disks(machine)
    network(machine)
    desk(machine)
    system.os_release(machine, NAME="Devuan GNU/Linux", PRETTY_NAME="Devuan GNU/Linux 1 (jessie)", ID="devuan",
                      VERSION_ID="1")
    machine.names("attic", "4.4.39-1-amd64", "#1 SMP Debian 4.4.39-1 (2016-12-20)", "x86_64")
    system.booted(machine, CLOCK, 432000, "BOOT_IMAGE=/boot/vmlinuz-4.4.39-1-amd64 root=/dev/sda1 ro vga=791")
    system.local_time(machine, "America/Caracas", "-04", -14400, "<-04>4")
    machine.file("/proc/1/comm", "init\n")
    machine.file("/proc/1/environ", "HOME=/\0")
    machine.file("/etc/inittab", "# /etc/inittab\nid:2:initdefault:\nsi::sysinit:/etc/init.d/rcS\n")
    machine.file("/etc/default/locale", 'LANG="es_VE.UTF-8"\n')
    machine.file("/etc/samba/smb.conf", "[global]\n   workgroup = ATTIC\n[homes]\n   workgroup = NOT\n")
    machine.file("/var/lib/dbus/machine-id", "4a3b2c1d00112233445566778899aabb\n")
    machine.file("/var/lib/dpkg/status", "")
    accounts.scripts(machine)
    system.pci_ids(machine)
    for path in [path for path in machine.contents if path.endswith(("/queue/zoned", "/hidden"))]:
        del machine.contents[path]  # younger than this kernel
    return machine
