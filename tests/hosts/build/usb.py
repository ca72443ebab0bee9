"""What hangs on a bus of USB."""

import sysfs

IDS = """046d  Logitech, Inc.
	c52b  Unifying Receiver
1d6b  Linux Foundation
	0002  2.0 root hub
	0003  3.0 root hub
5986  Bison Electronics Inc.
8087  Intel Corp.
	0033  AX211 Bluetooth
0557  ATEN International Co., Ltd
	7000  Hub
	2419  Virtual mouse/keyboard device
C 03  Human Interface Device
C 09  Hub
C 0e  Video
"""


def ids(machine):
    machine.file("/usr/share/misc/usb.ids", IDS)


def device(machine, above, name, vendor, product, number, speed, version=" 2.00", kind=0, subclass=0, ports=0, interfaces=(),
           texts=None):
    """A device on a hub or, of a root hub, on its controller, by that one's folder. interfaces: (class, subclass, driver) each;
    texts: what it says of itself. Returns its folder."""
    folder = f"{above}/{name}"
    machine.files(folder, {
        "idVendor": f"{vendor:04x}", "idProduct": f"{product:04x}", "bDeviceClass": f"{kind:02x}",
        "bDeviceSubClass": f"{subclass:02x}", "devnum": number, "devpath": name.split("-")[1] if "-" in name else 0,
        "maxchild": ports, "speed": speed, "version": version, **(texts or {})})
    sysfs.on_bus(machine, folder, "usb", "usb")
    machine.link_to(f"/sys/bus/usb/devices/{name}", folder)
    prefix = name if "-" in name else f"{name.removeprefix('usb')}-0"
    for index, (interface, part, driver) in enumerate(interfaces):
        place = f"{folder}/{prefix}:1.{index}"
        machine.files(place, {"bInterfaceClass": f"{interface:02x}", "bInterfaceSubClass": f"{part:02x}"})
        sysfs.on_bus(machine, place, "usb", driver)
        machine.link_to(f"/sys/bus/usb/devices/{prefix}:1.{index}", place)
    return folder


def root_hub(machine, controller, bus, ports, speed, version=" 2.00"):
    """A controller's own hub; the kernel says its texts."""
    return device(machine, controller, f"usb{bus}", 0x1D6B, 2 if speed < 5000 else 3, 1, speed, version, 9, 0, ports, [(9, 0, "hub")],
                  {"manufacturer": "Linux 6.1.0 xhci-hcd", "product": "xHCI Host Controller",
                   "serial": controller.rsplit("/", 1)[1]})
