"""What distributions and kernels keep of a machine as a whole."""

import struct

from machine import Machine


def recorded_by_root():
    """A machine that root recorded."""
    machine = Machine()
    machine.answer("userId", 0)
    machine.answer("pageSize", 4096)
    return machine


def zone(standard, offset, rule):
    """A TZif file (RFC 8536) of a zone without past transitions: what it does today is its rule."""
    header = struct.pack(">4sc15sIIIIII", b"TZif", b"2", bytes(15), 0, 0, 0, 0, 1, len(standard) + 1)
    body = struct.pack(">iBB", offset, 0, 0) + standard.encode() + b"\0"
    return header + body + header + body + b"\n" + rule.encode() + b"\n"


def local_time(machine, name, standard, offset, rule):
    machine.link_to("/etc/localtime", f"/usr/share/zoneinfo/{name}")
    machine.file(f"/usr/share/zoneinfo/{name}", zone(standard, offset, rule))


def os_release(machine, **values):
    machine.link("/etc/os-release", "../usr/lib/os-release")
    machine.file("/usr/lib/os-release", "".join(f'{name}="{value}"\n' for name, value in values.items()))


def booted(machine, clock, uptime, command_line):
    machine.answer("clock", clock)
    machine.file("/proc/uptime", f"{uptime}.25 {uptime * 3}.50\n")
    machine.file("/proc/stat", f"cpu  1 2 3 4 5 6 7 8 0 0\nctxt 12345\nbtime {clock - uptime}\nprocesses 4711\n")
    machine.file("/proc/cmdline", command_line + "\n")


def systemd(machine, target="graphical.target"):
    machine.folder("/run/systemd/system")
    machine.file("/proc/1/comm", "systemd\n")
    machine.file("/proc/1/environ", "HOME=/\0TERM=linux\0")
    machine.link_to("/etc/systemd/system/default.target", f"/usr/lib/systemd/system/{target}")


def memory(machine, total, free, available, swap_total, swap_free):
    """In kB."""
    machine.file("/proc/meminfo", f"MemTotal:       {total} kB\nMemFree:        {free} kB\nMemAvailable:   {available} kB\n"
                                  f"Buffers:            2048 kB\nCached:          {available - free} kB\n"
                                  f"SwapCached:            0 kB\nSwapTotal:      {swap_total} kB\nSwapFree:       {swap_free} kB\n"
                                  "HugePages_Total:       0\nHugepagesize:       2048 kB\n")


def cpuinfo(machine, numbers, lines):
    """lines: processor -> what its paragraph has besides its number."""
    paragraphs = []
    for number in numbers:
        rows = [f"processor\t: {number}"] + [f"{name}\t: {value}" for name, value in lines(number).items()]
        paragraphs.append("\n".join(rows) + "\n")
    machine.file("/proc/cpuinfo", "\n".join(paragraphs) + "\n")


def cpuid(machine, hypervisor=None):
    """The two leaves that tell a hypervisor."""
    machine.answer("cpuid", [0, 0, 0x80000000 if hypervisor else 0, 0], "1:0")
    if hypervisor:
        name = hypervisor.encode().ljust(12, b"\0")
        machine.answer("cpuid", [0x40000001, *struct.unpack("<III", name)], "40000000:0")


def mounts(machine, rows):
    """rows: (device number, root, point, options, type, source, options of the super block)."""
    lines = []
    for index, (number, root, point, options, kind, source, more) in enumerate(rows):
        lines.append(f"{index + 21} 1 {number} {root} {point} {options} shared:{index + 1} - {kind} {source} {more}\n")
    machine.link("/proc/self", "2718")
    machine.file("/proc/2718/mountinfo", "".join(lines))


def swaps(machine, rows):
    """rows: (path, type, size, used) in kB."""
    machine.file("/proc/swaps", "Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n" +
                 "".join(f"{path:<40}{kind}\t{size}\t{used}\t-2\n" for path, kind, size, used in rows))


PSEUDO = [
    ("0:22", "/", "/sys", "rw,nosuid,nodev,noexec,relatime", "sysfs", "sysfs", "rw"),
    ("0:23", "/", "/proc", "rw,nosuid,nodev,noexec,relatime", "proc", "proc", "rw"),
    ("0:5", "/", "/dev", "rw,nosuid,relatime", "devtmpfs", "udev", "rw,size=8012345k,mode=755"),
]

PCI_IDS = """#
#	List of PCI ID's
#
1000  Broadcom / LSI
	00ac  Fusion-MPT SAS34XX
10ec  Realtek Semiconductor Co., Ltd.
	8168  RTL8111/8168/8411 PCI Express Gigabit Ethernet Controller
1002  Advanced Micro Devices, Inc. [AMD/ATI]
1022  Advanced Micro Devices, Inc. [AMD]
	14a4  Genoa/Bergamo Root Complex
	7901  FCH SATA Controller [AHCI mode]
144d  Samsung Electronics Co Ltd
	a80c  NVMe SSD Controller S4LV008[Pascal]
	a825  NVMe SSD Controller PM173X
1a03  ASPEED Technology, Inc.
	2000  ASPEED Graphics Family
8086  Intel Corporation
	1563  Ethernet Controller X550
	1572  Ethernet Controller X710 for 10GbE SFP+
	1521  I350 Gigabit Network Connection
	2922  82801IR/IO/IH (ICH9R/DO/DH) 6 port SATA Controller [AHCI mode]
	29c0  82G33/G31/P35/P31 Express DRAM Controller
	2850  82801HM/HEM (ICH8M/ICH8M-E) IDE Controller
	51f0  Alder Lake-P PCH CNVi WiFi
	a706  Raptor Lake-P/U 4p+8e cores Host Bridge/DRAM Controller
	a7a1  Raptor Lake-P [Iris Xe Graphics]
C 01  Mass storage controller
	01  IDE interface
	06  SATA controller
	07  Serial Attached SCSI controller
	08  Non-Volatile memory controller
		02  NVM Express
C 02  Network controller
	00  Ethernet controller
	80  Network controller
C 03  Display controller
	00  VGA compatible controller
C 06  Bridge
	00  Host bridge
	04  PCI bridge
"""


def pci_ids(machine):
    machine.file("/usr/share/misc/pci.ids", PCI_IDS)
