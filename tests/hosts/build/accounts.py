"""Accounts, services and live patches."""

HASH = "$y$j9T$0123456789abcdef$0123456789abcdefghijklmnopqrstuvwxyz"


def accounts(machine, rows):
    """rows: (name, user, group, full name, home, shell, password field of shadow, ages and expiry there)."""
    machine.file("/etc/passwd", "".join(f"{name}:x:{user}:{group}:{full}:{home}:{shell}\n"
                                        for name, user, group, full, home, shell, _, _ in rows))
    machine.file("/etc/shadow", "".join(f"{row[0]}:{row[6]}:{row[7]}:\n" for row in rows))


def debian_accounts(machine):
    accounts(machine, [
        ("root", 0, 0, "root", "/root", "/bin/bash", "!", "19561:0:99999:7::"),
        ("daemon", 1, 1, "daemon", "/usr/sbin", "/usr/sbin/nologin", "*", "19561:0:99999:7::"),
        ("ada", 1000, 1000, "Ada Lovelace,,,", "/home/ada", "/bin/bash", HASH, "19600:0:180:14:30:"),
        ("guest", 1001, 1001, "", "/home/guest", "/bin/bash", "", "19600:0:99999:7::"),
        ("trainee", 1002, 1002, "Summer 2025", "/home/trainee", "/bin/bash", HASH, "19600:0:99999:7::20340"),
        ("sealed", 1003, 1003, "", "/home/sealed", "/bin/bash", "!" + HASH, "19600:9:5:7::"),
    ])


LIB = "/usr/lib/systemd/system"


def unit(machine, name, description, lines, wanted=None, folder=LIB):
    machine.file(f"{folder}/{name}", f"[Unit]\nDescription={description}\n\n[Service]\n" + "\n".join(lines) + "\n" +
                 (f"\n[Install]\nWantedBy={wanted}\n" if wanted else ""))


def enable(machine, name, target, file=None):
    machine.link(f"/etc/systemd/system/{target}.wants/{name}", f"{LIB}/{file or name}")


def units(machine):
    """Unit files of every state, and who runs of them, as the manager says when it is asked."""
    unit(machine, "ssh.service", "OpenBSD Secure Shell server", ["Type=notify", "ExecStartPre=/usr/sbin/sshd -t",
                                                                 "ExecStart=/usr/sbin/sshd -D $SSHD_OPTS"], "multi-user.target")
    enable(machine, "ssh.service", "multi-user.target")
    machine.link("/etc/systemd/system/sshd.service", f"{LIB}/ssh.service")
    unit(machine, "getty@.service", "Getty on %I", ["Type=idle", "ExecStart=-/sbin/agetty -o '-p -- \\\\u' --noclear - $TERM"],
         "getty.target")
    enable(machine, "getty@tty1.service", "getty.target", "getty@.service")
    unit(machine, "rsync.service", "fast remote file copy program daemon", ["ExecStart=/usr/bin/rsync --daemon --no-detach"],
         "multi-user.target")
    unit(machine, "systemd-timedated.service", "Time & Date Service",
         ["BusName=org.freedesktop.timedate1", "ExecStart=/lib/systemd/systemd-timedated"])
    unit(machine, "x11-common.service", "masked by its package", ["ExecStart=/bin/false"])
    machine.link("/etc/systemd/system/x11-common.service", "/dev/null")
    unit(machine, "exporter.service", "Metrics of this host",
         ["User=prom", "ExecStart=/opt/exporter --url https://me:pw@example.org --token=abc"], "multi-user.target",
         "/etc/systemd/system")
    machine.link("/etc/systemd/system/multi-user.target.wants/exporter.service", "../exporter.service")
    machine.file("/etc/systemd/system/exporter.service.d/10-user.conf", "[Service]\nUser=exporter\n")


def manager(machine):
    def loaded(name, description, state, sub, file, kind, command, user=""):
        return {"name": name, "description": description, "activeState": state, "subState": sub, "unitFileState": file,
                "type": kind, "commandLine": command, "user": user}
    machine.answer("services", [
        loaded("ssh.service", "OpenBSD Secure Shell server", "active", "running", "enabled", "notify", "/usr/sbin/sshd -D"),
        loaded("getty@tty1.service", "Getty on tty1", "active", "running", "enabled", "idle",
               "/sbin/agetty -o \"-p -- \\u\" --noclear - linux"),
        loaded("exporter.service", "Metrics of this host", "failed", "failed", "enabled", "simple",
               "/opt/exporter --url https://***@example.org --token=***", "exporter"),
        loaded("user@1000.service", "User Manager for UID 1000", "active", "running", "static", "notify",
               "/lib/systemd/systemd --user", "1000"),
        loaded("systemd-fsck@dev-disk-by\\x2duuid-1.service", "File System Check on /dev/disk/by-uuid/1", "inactive", "dead",
               "static", "oneshot", "/lib/systemd/systemd-fsck /dev/disk/by-uuid/1"),
    ])


def scripts(machine):
    def script(name, provides, short, long):
        machine.file(f"/etc/init.d/{name}", f"#!/bin/sh\n### BEGIN INIT INFO\n# Provides:          {provides}\n"
                                            f"# Default-Start:     2 3 4 5\n# Short-Description: {short}\n"
                                            f"# Description:       {long}\n### END INIT INFO\nexit 0\n")
    script("ssh", "sshd", "OpenBSD Secure Shell server", "serves shells")
    script("cron", "cron", "Regular background program processing daemon", "cron is a standard program")
    script("bluetooth", "bluetooth", "Start bluetooth daemons", "")
    machine.file("/etc/init.d/README", "Configuration of System V init under Debian\n")
    for level in range(2, 6):
        machine.link(f"/etc/rc{level}.d/S02ssh", "../init.d/ssh")
        machine.link(f"/etc/rc{level}.d/S03cron", "../init.d/cron")
    machine.link("/etc/rc1.d/K01bluetooth", "../init.d/bluetooth")


def livepatch(machine):
    patch = "/sys/kernel/livepatch/lkp_Ubuntu_6_8_0_45_45_generic_107"
    machine.files(patch, {"enabled": 1, "transition": 0})
    for place in ("vmlinux/tcp_disconnect,1", "vmlinux/do_prlimit,1", "nf_tables/nft_verdict_init,1"):
        machine.folder(f"{patch}/{place}")
    machine.file(f"{patch}/vmlinux/patched", "1\n")
