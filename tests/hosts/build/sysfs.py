"""Devices as /sys lays them out."""


def driver(machine, folder, bus, name):
    machine.link_to(f"{folder}/driver", f"/sys/bus/{bus}/drivers/{name}")


def on_bus(machine, folder, bus, driver_name=None):
    machine.link_to(f"{folder}/subsystem", f"/sys/bus/{bus}")
    if driver_name:
        driver(machine, folder, bus, driver_name)


def in_class(machine, folder, kind, name=None):
    """Makes the class's link to a device and the device's to its class."""
    machine.link_to(f"{folder}/subsystem", f"/sys/class/{kind}")
    machine.link_to(f"/sys/class/{kind}/{name or folder.rsplit('/', 1)[1]}", folder)


def pci(machine, path, vendor, device, kind, subsystem_ids, driver_name=None, revision=0, node=-1, group=None, now=None,
        most=None):
    """A PCI function at /sys/devices/<path>; now and most: speed and width of its link. Returns its folder."""
    folder = f"/sys/devices/{path}"
    machine.files(folder, {
        "vendor": f"0x{vendor:04x}", "device": f"0x{device:04x}", "class": f"0x{kind:06x}",
        "subsystem_vendor": f"0x{subsystem_ids[0]:04x}", "subsystem_device": f"0x{subsystem_ids[1]:04x}",
        "revision": f"0x{revision:02x}", "numa_node": node,
        "current_link_speed": now and now[0], "current_link_width": now and now[1],
        "max_link_speed": most and most[0], "max_link_width": most and most[1]})
    on_bus(machine, folder, "pci", driver_name)
    machine.link_to(f"/sys/bus/pci/devices/{folder.rsplit('/', 1)[1]}", folder)
    if group is not None:
        machine.link_to(f"{folder}/iommu_group", f"/sys/kernel/iommu_groups/{group}")
        machine.folder(f"/sys/kernel/iommu_groups/{group}/devices")
    return folder


def framebuffer(machine, device, width, height, bits):
    """The first one, of a device by its folder."""
    machine.files("/sys/class/graphics/fb0", {"virtual_size": f"{width},{height}", "bits_per_pixel": bits})
    machine.link_to("/sys/class/graphics/fb0/device", device)


def card(machine, device, index, connectors):
    """A card of the display layer on a device, by its folder. connectors: name -> the monitor's blocks, empty without."""
    folder = f"{device}/drm/card{index}"
    in_class(machine, folder, "drm")
    machine.link_to(f"{folder}/device", device)
    for name, blocks in connectors.items():
        place = f"{folder}/card{index}-{name}"
        in_class(machine, place, "drm")
        machine.files(place, {"status": "connected" if blocks else "disconnected"})
        machine.file(f"{place}/edid", blocks)


def block(machine, folder, number, sectors, queue=None, removable=0, read_only=0, properties=None):
    """A block device at a folder of /sys/devices, or a partition in its disk's; queue: None for a partition.
    properties: what udev keeps of it."""
    name = folder.rsplit("/", 1)[1]
    machine.files(folder, {"dev": number, "size": sectors, "ro": read_only})
    machine.link_to(f"/sys/dev/block/{number}", folder)
    machine.link_to(f"/sys/class/block/{name}", folder)
    machine.link_to(f"{folder}/subsystem", "/sys/class/block")
    machine.folder(f"{folder}/holders")
    if queue is not None:
        machine.link_to(f"/sys/block/{name}", folder)
        machine.files(folder, {"removable": removable, "hidden": 0})
        machine.folder(f"{folder}/slaves")
        machine.files(f"{folder}/queue", {"logical_block_size": 512, "physical_block_size": 512, "rotational": 0,
                                          "discard_max_bytes": 0, "zoned": "none", **queue})
    udev(machine, number, properties)
    return folder


def udev(machine, number, properties):
    if properties:
        machine.file(f"/run/udev/data/b{number}", "".join(f"E:{name}={value}\n" for name, value in properties.items()))


