"""A server of two sockets with two NUMA nodes each, 24 memory modules, SAS disks on two paths and NVMe disks whose
controllers the kernel puts under one head."""

import accounts
import smbios
import sysfs
import system
import usb

GB = 1 << 30
CLOCK = 1763724934
CORES = 32  # of a socket
THREADS = 4 * CORES  # of both
FLAGS = ("fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush mmx fxsr sse sse2 ht syscall nx "
         "mmxext fxsr_opt pdpe1gb rdtscp lm constant_tsc svm avx avx2 avx512f")
MODEL = "AMD EPYC 9354 32-Core Processor"


def firmware(machine):
    table = smbios.begun("American Megatrends International, LLC.", "2.1a", "03/28/2024", (5, 29), 32,
                         ("Meridian", "MS-2U24-N", "0123456789", "S411795X4A00321",
                          "b8fa1400-4d1e-11ef-8000-7cc2551f0a2c", "091715D9", "SMC H13"),
                         ("Meridian", "H13DSH", "1.02", "OM24BS601234"),
                         ("Meridian", 23, "1.0", "C2190AM12345678", "DC2-R14-U17", 2, "CSE-219"))
    for socket in range(2):
        smbios.processor(table, f"CPU{socket + 1}", "Advanced Micro Devices, Inc.", MODEL, 0x6B, 100, 3800, 3250, 0x4A,
                         CORES, 2 * CORES)
    array = smbios.memory_array(table, 24 * 256 * GB, 24, 6)
    for slot in range(24):
        channel = "ABCDEFGHIJKL"[slot % 12]
        smbios.memory_module(table, array, f"P{slot // 12 + 1}-DIMM{channel}1", f"P{slot // 12}_Node0_Channel{slot % 12}_Dimm0",
                             65536, 0x09, 0x22, 0x2080, 4800, 4800, "Micron Technology", f"E7A1{0x3B00 + slot:04X}",
                             "MTC40F2046S1RC48BA1", 2, 64, 80, 1100, f"P{slot // 12 + 1}-DIMM{channel}1_AssetTag")
    smbios.management_controller(table)
    table.end()
    smbios.install(machine, table, smbios.entry_point_64(table, 3, 5))
    smbios.show(machine, {"sys_vendor": "Meridian", "product_name": "MS-2U24-N", "chassis_type": "23"})
    machine.folder("/sys/firmware/efi/efivars")
    machine.file("/sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c", bytes([6, 0, 0, 0, 0]))
    machine.folder("/sys/class/ipmi/ipmi0")


def siblings(number):
    return f"{number % (2 * CORES)},{number % (2 * CORES) + 2 * CORES}"


