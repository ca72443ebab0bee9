"""A virtual server of a distribution of RPM packages, with two kernels side by side."""

import accounts
import packages
import system
from machine import Machine

VENDOR = "Enterprise Builders"


def build():
    machine = Machine()
    machine.answer("userId", 0)
    machine.answer("pageSize", 4096)
    machine.names("app03", "5.14.0-503.el9.x86_64", "#1 SMP PREEMPT_DYNAMIC Tue Nov 5 10:00:00 UTC 2024", "x86_64")
    system.booted(machine, 1763740800, 864000, "BOOT_IMAGE=(hd0,gpt2)/vmlinuz-5.14.0-503.el9.x86_64 root=/dev/vda3 ro")
    system.cpuid(machine, "KVMKVMKVM")
    system.systemd(machine, "multi-user.target")
    system.os_release(machine, NAME="Enterprise Linux", PRETTY_NAME="Enterprise Linux 9.5", ID="enterprise", VERSION_ID="9.5")
    packages.rpm(machine, [
        ("bash", "5.1.8", "9.el9", None, "x86_64", VENDOR, "Unspecified", 7738634, 1731000000, "bash-5.1.8-9.el9.src.rpm"),
        ("openssl-libs", "3.2.2", "6.el9", 1, "x86_64", VENDOR, "Unspecified", 6560421, 1731000001, "openssl-3.2.2-6.el9.src.rpm"),
        ("kernel-core", "5.14.0", "427.el9", None, "x86_64", VENDOR, "Unspecified", 69921321, 1715000000,
         "kernel-5.14.0-427.el9.src.rpm"),
        ("kernel-core", "5.14.0", "503.el9", None, "x86_64", VENDOR, "Unspecified", 70112233, 1731000009,
         "kernel-5.14.0-503.el9.src.rpm"),
        ("tzdata", "2024b", "2.el9", None, "noarch", VENDOR, "Unspecified", 1761234, 1731000002, "tzdata-2024b-2.el9.src.rpm"),
        ("gpg-pubkey", "fd431d51", "4ae0493b", None, None, None, "Public Keys", 0, 1731000010, None),
    ])
    accounts.units(machine)
    return machine