def partition(machine, disk, name, index, number, start, sectors, properties=None, label=None, uuid=None):
    """label and uuid: what the kernel's own words of it are (PARTUUID from 6.9 on)."""
    folder = f"{disk}/{name}"
    block(machine, folder, number, sectors, properties=properties)
    major, minor = number.split(":")
    machine.files(folder, {"partition": index, "start": start})
    uevent = f"MAJOR={major}\nMINOR={minor}\nDEVNAME={name}\nDEVTYPE=partition\nPARTN={index}\n"
    uevent += f"PARTNAME={label}\n" if label else ""
    uevent += f"PARTUUID={uuid}\n" if uuid else ""
    machine.file(f"{folder}/uevent", uevent)
    return folder


def mapper(machine, index, name, uuid, sectors, members, properties=None):
    """A device of device mapper on members, by their folders."""
    folder = f"/sys/devices/virtual/block/dm-{index}"
    block(machine, folder, f"254:{index}", sectors, {}, properties=properties)
    machine.files(f"{folder}/dm", {"name": name, "uuid": uuid, "suspended": 0})
    hold(machine, folder, members)
    return folder


def hold(machine, folder, members):
    name = folder.rsplit("/", 1)[1]
    for member in members:
        machine.link_to(f"{folder}/slaves/{member.rsplit('/', 1)[1]}", member)
        machine.link_to(f"{member}/holders/{name}", folder)


def scsi_disk(machine, host_folder, address, name, number, sectors, inquiry, queue=None, removable=0, properties=None,
              serial_page=None, above=""):
    """A disk below a SCSI host; above: folders between the host and the target. inquiry: vendor, model, rev, wwid.
    Returns the folder of its block device."""
    target = address.rsplit(":", 1)[0]
    device = f"{host_folder}{above}/target{target}/{address}"
    on_bus(machine, device, "scsi", "sd")
    machine.files(device, {"type": 0, **inquiry})
    if serial_page:
        text = serial_page.encode()
        machine.file(f"{device}/vpd_pg80", bytes([0, 0x80, 0, len(text)]) + text)
    folder = f"{device}/block/{name}"
    block(machine, folder, number, sectors, queue or {}, removable, properties=properties)
    machine.link_to(f"{folder}/device", device)
    return folder


def ata_identify(model, serial, firmware, cylinders=16383, heads=16, sectors=63, security=0, serial_ata=0x850E,
                 configuration=0x0040):
    """The text of an IDENTIFY block as the kernel shows it: 16 words a line."""
    words = [0] * 256

    def put(first, count, text):
        padded = text.ljust(2 * count).encode()
        for i in range(count):
            words[first + i] = padded[2 * i] << 8 | padded[2 * i + 1]
    words[0], words[1], words[3], words[6] = configuration, cylinders, heads, sectors
    put(10, 10, serial.rjust(20))
    put(23, 4, firmware)
    put(27, 20, model)
    words[76], words[128] = serial_ata, security
    return "".join(" ".join(f"{word:04x}" for word in words[i:i + 16]) + "\n" for i in range(0, 256, 16))


def ata_host(machine, pci_folder, port, host, identify):
    """A port of an AHCI or IDE controller with one disk. Returns the folder of its SCSI host."""
    folder = f"{pci_folder}/ata{port}"
    machine.file(f"{folder}/link{port}/dev{port}.0/ata_device/dev{port}.0/id", identify)
    return f"{folder}/host{host}"


def nvme(machine, pci_folder, index, number, sectors, model, serial, firmware, wwid, properties=None, address=None):
    """A controller with one namespace. Returns the folder of its block device."""
    controller = f"{pci_folder}/nvme/nvme{index}"
    in_class(machine, controller, "nvme")
    machine.link_to(f"{controller}/device", pci_folder)
    machine.files(controller, {"model": f"{model:<40}", "serial": f"{serial:<20}", "firmware_rev": f"{firmware:<8}",
                               "transport": "pcie", "state": "live", "cntlid": 1,
                               "address": address or pci_folder.rsplit("/", 1)[1]})
    folder = f"{controller}/nvme{index}n1"
    block(machine, folder, number, sectors, {"discard_max_bytes": 2199023255040}, properties=properties)
    machine.files(folder, {"wwid": wwid, "nsid": 1})
    machine.link_to(f"{folder}/device", controller)
    return folder