def processors(machine):
    """Logical processor n is core n % 64 of both sockets together; a node has 16 cores of a socket, an L3 cache four."""
    def package(number):
        return number % (2 * CORES) // CORES

    def complex_of(number):
        first = number % (2 * CORES) // 4 * 4
        return f"{first}-{first + 3},{first + 2 * CORES}-{first + 2 * CORES + 3}"
    sysfs.processors(machine, f"0-{THREADS - 1}", f"0-{THREADS - 1}",
                     {n: (package(n), n % CORES, siblings(n)) for n in range(THREADS)},
                     [(1, "Data", "32K", siblings), (1, "Instruction", "32K", siblings), (2, "Unified", "1024K", siblings),
                      (3, "Unified", "32768K", complex_of)],
                     {n: n % (2 * CORES) // 16 for n in range(THREADS)})
    for n in range(THREADS):
        machine.files(f"/sys/devices/system/cpu/cpu{n}/cpufreq", {
            "cpuinfo_min_freq": 1500000, "cpuinfo_max_freq": 3799072, "scaling_cur_freq": 3249941})
    system.cpuinfo(machine, range(THREADS), lambda n: {
        "vendor_id": "AuthenticAMD", "cpu family": 25, "model": 17, "model name": MODEL, "stepping": 1,
        "microcode": "0xa101148", "cpu MHz": "3249.941", "physical id": package(n), "flags": FLAGS})
    system.cpuid(machine)
    for index in range(4):
        distances = [10 if other == index else 12 if other // 2 == index // 2 else 32 for other in range(4)]
        sysfs.node(machine, index, f"{16 * index}-{16 * index + 15},{16 * index + 64}-{16 * index + 79}", 396312576,
                   " ".join(map(str, distances)))
    sysfs.vulnerabilities(machine, {"spec_rstack_overflow": "Mitigation: Safe RET",
                                    "spectre_v2": "Mitigation: Retpolines; IBPB: conditional; IBRS_FW; STIBP: always-on"})


def sas(machine):
    """Two disks, each seen through both ports of the adapter: four SCSI disks, two multipath maps."""
    adapter = sysfs.pci(machine, "pci0000:60/0000:60:03.1/0000:61:00.0", 0x1000, 0x00AC, 0x010700, (0x1000, 0x4000),
                        "mpt3sas", 1, node=1, group=33, now=("8.0 GT/s PCIe", 8), most=("8.0 GT/s PCIe", 8))
    host = f"{adapter}/host8"
    paths = {}
    for index, name in enumerate("abcd"):
        disk, port = index % 2, index // 2
        serial = f"ZAD{disk}8K7M0000C1234ABC"
        end = f"/port-8:{port}/expander-8:{port}/port-8:{port}:{disk}/end_device-8:{port}:{disk}"
        path = sysfs.scsi_disk(
            machine, host, f"8:0:{index}:0", f"sd{name}", f"8:{16 * index}", 15628053168,
            {"vendor": "SEAGATE ", "model": "ST8000NM001A    ", "rev": "E004", "wwid": f"naa.5000c500d{disk}a1b2c3",
             "state": "transport-offline" if name == "d" else "running"},
            {"rotational": 1, "physical_block_size": 4096}, serial_page=serial, above=end,
            properties={"ID_FS_TYPE": "mpath_member", "DM_MULTIPATH_DEVICE_PATH": "1"})
        paths.setdefault(disk, []).append(path)
    for disk, members in paths.items():
        sysfs.mapper(machine, disk, f"mpath{'ab'[disk]}", f"mpath-35000c500d{disk}a1b2c3", 15628053168, members,
                     {"ID_FS_TYPE": "LVM2_member", "ID_FS_UUID": f"vTq2Lx-{disk}aBc-DeFg-hIjK-lMnO-pQrS-tUvWxY"})
    both = [f"/sys/devices/virtual/block/dm-{disk}" for disk in paths]
    sysfs.mapper(machine, 2, "vg_data-lv_data", "LVM-" + "Ab1Cd2Ef3Gh4Ij5Kl6Mn7Op8Qr9St0Uv" * 2, 31256084480, both,
                 {"ID_FS_TYPE": "xfs", "ID_FS_UUID": "7d1c9e44-3a3e-4b41-a5a2-6a7e5c8f9b10", "ID_FS_LABEL": "data",
                  "ID_FS_LABEL_ENC": "data"})


def nvme(machine):
    """A disk with two controllers, of which the kernel makes one head and two hidden paths; and one disk without."""
    heads = "/sys/devices/virtual/nvme-subsystem/nvme-subsys0"
    sysfs.in_class(machine, heads, "nvme-subsystem")
    machine.files(heads, {"model": "SAMSUNG MZWLO3T8HCLS-00A07", "serial": "S795NG0W900123", "firmware_rev": "OPPA4B5Q",
                          "subsysnqn": "nqn.1994-11.com.samsung:nvme:PM1743:2.5-inch:S795NG0W900123", "iopolicy": "numa"})
    head = sysfs.block(machine, f"{heads}/nvme0n1", "259:1", 7501476528, {"discard_max_bytes": 2199023255040,
                                                                         "physical_block_size": 4096},
                       properties={"ID_PART_TABLE_TYPE": "gpt"})
    machine.files(head, {"wwid": "eui.36373930590001230025384100000001", "nsid": 1})
    machine.link_to(f"{head}/device", heads)
    sysfs.partition(machine, head, "nvme0n1p1", 1, "259:2", 2048, 2203648, {
        "ID_FS_TYPE": "vfat", "ID_FS_UUID": "9C41-77AB", "ID_PART_ENTRY_UUID": "d0c7a8f2-11d9-4d43-9a84-8dd1c0b2e001",
        "ID_PART_ENTRY_TYPE": "c12a7328-f81f-11d2-ba4b-00a0c93ec93b"})
    sysfs.partition(machine, head, "nvme0n1p2", 2, "259:3", 2205696, 7499268096, {
        "ID_FS_TYPE": "xfs", "ID_FS_UUID": "f2f0a7c1-52a1-4c9d-8e06-1fb7a60d2e55",
        "ID_PART_ENTRY_UUID": "d0c7a8f2-11d9-4d43-9a84-8dd1c0b2e002",
        "ID_PART_ENTRY_TYPE": "0fc63daf-8483-4772-8e79-3d69d8477de4"})
    for index, bus in enumerate(("41", "42")):
        controller = sysfs.pci(machine, f"pci0000:40/0000:40:0{index + 1}.1/0000:{bus}:00.0", 0x144D, 0xA825, 0x010802,
                               (0x144D, 0xAA8D), "nvme", node=0, group=20 + index, now=("32.0 GT/s PCIe", 2),
                               most=("32.0 GT/s PCIe", 4))
        folder = f"{controller}/nvme/nvme{index}"
        sysfs.in_class(machine, folder, "nvme")
        machine.files(folder, {"model": "SAMSUNG MZWLO3T8HCLS-00A07", "serial": "S795NG0W900123", "transport": "pcie",
                               "firmware_rev": "OPPA4B5Q", "address": f"0000:{bus}:00.0", "cntlid": index + 1})
        machine.link_to(f"{heads}/nvme{index}", folder)
        path = f"{folder}/nvme0c{index}n1"
        machine.files(path, {"size": 7501476528, "hidden": 1, "removable": 0, "ro": 0})
        machine.link_to(f"{path}/device", folder)
        machine.link_to(f"/sys/block/nvme0c{index}n1", path)
    single = sysfs.pci(machine, "pci0000:e0/0000:e0:03.3/0000:e1:00.0", 0x144D, 0xA825, 0x010802, (0x144D, 0xAA8D), "nvme",
                       node=3, group=71, now=("32.0 GT/s PCIe", 4), most=("32.0 GT/s PCIe", 4))
    sysfs.nvme(machine, single, 2, "259:5", 7501476528, "SAMSUNG MZWLO3T8HCLS-00A07", "S795NG0W900456", "OPPA4B5Q",
               "eui.36373930590004560025384100000001")


def watch(machine):
    """What counts errors and measures: memory controllers, whose labels an administrator has set, and drives."""
    for socket in (1, 2):
        labels = [f"P{socket}-DIMM{channel}1" for channel in "ABCDEFGHIJKL"]
        sysfs.error_counts(machine, socket - 1, labels, {"P2-DIMMC1": 17})
    sysfs.health(machine, 0, 1, 98765432, 9123, 34)
    sysfs.health(machine, 2, 103, 24681357913, 41000, 52, spare=8, warning=1)
    for index in range(2):
        sysfs.hwmon(machine, f"/sys/devices/pci0000:00/0000:00:{18 + index}.3", index, "k10temp", {
            "temp1_input": 48125 + index, "temp1_label": "Tctl"})
    sysfs.hwmon(machine, "/sys/devices/LNXSYSTM:00/device:00/ACPI000D:00", 2, "power_meter", {"power1_input": 412000000}, below="")
    for index, port in enumerate((0x3F8, 0x2F8)):
        sysfs.serial_port(machine, f"/sys/devices/pnp0/00:0{index + 3}", f"ttyS{index}", 4, port, 4 - index)


def plugs(machine):
    """What the management controller shows itself as."""
    controller = sysfs.pci(machine, "pci0000:c0/0000:c0:08.3/0000:c5:00.4", 0x1022, 0x14C9, 0x0C0330, (0x15D9, 0x1C7D), "xhci_hcd",
                           node=2, group=61)
    usb.ids(machine)
    hub = usb.root_hub(machine, controller, 1, 2, 480)
    inner = usb.device(machine, hub, "1-1", 0x0557, 0x7000, 2, 480, " 2.00", 9, 0, 4, [(9, 0, "hub")])
    usb.device(machine, inner, "1-1.1", 0x0557, 0x2419, 3, 1.5, " 1.10", interfaces=[(3, 1, "usbhid"), (3, 1, "usbhid")])


def network(machine):
    links = [{"index": 1, "name": "lo", "hardwareType": 772, "flags": 65609, "mtu": 65536,
              "address": "00:00:00:00:00:00", "operationalState": "unknown"}]
    for port in range(2):
        card = sysfs.pci(machine, f"pci0000:20/0000:20:01.1/0000:21:00.{port}", 0x8086, 0x1563, 0x020000, (0x15D9, 0x0001),
                         "ixgbe", 1, node=0, group=40 + port, now=("8.0 GT/s PCIe", 4), most=("8.0 GT/s PCIe", 4))
        name = f"enp33s0f{port}"
        sysfs.net(machine, name, card, 10000 if port == 0 else None, "full")
        links.append({"index": 2 + port, "name": name, "hardwareType": 1, "flags": 69699 if port == 0 else 4099,
                      "mtu": 9000 if port == 0 else 1500, "address": f"7c:c2:55:1f:0a:2{'cd'[port]}",
                      "permanentAddress": f"7c:c2:55:1f:0a:2{'cd'[port]}", "operationalState": "up" if port == 0 else "down"})
        machine.answer("linkDriver", {"driver": "ixgbe", "firmwareVersion": "0x800009e0", "port": 0,
                                      "busAddress": f"0000:21:00.{port}"}, name)
    graphics = sysfs.pci(machine, "pci0000:e0/0000:e0:05.3/0000:e2:00.0/0000:e3:00.0", 0x1A03, 0x2000, 0x030000,
                         (0x1A03, 0x2000), "ast", 0x52, node=3, group=72)
    machine.files(graphics, {"boot_vga": 1})
    sysfs.card(machine, graphics, 0, {"VGA-1": b""})
    sysfs.framebuffer(machine, graphics, 1024, 768, 32)
    machine.answer("links", links)
    machine.answer("addresses", [
        {"link": 2, "address": "10.20.14.17", "prefixLength": 22, "scope": 0, "isPermanent": True}])
    machine.answer("routes", [
        {"table": 254, "destination": "0.0.0.0", "prefixLength": 0, "gateway": "10.20.12.1", "link": 2, "type": 1},
        {"table": 254, "destination": "10.20.12.0", "prefixLength": 22, "link": 2, "type": 1, "scope": 253}])
    machine.file("/etc/resolv.conf", "search dc2.example.net\nnameserver 10.20.0.53\nnameserver 10.21.0.53\nnameserver 10.22.0.53\n")


def mounts(machine):
    system.mounts(machine, system.PSEUDO + [
        ("259:3", "/", "/", "rw,relatime", "xfs", "/dev/nvme0n1p2", "rw,attr2,inode64,noquota"),
        ("259:2", "/", "/boot/efi", "rw,relatime", "vfat", "/dev/nvme0n1p1", "rw,fmask=0077"),
        ("254:2", "/", "/srv/data", "rw,relatime", "xfs", "/dev/mapper/vg_data-lv_data", "rw,attr2,inode64,noquota"),
    ])
    system.swaps(machine, [])
    machine.size("/", 3837749112832, 3702338179072, 3702338179072, 374963392, 374512309)
    machine.size("/boot/efi", 1125126144, 1118687232, 1118687232, 0, 0)
    machine.size("/srv/data", 15994920390656, 4021775650816, 4021775650816, 781250688, 776120441)


def build():
    machine = system.recorded_by_root()
    firmware(machine)
    processors(machine)
    system.memory(machine, 1585250304, 1402871232, 1551892480, 0, 0)
    sas(machine)
    nvme(machine)
    watch(machine)
    plugs(machine)
    network(machine)
    mounts(machine)
    system.os_release(machine, PRETTY_NAME="Ubuntu 24.04.1 LTS", NAME="Ubuntu", VERSION_ID="24.04", ID="ubuntu")
    machine.names("db17", "6.8.0-45-generic", "#45-Ubuntu SMP PREEMPT_DYNAMIC Fri Aug 30 12:02:04 UTC 2024", "x86_64")
    system.booted(machine, CLOCK, 3888000, "BOOT_IMAGE=/boot/vmlinuz-6.8.0-45-generic root=UUID=f2f0a7c1 ro console=ttyS1")
    system.local_time(machine, "Etc/UTC", "UTC", 0, "UTC0")
    system.systemd(machine, "multi-user.target")
    system.pci_ids(machine)
    machine.file("/var/lib/dpkg/status", "")
    accounts.livepatch(machine)
    accounts.units(machine)
    machine.file("/etc/machine-id", "c0ffee00c0ffee11c0ffee22c0ffee33\n")
    machine.file("/sys/kernel/address_bits", "64\n")
    machine.file("/sys/kernel/security/lsm", "lockdown,capability,landlock,yama,apparmor,ima,evm")
    machine.file("/sys/kernel/security/lockdown", "[none] integrity confidentiality\n")
    machine.file("/etc/invhw/site.d/10-place.conf", "# where it stands\nLocation = DC2, row 14\nOwner = Databases\n")
    machine.answer("birthTime", 1722470400, "/")
    return machine
