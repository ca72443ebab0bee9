"""288 logical processors in two sockets, five of them off line."""

import sysfs
import system

CLOCK = 1763724934
CORES = 72  # of a socket
OFFLINE = [5, 200, 285, 286, 287]
ONLINE = [n for n in range(4 * CORES) if n not in OFFLINE]
FLAGS = "fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush dts acpi mmx fxsr sse sse2 ss ht vmx"


def listed(numbers):
    """As the kernel writes sets: 0-4,6."""
    ranges = []
    for number in sorted(numbers):
        if ranges and ranges[-1][1] == number - 1:
            ranges[-1][1] = number
        else:
            ranges.append([number, number])
    return ",".join(f"{first}" if first == last else f"{first}-{last}" for first, last in ranges)


def package(number):
    return number % (2 * CORES) // CORES


def siblings(number):
    """Those of a core that are on line."""
    first = number % (2 * CORES)
    return listed(n for n in (first, first + 2 * CORES) if n in ONLINE)


def processors(machine):
    sockets = [listed(n for n in ONLINE if package(n) == socket) for socket in range(2)]
    sysfs.processors(machine, listed(ONLINE), f"0-{4 * CORES - 1}", {n: (package(n), n % CORES, siblings(n)) for n in ONLINE},
                     [(1, "Data", "48K", siblings), (1, "Instruction", "64K", siblings), (2, "Unified", "2048K", siblings),
                      (3, "Unified", "442368K", lambda n: sockets[package(n)])],
                     {n: package(n) for n in range(4 * CORES)})
    machine.files("/sys/devices/system/cpu", {"offline": listed(OFFLINE)})
    for n in range(1, 4 * CORES):
        machine.files(f"/sys/devices/system/cpu/cpu{n}", {"online": int(n in ONLINE)})
    system.cpuinfo(machine, ONLINE, lambda n: {
        "vendor_id": "GenuineIntel", "cpu family": 6, "model": 173, "model name": "Intel(R) Xeon(R) 6960P", "stepping": 1,
        "microcode": "0x1000341", "cpu MHz": "2700.000", "physical id": package(n), "flags": FLAGS})
    system.cpuid(machine)
    for index in range(2):
        sysfs.node(machine, index, sockets[index], 527961088, "10 21" if index == 0 else "21 10")


def build():
    machine = system.recorded_by_root()
    processors(machine)
    system.memory(machine, 1055922176, 1012345678, 1040000000, 8388604, 8388604)
    machine.names("hpc288", "6.12.41-smp", "#1 SMP Mon Sep 1 10:00:00 UTC 2025", "x86_64")
    system.booted(machine, CLOCK, 604800, "root=/dev/ram0")
    machine.file("/sys/kernel/address_bits", "64\n")
    return machine