def health(machine, index, used, written, hours, celsius, spare=100, warning=0):
    """What an NVMe controller says of itself. written: in thousands of 512 bytes."""
    machine.answer("nvmeHealth", {"criticalWarning": warning, "temperature": celsius + 273, "availableSpare": spare,
                                  "percentageUsed": used, "dataUnitsWritten": written, "powerOnHours": hours},
                   f"/dev/nvme{index}")


def hwmon(machine, device, index, chip, values, below="hwmon/"):
    """A hardware monitor of a device, by its folder; values: what its inputs and labels say."""
    folder = f"{device}/{below}hwmon{index}"
    in_class(machine, folder, "hwmon")
    machine.link_to(f"{folder}/device", device)
    machine.files(folder, {"name": chip, **values})


def error_counts(machine, controller, labels, corrected=()):
    """A memory controller that counts errors; corrected: label -> how many, none of the others."""
    top = f"/sys/devices/system/edac/mc/mc{controller}"
    for index, label in enumerate(labels):
        machine.files(f"{top}/dimm{index}", {
            "dimm_label": label, "dimm_location": f"channel {index} slot 0", "size": 65536, "dimm_mem_type": "Registered-DDR5",
            "dimm_edac_mode": "S4ECD4ED", "dimm_ce_count": dict(corrected).get(label, 0), "dimm_ue_count": 0})


def modules(machine, names, signed):
    """Modules that are loaded: (name, bytes, version, marks) each. signed: whether the kernel checks signatures."""
    machine.file("/proc/modules", "".join(
        f"{name} {size} 0 - Live 0x0000000000000000{marks}\n" for name, size, _, marks in names))
    for name, _, version, _ in names:
        machine.files(f"/sys/module/{name}", {"version": version})
    if signed:
        machine.files("/sys/module/module/parameters", {"sig_enforce": "N"})


def serial_port(machine, device, name, kind, port, irq):
    """A UART of a device by its folder."""
    folder = f"{device}/tty/{name}"
    in_class(machine, folder, "tty")
    machine.link_to(f"{folder}/device", device)
    machine.files(folder, {"type": kind, "port": f"0x{port:X}", "irq": irq, "uartclk": 1843200, "iomem_base": "0x0"})


def processors(machine, online, present, topology, caches, nodes=None, has_core_list=True):
    """topology: processor -> (package, core, siblings); caches: rows of (level, type, size, shared list by processor).
    nodes: processor -> node."""
    top = "/sys/devices/system/cpu"
    machine.files(top, {"online": online, "present": present, "possible": present})
    for number, (package, core, siblings) in topology.items():
        machine.files(f"{top}/cpu{number}/topology", {
            "physical_package_id": package, "core_id": core, "thread_siblings_list": siblings,
            "core_cpus_list": siblings if has_core_list else None})
        for index, (level, kind, size, shared) in enumerate(caches):
            machine.files(f"{top}/cpu{number}/cache/index{index}", {
                "level": level, "type": kind, "size": size, "shared_cpu_list": shared(number)})
    for number, node in (nodes or {}).items():
        machine.link_to(f"{top}/cpu{number}/node{node}", f"/sys/devices/system/node/node{node}")


def node(machine, index, processors_list, kilobytes, distances):
    folder = f"/sys/devices/system/node/node{index}"
    machine.files(folder, {"cpulist": processors_list, "distance": distances})
    machine.file(f"{folder}/meminfo", f"Node {index} MemTotal:       {kilobytes} kB\n"
                                      f"Node {index} MemFree:        {kilobytes // 2} kB\n")


def vulnerabilities(machine, states):
    machine.files("/sys/devices/system/cpu/vulnerabilities", states)


def net(machine, name, device=None, speed=None, duplex=None, wireless=False):
    """A link's folder; device: its device's folder, None for a virtual one."""
    folder = f"{device}/net/{name}" if device else f"/sys/devices/virtual/net/{name}"
    machine.link_to(f"/sys/class/net/{name}", folder)
    machine.files(folder, {"speed": speed, "duplex": duplex})
    if device:
        machine.link_to(f"{folder}/device", device)
    if wireless:
        machine.folder(f"{folder}/wireless")
    if speed is None:
        machine.error(f"/sys/class/net/{name}/speed", "EINVAL")
        machine.error(f"/sys/class/net/{name}/duplex", "EINVAL")
        machine.files(folder, {"speed": "", "duplex": ""})
    return folder
