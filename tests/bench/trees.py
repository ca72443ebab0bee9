"""Copies of machines of any size for the benchmarks: trees of plain files and links, as scan --root takes them."""

import os


def write(tree, name, text):
    path = tree + name
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def link(tree, name, target):
    path = tree + name
    os.makedirs(os.path.dirname(path), exist_ok=True)
    os.symlink(target, path)


def mounts(tree, count):
    text = "20 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
    for i in range(count):
        text += f"{i + 30} 20 8:1 /srv/{i} /mnt/folder{i} rw,noatime shared:1 - ext4 /dev/sda1 rw,errors=remount-ro\n"
    write(tree, "/proc/self/mountinfo", text)


CPUINFO = """processor\t: {number}
vendor_id\t: GenuineIntel
cpu family\t: 6
model\t\t: 143
model name\t: Intel(R) Xeon(R) Platinum 8480+
stepping\t: 8
microcode\t: 0x2b000461
cpu MHz\t\t: 2000.000
cache size\t: 107520 KB
physical id\t: {package}
flags\t\t: """ + " ".join(f"flag{i}" for i in range(130)) + """

"""


def processors(tree, count):
    """A package of 64 processors each; the rows are few, what is read grows."""
    folder = "/sys/devices/system/cpu/"
    for name in ("online", "present", "possible"):
        write(tree, folder + name, f"0-{max(count, 1) - 1}\n")
    for i in range(count):
        here, first = f"{folder}cpu{i}/", i - i % 2
        write(tree, here + "topology/physical_package_id", f"{i // 64}\n")
        write(tree, here + "topology/core_cpus_list", f"{first}-{first + 1}\n")
        for index, (level, kind, size) in enumerate(((1, "Data", "48K"), (1, "Instruction", "32K"), (2, "Unified", "2048K"),
                                                     (3, "Unified", "107520K"))):
            cache = f"{here}cache/index{index}/"
            first_of, last_of = (i // 64 * 64, i // 64 * 64 + 63) if level == 3 else (first, first + 1)
            write(tree, cache + "level", f"{level}\n")
            write(tree, cache + "type", kind + "\n")
            write(tree, cache + "size", size + "\n")
            write(tree, cache + "shared_cpu_list", f"{first_of}-{last_of}\n")
    write(tree, "/proc/cpuinfo", "".join(CPUINFO.format(number=i, package=i // 64) for i in range(count)))


def disks(tree, count):
    os.makedirs(tree + "/sys/block", exist_ok=True)
    for i in range(count):
        unit = f"/sys/devices/pci0000:00/0000:00:1f.2/host{i}/target{i}:0:0/{i}:0:0:0/"
        disk = f"{unit}block/sd{i}/"
        for name, text in (("model", "A DISK MODEL"), ("vendor", "ATA"), ("rev", "0001"), ("type", "0")):
            write(tree, unit + name, text + "\n")
        for name, text in (("size", "1953525168"), ("removable", "0"), ("ro", "0"), ("dev", f"8:{16 * i}"),
                           ("queue/rotational", "0"), ("queue/logical_block_size", "512")):
            write(tree, disk + name, text + "\n")
        link(tree, disk + "device", f"../../../{i}:0:0:0")
        link(tree, f"/sys/block/sd{i}", f"../devices/pci0000:00/0000:00:1f.2/host{i}/target{i}:0:0/{i}:0:0:0/block/sd{i}")


def pci_functions(tree, count):
    os.makedirs(tree + "/sys/bus/pci/devices", exist_ok=True)
    vendors = ""
    for i in range(0, max(count, 1), 10):
        vendors += f"{i // 10 + 0x1000:04x}  Vendor {i // 10}\n" + "".join(f"\t{j:04x}  Device {j}\n" for j in range(10))
    write(tree, "/usr/share/misc/pci.ids", vendors + "C 02  Network controller\n\t00  Ethernet controller\n")
    for i in range(count):
        slot = f"0000:{i // 256 % 256:02x}:{i // 8 % 32:02x}.{i % 8}"
        here = f"/sys/devices/pci0000:00/{slot}/"
        for name, text in (("vendor", f"0x{i // 10 + 0x1000:04x}"), ("device", f"0x{i % 10:04x}"), ("class", "0x020000"),
                           ("revision", "0x01"), ("subsystem_vendor", "0x8086"), ("subsystem_device", "0x0001")):
            write(tree, here + name, text + "\n")
        link(tree, f"/sys/bus/pci/devices/{slot}", f"../../../devices/pci0000:00/{slot}")


def packages(tree, count):
    """As Debian's own look: 1 KB a package, most of it text that nobody asks for."""
    paragraph = """Package: package-{i}
Status: install ok installed
Priority: optional
Section: libs
Installed-Size: {i}
Maintainer: The Team That Does It <team-that-does-it@lists.example.org>
Architecture: amd64
Source: source-{source} (1.0-{source})
Version: 1:1.{i}.0-{source}+deb12u1
Depends: libc6 (>= 2.34), libgcc-s1 (>= 3.0), libstdc++6 (>= 11), zlib1g (>= 1:1.1.4), package-0 (>= 1:1.0~)
Conffiles:
 /etc/package-{i}/one.conf 0123456789abcdef0123456789abcdef
 /etc/package-{i}/two.conf fedcba9876543210fedcba9876543210
Description: does one thing of many
{text}Homepage: https://www.example.org/package-{i}

"""
    text = " This line says at some length what the package is for, and who may want it.\n" * 5
    write(tree, "/var/lib/dpkg/status", "".join(paragraph.format(i=i, source=i // 3, text=text) for i in range(count)))
    write(tree, "/var/lib/dpkg/info/format", "1\n")
    write(tree, "/var/lib/apt/extended_states", "".join(
        f"Package: package-{i}\nArchitecture: amd64\nAuto-Installed: 1\n\n" for i in range(0, count, 2)))


# What grows: how such a tree is made, at which two sizes, and the group whose rows these are.
GROWING = {
    "mounts": (mounts, [1000, 10000], "Partition"),
    "processors": (processors, [512, 4096], "Processor"),
    "disks": (disks, [200, 2000], "Storage"),
    "PCI functions": (pci_functions, [500, 5000], "PCI Device"),
    "packages": (packages, [500, 5000], "Software Packages"),
}
