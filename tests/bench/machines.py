"""Machines of any size for the benchmarks, in the form of recorded machines (tests/fakemachine/README.md)."""

import os

PCI_IDS = [(0x8086, 0x1229), (0x8086, 0x7110), (0x1022, 0x2000), (0x10DE, 0x0028), (0x1234, 0x5678)]

CPU = """processor\t: {number}
vendor_id\t: GenuineIntel
cpu family\t: 15
model\t\t: 2
model name\t: Intel(R) Xeon(TM) CPU 2.80GHz
stepping\t: 9
cpu MHz\t\t: 2791.096
cache size\t: 512 KB
physical id\t: {package}
siblings\t: 2
fdiv_bug\t: no
hlt_bug\t\t: no
f00f_bug\t: no
coma_bug\t: no
fpu\t\t: yes
fpu_exception\t: yes
cpuid level\t: 2
wp\t\t: yes
flags\t\t: fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush dts acpi mmx fxsr sse sse2 ss ht tm
bogomips\t: 5570.56

"""

PCI = """  Bus {bus:2}, device {device:3}, function  0:
    Class 0200: PCI device {vendor:04x}:{id:04x} (rev 8).
      IRQ 11.
      Master Capable.  Latency=64.
      I/O at 0x1000 [0x103f].
"""


def write(machine, name, text):
    path = os.path.join(machine, name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def memory_devices(machine, count):
    device = f"""struct type 17 length 27 repeat {count} {{
    word 0x1000 word 0xFFFE word 72 word 64 word 512 byte 9 byte 1 byte 1 byte 2 byte 15 word 0x80 word 266
    strings "DIMM 1" "BANK 1"
}}
"""
    write(machine, "memory.txt", "structures at 0xE0010\n" + (device if count else "") +
          "struct type 127 { }\nsmbios-entry at 0xF0000 table 0xE0010 version 2.3 bcd 0x23\n")


def mounts(machine, count):
    write(machine, "root/etc/mtab", "".join(f"/dev/mapper/volume{i} /srv ext3 rw 0 0\n" for i in range(count)))
    write(machine, "machine.conf", "statvfs /srv bsize 4096 blocks 1000000 bfree 500000\n")


def pci_devices(machine, count):
    entries = ""
    for i in range(count):
        vendor, device = PCI_IDS[i % len(PCI_IDS)]
        entries += PCI.format(bus=i // 32, device=i % 32, vendor=vendor, id=device)
    write(machine, "root/proc/pci", "PCI devices found:\n" + entries)


def interfaces(machine, count):
    write(machine, "root/etc/resolv.conf", "nameserver 10.0.0.53\nsearch example.net\n")
    write(machine, "machine.conf", "network\n" + "".join(
        f"interface eth{i} addr 10.1.{i}.1 mask 255.255.255.0 mac 00:0C:29:AB:CD:{i:02X}\nhost 10.1.{i}.1 host{i}.example.net\n"
        for i in range(count)))


def processors(machine, count):
    write(machine, "root/proc/cpuinfo", "".join(CPU.format(number=i, package=i // 2) for i in range(count)))
    write(machine, "machine.conf", f"nprocs {max(count, 1)}\n")


# What grows: how such a machine is made, and of how many rows.
GROWING = {
    "memory devices": (memory_devices, [10, 100, 1000]),
    "mounts": (mounts, [100, 1000, 10000]),
    "PCI devices": (pci_devices, [10, 100, 1000, 5000]),
    "interfaces": (interfaces, [1, 8, 62]),
    "processors in /proc/cpuinfo": (processors, [1, 16, 128, 1024]),
}
