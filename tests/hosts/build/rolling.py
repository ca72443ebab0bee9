"""A virtual machine of a distribution that releases package by package."""

import packages
import system
from machine import Machine


def build():
    machine = Machine()
    machine.answer("userId", 1000)
    machine.answer("pageSize", 4096)
    machine.names("fulmar", "6.11.3-arch1-1", "#1 SMP PREEMPT_DYNAMIC Thu, 10 Oct 2024 20:11:06 +0000", "x86_64")
    system.booted(machine, 1763740800, 7200, "root=/dev/vda2 rw")
    system.cpuid(machine, "KVMKVMKVM")
    system.systemd(machine)
    system.os_release(machine, NAME="Arch Linux", PRETTY_NAME="Arch Linux", ID="arch", BUILD_ID="rolling")
    packages.pacman(machine, [
        ("glibc", "glibc", "2.40+r16+gaa533d58ff-2", 48901324, 1728645120, True, []),
        ("gcc-libs", "gcc", "14.2.1+r134+gab884fffe3fc-1", 139460608, 1728645121, True, []),
        ("linux", "linux", "6.11.3.arch1-1", 142606336, 1728645125, False, []),
        ("make", "make", "4.4.1-2", 1705820, 1700000000, False, ["base-devel"]),
        ("vim", "vim", "9.1.0764-1", 5242880, 1728900000, False, []),
    ])
    return machine
