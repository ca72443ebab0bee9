"""A container of a web server: a handful of packages and accounts, and none of the machine's hardware."""

import accounts
import packages
import system
from machine import Machine

BUSYBOX = "S G <sg@example.org>"


def build():
    machine = Machine()
    machine.answer("userId", 101)
    machine.answer("pageSize", 4096)
    machine.names("7c1f0a9be2d4", "6.6.52-0-virt", "#1-Alpine SMP PREEMPT_DYNAMIC 2024-09-20 10:00:00", "aarch64")
    machine.answer("clock", 1763740800)
    machine.file("/.dockerenv", "")
    machine.file("/proc/1/comm", "nginx\n")
    system.os_release(machine, NAME="Alpine Linux", ID="alpine", VERSION_ID="3.20.3", PRETTY_NAME="Alpine Linux v3.20")
    packages.apk(machine, [
        ("alpine-baselayout", "3.6.5-r0", 327680, "alpine-baselayout", "N C <ncopa@example.org>",
         {"": [], "etc": ["motd"]}),
        ("busybox", "1.36.1-r29", 952320, "busybox", BUSYBOX, {"bin": ["busybox"], "etc": ["securetty"]}),
        ("ssl_client", "1.36.1-r29", 28672, "busybox", BUSYBOX, {"usr/bin": ["ssl_client"]}),
        ("musl", "1.2.5-r0", 667648, "musl", "T H <th@example.org>", {"lib": ["ld-musl-aarch64.so.1"]}),
        ("nginx", "1.26.2-r1", 1265664, "nginx", "N <n@example.org>", {"usr/sbin": ["nginx"]}),
        (".nginx-rundeps", "20240912.214817", 0, ".nginx-rundeps", "", {}),
    ], world=["alpine-baselayout", "busybox", "nginx=1.26.2-r1", ".nginx-rundeps=20240912.214817"])
    accounts.accounts(machine, [
        ("root", 0, 0, "root", "/root", "/bin/sh", "*", ":0::::"),
        ("nginx", 101, 101, "nginx", "/var/lib/nginx", "/sbin/nologin", "!", "19977:0:99999:7::"),
    ])
    return machine
