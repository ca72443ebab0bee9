"""Databases of package managers."""

import os
import sqlite3
import struct
import tempfile

STATUS = "/var/lib/dpkg/status"


def dpkg(machine, rows, automatic=(), native="amd64"):
    """rows: (name, architecture, version, section, installed kB, maintainer, when, further fields); a further field "Status"
    takes the place of an installed package's."""
    paragraphs = []
    for name, architecture, version, section, size, maintainer, when, more in rows:
        fields = {"Package": name, "Status": "install ok installed", "Priority": "optional", "Section": section,
                  "Installed-Size": size, "Maintainer": maintainer, "Architecture": architecture, **more, "Version": version,
                  "Description": f"what {name} is\n which takes\n .\n several lines"}
        paragraphs.append("".join(f"{field}: {value}\n" for field, value in fields.items()))
        file = f"{name}:{architecture}" if more.get("Multi-Arch") == "same" else name
        if when:
            machine.answer("modificationTime", when, f"/var/lib/dpkg/info/{file}.list")
    machine.file(STATUS, "\n".join(paragraphs) + "\n")
    machine.file("/var/lib/apt/extended_states", "".join(
        f"Package: {name}\nArchitecture: {native}\nAuto-Installed: 1\n\n" for name in automatic))


def apk(machine, rows, world):
    """rows: (name, version, installed bytes, origin, maintainer, files)."""
    blocks = []
    for name, version, size, origin, maintainer, files in rows:
        folders = "".join(f"F:{folder}\n" + "".join(f"R:{file}\na:0:0:755\nZ:Q1{'x' * 27}=\n" for file in inside)
                          for folder, inside in files.items())
        blocks.append(f"C:Q1{'a' * 27}=\nP:{name}\nV:{version}\nA:aarch64\nS:{size // 2}\nI:{size}\nT:what {name} is\n"
                      f"U:https://example.org/{name}\nL:MIT\no:{origin}\nm:{maintainer}\nt:1716300000\n{folders}")
    machine.file("/lib/apk/db/installed", "\n".join(blocks) + "\n")
    machine.file("/etc/apk/world", "\n".join(world) + "\n")


def pacman(machine, rows):
    """rows: (name, base, version, bytes, when, whether another package needs it, groups)."""
    local = "/var/lib/pacman/local"
    machine.file(f"{local}/ALPM_DB_VERSION", "9\n")
    for name, base, version, size, when, is_needed, groups in rows:
        fields = {"NAME": [name], "VERSION": [version], "BASE": [base], "DESC": [f"what {name} is"], "ARCH": ["x86_64"],
                  "BUILDDATE": [when - 86400], "INSTALLDATE": [when], "PACKAGER": ["Packager <packager@example.org>"],
                  "SIZE": [size], "GROUPS": groups, "REASON": ["1"] if is_needed else [], "LICENSE": ["GPL"]}
        machine.file(f"{local}/{name}-{version}/desc", "".join(
            f"%{field}%\n" + "".join(f"{value}\n" for value in values) + "\n" for field, values in fields.items() if values))
        machine.file(f"{local}/{name}-{version}/files", f"%FILES%\nusr/\nusr/bin/\nusr/bin/{name}\n\n")


def rpm_header(name, version, release, epoch, architecture, vendor, group, size, when, source):
    """A header as RPM's database has it: counts, entries of tag, type, offset and count, data."""
    fields = [(1000, name), (1001, version), (1002, release), (1003, epoch), (1004, f"what {name} is"), (1008, when),
              (1009, size), (1011, vendor), (1016, group), (1022, architecture), (1044, source)]
    entries, data = b"", b""
    for tag, value in fields:
        if isinstance(value, int):
            data += bytes(-len(data) % 4)
        if value is not None:
            entries += struct.pack(">IIII", tag, 4 if isinstance(value, int) else 6, len(data), 1)
            data += struct.pack(">I", value) if isinstance(value, int) else value.encode() + b"\0"
    return struct.pack(">II", len(entries) // 16, len(data)) + entries + data


def rpm(machine, rows):
    """rows: the arguments of rpm_header()."""
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "rpmdb.sqlite")
        database = sqlite3.connect(file)
        database.execute("PRAGMA journal_mode = WAL")
        database.execute("CREATE TABLE Packages (hnum INTEGER PRIMARY KEY AUTOINCREMENT, blob BLOB NOT NULL)")
        database.executemany("INSERT INTO Packages (blob) VALUES (?)", [(rpm_header(*row),) for row in rows])
        database.commit()
        database.close()
        with open(file, "rb") as content:
            machine.file("/usr/lib/sysimage/rpm/rpmdb.sqlite", content.read())
    machine.file("/usr/lib/sysimage/rpm/rpmdb.sqlite-wal", "")
    machine.link_to("/var/lib/rpm", "/usr/lib/sysimage/rpm")


def debian_desktop(machine):
    """A few packages of each kind that dpkg's database knows."""
    libc = {"Multi-Arch": "same", "Source": "glibc"}
    team = "Debian GNU Libc <debian-glibc@lists.debian.org>"
    first = 1690000100
    dpkg(machine, [
        ("bash", "amd64", "5.2.15-2+b2", "shells", 7164, "Matthias <doko@debian.org>", first,
         {"Multi-Arch": "foreign", "Essential": "yes", "Source": "bash (5.2.15-2)"}),
        ("base-files", "amd64", "12.4+deb12u7", "admin", 350, "Santiago <sanvila@debian.org>", first, {"Essential": "yes"}),
        ("libc6", "amd64", "2.36-9+deb12u8", "libs", 12985, team, first + 5, libc),
        ("libc6", "i386", "2.36-9+deb12u8", "libs", 11907, team, 1701234567, libc),
        ("libreoffice", "amd64", "4:7.4.7-1+deb12u4", "metapackages", 98, "Office <office@debian.org>", None, {}),
        ("linux-image-6.1.0-26-amd64", "amd64", "6.1.112-1", "kernel", 398762, "Kernel <kernel@debian.org>", 1728000000,
         {"Source": "linux-signed-amd64 (6.1.112+1)", "Status": "hold ok installed"}),
        ("linux-image-6.1.0-18-amd64", "amd64", "6.1.76-1", "kernel", 398001, "Kernel <kernel@debian.org>", 1706000000,
         {"Status": "deinstall ok config-files"}),
        ("man-db", "amd64", "2.11.2-2", "doc", 2967, "Colin <cjwatson@debian.org>", first,
         {"Status": "install ok triggers-pending"}),
        ("plocate", "amd64", "1.1.18-1", "utils", 512, "S <s@debian.org>", first, {"Status": "install reinstreq half-installed"}),
        ("teams-for-linux", "amd64", "1.4.10", "Internet", 280000, "", 1727000000, {"Conffiles": "\n /etc/x 0123\n /etc/y 4567"}),
        ("tzdata", "all", "2024a-0+deb12u1", "localization", 2489, "GNU Libc <debian-glibc@lists.debian.org>", first,
         {"Multi-Arch": "foreign"}),
    ], automatic=["libc6", "tzdata", "man-db"])
