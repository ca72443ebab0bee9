#!/usr/bin/env python3
"""Ordinary tools and invhwctl say the same of one machine, fact by fact.

usage: peers_test.py PROGRAM live      this machine as it is
       peers_test.py PROGRAM private   with more to compare: links, routes, mounts and loop devices, in namespaces of its own
       peers_test.py PROGRAM firmware  a firmware table made here, as dmidecode reads it from a dump
       peers_test.py PROGRAM monitors  monitors made here, as edid-decode reads their blocks
       peers_test.py PROGRAM rpm       a database of packages that rpm makes here

A machine changes while it is looked at: every tool is asked before and after the scan, and only what both times was the same
is compared. What cannot be compared here is told, and so is how much was.
"""

import collections
import ipaddress
import json
import os
import re
import shlex
import shutil
import struct
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "hosts", "build"))
import edid  # noqa: E402  (which the recorded hosts' monitors are made with)

SKIP = 77
failures = []


ENVIRONMENT = dict(os.environ, LC_ALL="C", PATH=os.environ.get("PATH", "/usr/bin:/bin") + ":/usr/sbin:/sbin")


def has(tool):
    if shutil.which(tool, path=ENVIRONMENT["PATH"]) is None:
        print(f"{tool}: not installed")
        return False
    return True


def run(*words, check=True):
    result = subprocess.run(words, capture_output=True, text=True, check=False, env=ENVIRONMENT)
    if check and result.returncode != 0:
        raise OSError(f"{' '.join(words)}: {result.stderr.strip() or result.returncode}")
    return result.stdout


def scan(*arguments):
    return json.loads(run(PROGRAM, "scan", "--format", "json", *arguments))["groups"]


def rows(report, group):
    return report.get(group, [])


# Facts are a dictionary: (thing, fact) -> value. A value of None is one that a side does not tell.


def put(facts, thing, **values):
    for name, value in values.items():
        facts[(thing, name)] = value


def differences(ask, said):
    """What the report says otherwise of the facts that were the same before and after it; and how many were."""
    before = ask()
    facts = said(scan(*SCAN))
    after = ask()
    steady = {key: value for key, value in before.items() if value is not None and after.get(key) == value}
    return {key: (value, facts.get(key)) for key, value in steady.items() if facts.get(key) != value}, len(steady)


def compare(tool, ask, said):
    """The report has every fact that the tool has, with the same value. A number that comes and goes between two looks (free
    bytes of a busy disk) is different now and then; what is wrong is so every time."""
    wrong, compared = differences(ask, said)
    for _ in range(4):
        if wrong:
            again, _ = differences(ask, said)
            wrong = {key: value for key, value in wrong.items() if key in again}
    for key, (theirs, ours) in wrong.items():
        failures.append(f"{tool}: {key}: it says {theirs!r}, the report {ours!r}")
    return compared


SCAN = []  # further arguments of the scan


# lscpu


def numbers_of_list(text):
    numbers = []
    for part in filter(None, text.split(",")):
        first, _, last = part.partition("-")
        numbers.extend(range(int(first), int(last or first) + 1))
    return numbers


def lscpu():
    fields = {}

    def collect(entries):
        for entry in entries:
            fields[entry["field"].rstrip(":")] = entry["data"]
            collect(entry.get("children", []))

    collect(json.loads(run("lscpu", "-J", "-B"))["lscpu"])
    facts = {}
    whole = lambda name: int(fields[name]) if fields.get(name, "-").isdigit() else None
    put(facts, "processors", maker=fields.get("Vendor ID"), model=fields.get("Model name"), family=whole("CPU family"),
        number=whole("Model"), stepping=whole("Stepping"), packages=whole("Socket(s)"), flags=fields.get("Flags"),
        hypervisor=fields.get("Hypervisor vendor"),
        online=len(numbers_of_list(fields.get("On-line CPU(s) list", ""))) or None)
    if "Core(s) per socket" in fields and "Socket(s)" in fields:
        put(facts, "processors", cores=whole("Core(s) per socket") * whole("Socket(s)"))
    for cache, name in (("L1d", "L1d cache"), ("L1i", "L1i cache"), ("L2", "L2 cache"), ("L3", "L3 cache")):
        size = re.match(r"\d+", fields.get(name, ""))
        put(facts, "caches", **{cache: int(size.group()) if size else None})
    for name, value in fields.items():
        if node := re.fullmatch(r"NUMA node(\d+) CPU\(s\)", name):
            put(facts, f"node {node.group(1)}", processors=numbers_of_list(value))
        elif name.startswith("Vulnerability "):
            put(facts, name.removeprefix("Vulnerability ").lower(), state=re.sub("[:;]", "", value))
    return facts


def lscpu_said(report):
    facts = {}
    packages = rows(report, "Processor")
    first = packages[0] if packages else {}
    put(facts, "processors", maker=first.get("Manufacturer"), model=first.get("ModelName"), family=first.get("ChipFamily"),
        number=first.get("ChipModel"), stepping=first.get("ChipStepping"), packages=len(packages), flags=first.get("Flags"),
        hypervisor=rows(report, "OperatingSystem")[0].get("Virtualization"),
        online=sum(row.get("OnlineThreads", 0) for row in packages), cores=sum(row.get("Cores", 0) for row in packages))
    for cache in ("L1d", "L1i", "L2", "L3"):
        put(facts, "caches", **{cache: 1024 * sum(row.get(cache + "Cache", 0) for row in packages)})
    for row in rows(report, "NUMANode"):
        put(facts, f"node {row['Node']}", processors=numbers_of_list(row.get("Processors", "")))
    for row in rows(report, "ProcessorVulnerability"):
        state = re.sub("[:;]", "", row.get("State", ""))  # which the tool writes otherwise
        put(facts, row["Name"].replace("_", " ").lower(), state=state)
    return facts


def lscpu_lines():
    """Logical processors, one a line."""
    facts = {}
    online = [cpu for cpu in json.loads(run("lscpu", "-J", "-e=CPU,SOCKET,CORE,NODE,ONLINE"))["cpus"]
              if cpu.get("online") in (True, "yes")]
    by_socket = collections.defaultdict(list)
    for cpu in online:
        by_socket[str(cpu.get("socket"))].append(cpu)
    for socket, cpus in by_socket.items():
        put(facts, f"package {socket}", threads=len(cpus), cores=len({cpu.get("core") for cpu in cpus}),
            nodes=sorted({int(cpu["node"]) for cpu in cpus if str(cpu.get("node", "-")).isdigit()}))
    return facts


def lscpu_lines_said(report):
    facts = {}
    for place, row in enumerate(rows(report, "Processor")):
        put(facts, f"package {row.get('CPUNumber', place)}", threads=row.get("OnlineThreads"), cores=row.get("Cores"),
            nodes=numbers_of_list(row.get("NUMANodes", "")))
    return facts


# lsblk


def truth(value):
    return None if value is None else value in (True, 1, "1")


def trimmed(value):
    return (value or "").strip() or None


def blkid(device):
    """What stands on a device that may be read: lsblk tells it only where udev has a record."""
    lines = run("blkid", "-p", "-o", "export", device, check=False).splitlines() if has("blkid") else []
    return {name: value.replace("\\ ", " ") for name, _, value in (line.partition("=") for line in lines)}


LOGICAL = {"loop", "lvm", "crypt", "dm", "mpath"}


def lsblk():
    facts = {}

    def collect(device):
        name, kind = "/dev/" + device["kname"], device["type"]
        size = int(device["size"])
        if size == 0:
            pass  # nothing is set up there
        elif kind in LOGICAL or kind.startswith("raid") or device["kname"].startswith("zram"):
            put(facts, name, kind="logical", size=size)
        elif kind == "part":
            content = blkid(name)
            put(facts, name, kind="partition", size=size, uuid=device.get("partuuid"), label=device.get("partlabel"),
                fs=device.get("fstype") or content.get("TYPE"), fs_uuid=device.get("uuid") or content.get("UUID"),
                fs_label=device.get("label") or content.get("LABEL"),
                parent="/dev/" + device["pkname"] if device.get("pkname") else None)
        elif kind in ("disk", "rom"):
            table = {"gpt": "GPT", "dos": "MBR"}.get(device.get("pttype"))
            put(facts, name, kind="drive", size=size, model=trimmed(device.get("model")), serial=trimmed(device.get("serial")),
                revision=trimmed(device.get("rev")), read_only=truth(device.get("ro")), removable=truth(device.get("rm")),
                rotational=truth(device.get("rota")), logical=int(device["log-sec"]), physical=int(device["phy-sec"]),
                transport=device.get("tran"), wwn=device.get("wwn"), discard=int(device.get("disc-max") or 0) > 0,
                zoned=device.get("zoned"), table=table)
        for child in device.get("children", []):
            collect(child)

    for top in json.loads(run("lsblk", "-J", "-b", "-O"))["blockdevices"]:
        collect(top)
    return facts


def lsblk_said(report):
    facts = {}
    for row in rows(report, "Storage"):
        put(facts, row["DeviceName"], kind="drive", size=row.get("SizeBytes"), model=row.get("Model"),
            serial=row.get("SerialNumber"), revision=row.get("FirmwareRevision"), read_only=row.get("ReadOnly"),
            removable=row.get("Removable"), rotational=row.get("Rotational"), logical=row.get("LogicalSectorSize"),
            physical=row.get("PhysicalSectorSize"), transport=row.get("Transport", "").lower(), wwn=row.get("WWN"),
            discard=row.get("Discard"), zoned=row.get("Zoned"), table=row.get("PartitionTable"))
    for row in rows(report, "DiskPartition"):
        put(facts, row["DeviceName"], kind="partition", size=row.get("SizeBytes"), uuid=row.get("PartitionUUID"),
            label=row.get("PartitionLabel"), fs=row.get("FSTypeName"), fs_uuid=row.get("FSUUID"), fs_label=row.get("FSLabel"),
            parent=row.get("ParentDevice"))
    for row in rows(report, "LogicalDrive"):
        put(facts, row["DeviceName"], kind="logical", size=row.get("SizeBytes"))
    return facts


# ip


def ip_addresses():
    facts = {}
    for link in json.loads(run("ip", "-j", "addr")):
        for address in link.get("addr_info", []):
            if link["ifname"] == "lo" or "local" not in address:
                continue
            key = f"{link['ifname']} {address['local']}/{address['prefixlen']}"
            put(facts, key, family={"inet": "IPv4", "inet6": "IPv6"}[address["family"]], scope=address["scope"],
                dynamic=address.get("dynamic", False))
    put(facts, "addresses", keys=sorted({thing for thing, _ in facts}))
    return facts


def ip_addresses_said(report):
    facts = {}
    for row in rows(report, "IPAddress"):
        put(facts, f"{row['Interface']} {row['Address']}/{row['PrefixLength']}", family=row.get("AddressFamily"),
            scope=row.get("Scope"), dynamic=row.get("Dynamic"))
    put(facts, "addresses", keys=sorted({thing for thing, _ in facts}))
    return facts


KINDS = {"bridge": "Bridge", "bond": "Bond", "vlan": "VLAN", "veth": "Virtual", "dummy": "Virtual", "ifb": "Virtual",
         "macvlan": "Virtual", "tun": "Virtual", "vxlan": "Tunnel", "gre": "Tunnel", "sit": "Tunnel", "ipip": "Tunnel"}


def ip_links():
    facts = {}
    for link in json.loads(run("ip", "-j", "-d", "link")):
        if "LOOPBACK" in link["flags"]:
            continue
        kind = link.get("linkinfo", {}).get("info_kind")
        address = link.get("address") if link.get("link_type") == "ether" else None
        put(facts, link["ifname"], mtu=link["mtu"], state=link["operstate"].lower().replace("lowerlayerdown", "lower layer down"),
            address=address, permanent=link.get("permaddr"), master=link.get("master"), kind=KINDS.get(kind))
    put(facts, "links", names=sorted({thing for thing, _ in facts}))
    return facts


def ip_links_said(report):
    facts = {}
    for row in rows(report, "NetworkAdapter"):
        put(facts, row["Interface"], mtu=row.get("MTU"), state=row.get("LinkState"), address=row.get("CurrentAddress"),
            permanent=row.get("PermanentAddress"), master=row.get("Master"), kind=row.get("Kind"))
    put(facts, "links", names=sorted({thing for thing, _ in facts}))
    return facts


LOCAL_TABLE, MAIN_TABLE = 255, 254


def ip_routes():
    """All routes but those of the table local and those that were learnt of one destination."""
    found = []
    for family, everything, most in (("-4", "0.0.0.0", 32), ("-6", "::", 128)):
        for route in json.loads(run("ip", "-N", "-j", family, "route", "show", "table", "all") or "[]"):
            table = int(route.get("table", MAIN_TABLE))
            if table == LOCAL_TABLE or "cache" in route.get("flags", []):
                continue
            to = everything + "/0" if route["dst"] == "default" else route["dst"]
            address, _, length = to.partition("/")
            for hop in route.get("nexthops", [route]):
                gateway = hop.get("gateway", hop.get("via", {}).get("host", ""))
                found.append([table, address, int(length or most), gateway, hop.get("dev", ""), route.get("metric", 0)])
    return {("routes", "all"): sorted(found)}


def ip_routes_said(report):
    found = [[row["Table"], row["Destination"], row["PrefixLength"], row.get("Gateway", ""), row.get("Interface", ""),
              row.get("Metric", 0)] for row in rows(report, "Route")]
    return {("routes", "all"): sorted(found)}


# lspci


def lspci():
    facts = {}
    for line, named in zip(run("lspci", "-Dmmn").splitlines(), run("lspci", "-Dmm").splitlines()):
        words = shlex.split(line)
        names = [word for word in shlex.split(named) if not re.fullmatch("-[rp][0-9a-f]{2}", word)]
        plain = [word for word in words if not re.fullmatch("-[rp][0-9a-f]{2}", word)]
        option = {word[1]: int(word[2:], 16) for word in words if re.fullmatch("-[rp][0-9a-f]{2}", word)}
        slot, kind, vendor, device, sub_vendor, sub_device = plain[:6]
        number = lambda text: int(text, 16) if text else 0
        put(facts, slot, kind=number(kind) << 8 | option.get("p", 0), vendor=number(vendor), device=number(device),
            revision=f"0x{option.get('r', 0):02x}", sub_vendor=number(sub_vendor), sub_device=number(sub_device))
        known = lambda name: (None if re.fullmatch("(Device|Class|Vendor) [0-9a-f]{4}", name)
                              else re.sub(r" \[[0-9a-f]{4}\]$", "", name))  # the number behind a half known name
        put(facts, slot, kind_name=known(names[1]), vendor_name=known(names[2]), device_name=known(names[3]))
    put(facts, "functions", slots=sorted({thing for thing, _ in facts}))
    return facts


def lspci_said(report):
    facts = {}
    for row in rows(report, "PCIDevice"):
        put(facts, row["Slot"], kind=row.get("ClassID"), vendor=row.get("VendorID"), device=row.get("DeviceID"),
            revision=row.get("Revision"), sub_vendor=row.get("SubsystemVendorID", 0), sub_device=row.get("SubsystemDeviceID", 0),
            kind_name=row.get("ClassName"), vendor_name=row.get("VendorName"), device_name=row.get("DeviceName"))
    put(facts, "functions", slots=sorted({thing for thing, _ in facts}))
    return facts


# findmnt, df


def findmnt():
    columns = "TARGET,SOURCE,FSTYPE,VFS-OPTIONS,FS-OPTIONS,MAJ:MIN,UUID,LABEL"
    mounts = [json.loads(run("findmnt", "-J", "--list", *kind, "-o", columns))["filesystems"] for kind in ([], ["--real"])]
    counts = collections.Counter(mount["target"] for mount in mounts[0])
    facts = {}
    for mount in mounts[1]:
        if counts[mount["target"]] > 1:
            continue  # one stands over the other
        options = ",".join(filter(None, (mount.get("vfs-options"), mount.get("fs-options"))))
        source, _, folder = (mount["source"] or "").partition("[")
        put(facts, mount["target"], source=source, folder=folder.rstrip("]") or "", fs=mount["fstype"], number=mount["maj:min"],
            options=options, uuid=mount.get("uuid"), label=mount.get("label"))
    return facts


def findmnt_said(report):
    facts = {}
    for row in rows(report, "Partition"):
        put(facts, row["FSMountPoint"], source=row.get("FSAccessPoint"), folder=row.get("Subvolume", ""), fs=row.get("FSTypeName"),
            number=row.get("DeviceNumber"), options=row.get("Options"), uuid=row.get("FSUUID"), label=row.get("FSLabel"))
    return facts


def df():
    facts = {}
    targets = collections.Counter()
    for line in run("df", "-a", "-B1", "--output=fstype,itotal,iavail,size,avail,target", check=False).splitlines()[1:]:
        kind, *numbers, target = line.split(None, 5)
        targets[target] += 1
        if kind in ("-", "autofs") or "-" in numbers or numbers[2] == "0" or target not in SCANNED:
            continue
        put(facts, target, inodes=int(numbers[0]), free_inodes=int(numbers[1]), size=int(numbers[2]), free=int(numbers[3]))
    return {key: value for key, value in facts.items() if targets[key[0]] == 1}


def df_said(report):
    facts = {}
    for row in rows(report, "Partition"):
        put(facts, row["FSMountPoint"], inodes=row.get("Inodes"), free_inodes=row.get("FreeInodes"), size=row.get("TotalBytes"),
            free=row.get("FreeBytes"))
    return facts


SCANNED = set()  # the mounts that the report has: all real ones are among them, as findmnt says


# free


def free():
    lines = {line.split()[0]: line.split() for line in run("free", "-k").splitlines()[1:]}
    facts = {}
    put(facts, "memory", total=int(lines["Mem:"][1]), free=int(lines["Mem:"][3]), available=int(lines["Mem:"][6]))
    put(facts, "swap", total=int(lines["Swap:"][1]), free=int(lines["Swap:"][3]))
    return facts


def free_said(report):
    memory = rows(report, "Memory")[0]
    facts = {}
    put(facts, "memory", total=memory.get("TotalPhysical"), free=memory.get("FreePhysical"), available=memory.get("Available"))
    put(facts, "swap", total=memory.get("SwapTotal"), free=memory.get("SwapFree"))
    return facts


# lsusb


def lsusb():
    devices = re.findall(r"Bus (\d+) Device (\d+): ID (\w{4}):(\w{4})", run("lsusb", check=False))
    return {("USB", "devices"): sorted([int(bus), int(number), int(vendor, 16), int(product, 16)]
                                       for bus, number, vendor, product in devices)}


def lsusb_said(report):
    bus = lambda row: int(re.match(r"(?:usb)?(\d+)", row["BusPath"])[1])
    return {("USB", "devices"): sorted([bus(row), int(row["DeviceAddress"]), row["VendorID"], row["ProductID"]]
                                       for row in rows(report, "USBDevice"))}


# nvme


def nvme():
    """The health of the disks of controllers that may be asked."""
    facts = {}
    for row in rows(scan("--group", "Storage"), "Storage"):
        if not (controller := re.match(r"/dev/nvme\d+", row["DeviceName"])):
            continue
        log = json.loads(run("nvme", "smart-log", "-o", "json", controller[0], check=False) or "{}")
        put(facts, row["DeviceName"], used=log.get("percent_used"), spare=log.get("avail_spare"),
            warning=log.get("critical_warning"), hours=log.get("power_on_hours"))
    return facts


def nvme_said(report):
    facts = {}
    for row in rows(report, "Storage"):
        put(facts, row["DeviceName"], used=row.get("PercentageUsed"), spare=row.get("AvailableSpare"),
            warning=row.get("CriticalWarning"), hours=row.get("PowerOnHours"))
    return facts


# dmidecode


def dmidecode_from(*arguments):
    """Structures as dmidecode prints them: type -> a list of {name: value}."""
    structures = collections.defaultdict(list)
    for block in run("dmidecode", "-q", *arguments).split("\n\n"):
        lines = block.strip("\n").splitlines()
        if not lines:
            continue
        values = {}
        for line in lines[1:]:
            if match := re.fullmatch(r"\t([^:\t]+): (.*)", line):
                values[match.group(1)] = match.group(2).strip()
        structures[lines[0]].append(values)
    return structures


NO_TEXT = {"Not Specified", "Unknown", "None", "Not Provided", "No Module Installed", "", "No Asset Tag", "Not Present"}


def text_of(values, name):
    value = values.get(name)
    return None if value in NO_TEXT else value


def megabytes(text):
    match = re.fullmatch(r"(\d+) (MB|GB|TB)", text or "")
    return int(match.group(1)) * {"MB": 1, "GB": 1024, "TB": 1024 * 1024}[match.group(2)] if match else None


def leading(text):
    match = re.match(r"\d+", text or "")
    return int(match.group()) if match else None


def dmidecode(*arguments):
    structures = dmidecode_from(*arguments)
    facts = {}
    system = (structures["System Information"] or [{}])[0]
    put(facts, "system", maker=text_of(system, "Manufacturer"), serial=text_of(system, "Serial Number"),
        uuid=text_of(system, "UUID"), family=text_of(system, "Family"), sku=text_of(system, "SKU Number"))
    bios = (structures["BIOS Information"] or [{}])[0]
    put(facts, "firmware", maker=text_of(bios, "Vendor"), version=text_of(bios, "Version"), release=text_of(bios, "BIOS Revision"))
    chassis = (structures["Chassis Information"] or [{}])[0]
    put(facts, "chassis", maker=text_of(chassis, "Manufacturer"), serial=text_of(chassis, "Serial Number"),
        kind=text_of(chassis, "Type"), tag=text_of(chassis, "Asset Tag"))
    for place, module in enumerate(structures["Memory Device"]):
        here = f"module {place}"
        empty = module.get("Size") == "No Module Installed"
        put(facts, here, size=0 if empty else megabytes(module.get("Size")), socket=text_of(module, "Locator"))
        if megabytes(module.get("Size")):
            volts = re.fullmatch(r"([\d.]+) V", module.get("Configured Voltage", ""))
            put(facts, here, bank=text_of(module, "Bank Locator"), maker=text_of(module, "Manufacturer"),
                serial=text_of(module, "Serial Number"), part=text_of(module, "Part Number"), speed=leading(module.get("Speed")),
                configured=leading(module.get("Configured Memory Speed")), rank=leading(module.get("Rank")),
                kind=f"{text_of(module, 'Type Detail')} {text_of(module, 'Type')}".replace(" (Buffered)", ""), form=text_of(module, "Form Factor"), data=leading(module.get("Data Width")),
                total=leading(module.get("Total Width")), volts=round(float(volts.group(1)) * 1000) if volts else None)
    for place, socket in enumerate(s for s in structures["Processor Information"] if "Populated" in s.get("Status", "")):
        put(facts, f"processor {place}", socket=text_of(socket, "Socket Designation"))
    return facts


def dmidecode_said(report):
    facts = {}
    first = lambda group: (rows(report, group) or [{}])[0]
    system, bios, chassis = first("ComponentID"), first("Firmware"), first("SystemEnclosure")
    put(facts, "system", maker=system.get("Manufacturer"), serial=system.get("SerialNumber"), uuid=system.get("SystemUUID"),
        family=system.get("Family"), sku=system.get("SKUNumber"))
    put(facts, "firmware", maker=bios.get("Vendor"), version=bios.get("Version"), release=bios.get("Release"))
    put(facts, "chassis", maker=chassis.get("Manufacturer"), serial=chassis.get("SerialNumber"), kind=chassis.get("ChassisType"),
        tag=chassis.get("AssetTag"))
    for place, module in enumerate(rows(report, "MemoryModules")):
        put(facts, f"module {place}", size=module.get("ModuleSizeMB"), socket=module.get("SocketName"), bank=module.get("BankName"),
            maker=module.get("Manufacturer"), serial=module.get("SerialNumber"), part=module.get("PartNumber"),
            speed=module.get("Speed"), configured=module.get("ConfiguredSpeed"), rank=module.get("Rank"),
            kind=module.get("MemoryType"), form=module.get("FormFactor"), data=module.get("DataWidth"),
            total=module.get("TotalWidth"), volts=module.get("ConfiguredVoltage"))
    for place, socket in enumerate(rows(report, "Processor")):
        put(facts, f"processor {place}", socket=socket.get("SocketName"))
    return facts


TABLE = "/sys/firmware/dmi/tables/DMI"

# dpkg-query and apt-mark


def dpkg_query():
    facts = {}
    for entry in run("dpkg-query", "-W", "-f", "${Package}\t${Architecture}\t${Version}\t${db:Status-Status}\t${Section}\t"
                     "${Maintainer}\t${Installed-Size}\t${source:Package}\n").splitlines():
        name, architecture, version, status, section, maintainer, size, source = entry.split("\t")
        if status in ("installed", "triggers-awaited", "triggers-pending"):
            version, _, revision = version.rpartition("-") if "-" in version else (version, "", "")
            put(facts, f"{name}:{architecture}", version=version, revision=revision, section=section or None,
                maintainer=maintainer[:64].rstrip() or None, size=size or None, source=source)
        else:
            put(facts, f"{name}:{architecture}", version="none")
    return facts


def packages_of(report, manager):
    return {row["PackageID"]: row for row in rows(report, "SoftwarePackages") if row["Manager"] == manager}


class OrNone(dict):
    """Facts of packages; of one that the report does not have, that it has none."""

    def get(self, key, default=None):
        return super().get(key, "none" if key[1] == "version" else default)


def dpkg_query_said(report):
    facts = OrNone()
    for package, row in packages_of(report, "dpkg").items():
        put(facts, package, version=row["Version"], revision=row.get("Revision", ""), section=row.get("Category"),
            maintainer=row.get("Vendor", "").rstrip(), size=str(row.get("InstalledSize", "")), source=row["SourcePackage"])
    return facts


def apt_mark():
    installed = {key[0].split(":")[0] for key, value in dpkg_query().items() if key[1] == "version" and value != "none"}
    automatic = {name.split(":")[0] for name in run("apt-mark", "showauto").split()}
    facts = {}
    for name in installed:
        put(facts, name, automatic=name in automatic)
    return facts


def apt_mark_said(report):
    facts = {}
    for row in packages_of(report, "dpkg").values():
        put(facts, row["Name"], automatic=row.get("Automatic", False) or facts.get((row["Name"], "automatic"), False))
    return facts


# getent and passwd


def getent():
    facts = {}
    for entry in run("getent", "-s", "files", "passwd").splitlines():
        name, _, user, group, gecos, home, shell = entry.split(":")
        put(facts, name, user=int(user), group=int(group), full=gecos.split(",")[0], home=home, shell=shell)
    return facts


def getent_said(report):
    facts = {}
    for row in rows(report, "UserAccountInfo"):
        put(facts, row["UserName"], user=row["UserID"], group=row["GroupID"], full=row.get("Description", ""),
            home=row.get("Home", ""), shell=row.get("Shell", ""))
    return facts


def passwd():
    """NAME STATUS CHANGED MINIMUM MAXIMUM WARNING INACTIVE; status L, NP or P."""
    facts = {}
    for entry in run("passwd", "-S", "-a").splitlines():
        name, status, _, minimum, maximum = entry.split()[:5]
        put(facts, name, status=status, expires="Yes" if 0 <= int(maximum) < 99999 else "No",
            changeable="No" if int(minimum) > int(maximum) >= 0 else "Yes")
    return facts


def passwd_said(report):
    facts = {}
    for row in rows(report, "UserAccountInfo"):
        status = "NP" if row.get("PasswordRequired") == "No" else "L" if row.get("Disabled") == "Yes" else "P"
        put(facts, row["UserName"], status=status, expires=row.get("PasswordExpires"), changeable=row.get("PasswordChangeable"))
    return facts


# systemctl: states of unit files as it reads them itself, and of units where the manager runs


def unit_files():
    facts = {}
    listed = run("systemctl", "--root=/", "list-unit-files", "--type=service", "--no-legend", "--no-pager")
    for name, state in (entry.split()[:2] for entry in listed.splitlines()):
        if "@." not in name and state != "alias":
            put(facts, name, state=state)
    return facts


def unit_files_said(report):
    facts = {}
    for row in rows(report, "ServiceInfo"):
        put(facts, row["ServiceName"], state=row.get("UnitFileState"))
    return facts


def units():
    facts = {}
    for entry in json.loads(run("systemctl", "list-units", "--type=service", "--all", "--output=json")):
        if entry["load"] != "not-found":
            put(facts, entry["unit"], active=entry["active"], sub=entry["sub"], description=entry["description"])
    return facts


def units_said(report):
    facts = {}
    for row in rows(report, "ServiceInfo"):
        put(facts, row["ServiceName"], active=row.get("State"), sub=row.get("Status"), description=row.get("Description"))
    return facts


COMPARISONS = [
    ("lscpu", lscpu, lscpu_said),
    ("lscpu", lscpu_lines, lscpu_lines_said),
    ("lsblk", lsblk, lsblk_said),
    ("ip", ip_addresses, ip_addresses_said),
    ("ip", ip_links, ip_links_said),
    ("ip", ip_routes, ip_routes_said),
    ("lspci", lspci, lspci_said),
    ("findmnt", findmnt, findmnt_said),
    ("df", df, df_said),
    ("free", free, free_said),
    ("lsusb", lsusb, lsusb_said),
    ("nvme", nvme, nvme_said),
    ("dpkg-query", dpkg_query, dpkg_query_said),
    ("apt-mark", apt_mark, apt_mark_said),
    ("getent", getent, getent_said),
    ("passwd", passwd, passwd_said),
    ("systemctl", unit_files, unit_files_said),
    ("systemctl", units, units_said),
]


def compare_all():
    comparisons = COMPARISONS
    if os.access(TABLE, os.R_OK):
        comparisons = comparisons + [("dmidecode", dmidecode, dmidecode_said)]
    else:
        print(f"dmidecode: no {TABLE} here")
    SCANNED.update(row["FSMountPoint"] for row in rows(scan(), "Partition"))
    total = 0
    for tool, ask, said in comparisons:
        if not has(tool):
            continue
        try:
            ask()
        except OSError as error:
            print(f"{tool}: cannot be asked here: {error}")
            continue
        compared = compare(tool, ask, said)
        print(f"{ask.__name__}: {compared} facts")
        total += compared
    return total


# What a machine may have besides, made in namespaces of its own.

LINKS = """
link add br0 type bridge
link set br0 up
link add veth0 type veth peer name veth1
link set veth0 up
link set veth1 up
link set veth1 master br0
link add bond0 type bond
link add dummy0 type dummy
link add link veth0 name veth0.7 type vlan id 7
link set veth0.7 up
link add link veth0 name mac0 type macvlan
link add ifb9 type ifb
tuntap add tap0 mode tap
link set lo up
link set br0 mtu 1400
addr add 192.0.2.10/24 dev br0
addr add 192.0.2.11/24 dev br0
addr add 198.51.100.1/32 dev veth0
addr add 203.0.113.5 peer 203.0.113.6/32 dev veth0
addr add 2001:db8::10/64 dev br0 nodad
addr add 2001:db8:1::10/128 dev veth0 valid_lft 3600 preferred_lft 1800 nodad
addr add 169.254.9.9/16 dev br0 scope link
route add default via 192.0.2.1
route add default via 192.0.2.2 metric 300
route add 10.1.0.0/16 via 192.0.2.3 dev br0 table 100
route add 10.2.0.0/16 nexthop via 192.0.2.4 dev br0 weight 1 nexthop via 192.0.2.5 dev br0 weight 2
route add blackhole 10.3.0.0/16
route add 10.4.0.0/16 via inet6 2001:db8::1 dev br0
-6 route add 2001:db8:9::/48 via 2001:db8::1
-6 route add default via 2001:db8::1 metric 50
-6 route add unreachable 2001:db8:a::/48
"""


def attempt(*words):
    try:
        run(*words)
        return True
    except OSError as error:
        print(f"left out: {error}")
        return False


def add_mounts(folder):
    place = lambda name: os.path.join(folder, name)
    for name in ("tmpfs", "with blank", "bind", "over", "ext4", "ro"):
        os.mkdir(place(name))
    attempt("mount", "-t", "tmpfs", "-o", "size=1m,nr_inodes=100,noexec", "some tmpfs", place("tmpfs"))
    attempt("mount", "-t", "tmpfs", "none", place("with blank"))
    attempt("mount", "--bind", "/usr", place("bind"))
    attempt("mount", "-t", "tmpfs", "one", place("over"))
    attempt("mount", "-t", "tmpfs", "two", place("over"))
    attempt("mount", "-t", "tmpfs", "-o", "ro", "three", place("ro"))


PARTITIONS = """label: gpt
size=8MiB, name="first one", uuid=11111111-2222-3333-4444-555555555555
size=4MiB, name=second
"""


def add_loops(folder):
    """Loop devices: a partitioned one and one with a file system. Returns them."""
    loops = []
    disk, system = os.path.join(folder, "disk"), os.path.join(folder, "system")
    for image in (disk, system):
        with open(image, "wb") as file:
            file.truncate(16 * 1024 * 1024)
    if has("sfdisk"):
        subprocess.run(["sfdisk", "-q", disk], input=PARTITIONS, text=True, check=False, capture_output=True, env=ENVIRONMENT)
    if has("mkfs.ext4"):
        attempt("mkfs.ext4", "-q", "-L", "a label", system)
    for image in (disk, system):
        try:
            loops.append(run("losetup", "-f", "-P", "--show", image).strip())
        except OSError as error:
            print(f"left out: {error}")
    if loops and not os.path.exists(loops[0] + "p1"):
        run("partx", "-a", loops[0], check=False)  # a kernel that knows no such table takes what it is told
    if os.path.exists(loops[0] + "p1" if loops else "") and has("mkfs.ext4"):
        attempt("mkfs.ext4", "-q", "-L", "in a partition", loops[0] + "p1")
    if len(loops) == 2:
        attempt("mount", loops[1], os.path.join(folder, "ext4"))
    return loops


def compare_private(folder):
    run("mount", "--make-rprivate", "/")
    attempt("mount", "-t", "sysfs", "none", "/sys")  # links of the new network, not of the old one
    run("mount", "-t", "tmpfs", "none", folder)
    for line in LINKS.split("\n"):
        if line:
            attempt("ip", *line.split())
    add_mounts(folder)
    loops = add_loops(folder)
    try:
        return compare_all()
    finally:
        run("umount", os.path.join(folder, "ext4"), check=False)
        for loop in loops:
            run("partx", "-d", loop, check=False)
            run("losetup", "-d", loop, check=False)


# A firmware table (DSP0134), as the kernel gives it and as dmidecode dumps it.


def structure(kind, handle, size, fields, texts=()):
    area = bytearray(size)
    struct.pack_into("<BBH", area, 0, kind, size, handle)
    for offset, form, value in fields:
        struct.pack_into("<" + form, area, offset, value)
    return bytes(area) + (b"".join(text.encode() + b"\0" for text in texts) or b"\0") + b"\0"


def memory_device(handle, texts, size, extended=0, speed=0, configured=0, kind=0x22, rank=2, millivolts=1100):
    return structure(17, handle, 92, [
        (4, "H", 0x1000), (8, "H", 80 if size else 0xFFFF), (10, "H", 64 if size else 0xFFFF), (12, "H", size), (14, "B", 9),
        (16, "B", 1), (17, "B", 2), (18, "B", kind), (19, "H", 0x2080), (21, "H", speed), (23, "B", 3 if size else 0),
        (24, "B", 4 if size else 0), (25, "B", 5 if size else 0), (26, "B", 6 if size else 0), (27, "B", rank),
        (28, "I", extended), (32, "H", configured), (34, "H", millivolts), (36, "H", millivolts), (38, "H", millivolts)], texts)


def firmware_table():
    uuid = bytes.fromhex("33221100554477668899aabbccddeeff")
    system = bytearray(structure(1, 1, 27, [(4, "B", 1), (5, "B", 2), (6, "B", 3), (7, "B", 4), (24, "B", 6), (25, "B", 5),
                                            (26, "B", 6)],
                                 ["A Maker", "A Product", "1.0", "SERIAL-1", "SKU-1", "A Family"]))
    system[8:24] = uuid
    parts = [
        structure(0, 0, 26, [(4, "B", 1), (5, "B", 2), (8, "B", 3), (9, "B", 255), (20, "B", 2), (21, "B", 17), (22, "B", 255),
                             (23, "B", 255), (24, "H", 32)], ["A Vendor", "F.21", "11/22/2024"]),
        bytes(system),
        structure(3, 3, 22, [(4, "B", 1), (5, "B", 0x17), (6, "B", 0), (7, "B", 2), (8, "B", 3), (17, "B", 1)],
                  ["Chassis Maker", "CHASSIS-1", "TAG-1"]),
        structure(4, 4, 48, [(4, "B", 1), (5, "B", 3), (6, "B", 0xB3), (7, "B", 2), (18, "H", 100), (20, "H", 4000),
                             (22, "H", 3000), (24, "B", 0x41), (25, "B", 0x2F), (35, "B", 8), (36, "B", 8), (37, "B", 16)],
                  ["CPU1", "A Maker"]),
        structure(16, 0x1000, 23, [(4, "B", 3), (5, "B", 3), (6, "B", 6), (7, "I", 0x80000000), (13, "H", 4),
                                   (15, "Q", 4 << 40)]),
        memory_device(0x1100, ["DIMM A1", "BANK 0", "First Maker", "0001ABCD", "TAG A1", "PART-64G"], 0x7FFF, extended=65536,
                      speed=4800, configured=4400),
        memory_device(0x1101, ["DIMM A2", "BANK 1"], 0),
        memory_device(0x1102, ["DIMM B1", "BANK 2", "Second Maker", "0002ABCD", "TAG B1", "PART-8G"], 8192, speed=3200,
                      configured=2933, kind=0x1A, rank=1, millivolts=1200),
        memory_device(0x1103, ["DIMM B2", "BANK 3", "Third Maker", "0003ABCD", "TAG B2", "PART-512K"], 0x8000 | 512, speed=133,
                      configured=133, kind=0x18, rank=1, millivolts=1500),
        structure(127, 0x7F00, 4, []),
    ]
    return b"".join(parts)


def entry_point(table, address):
    entry = bytearray(struct.pack("<5sBBBBBBBIQ", b"_SM3_", 0, 24, 3, 6, 0, 1, 0, len(table), address))
    entry[5] = -sum(entry) & 0xFF
    return bytes(entry)


def write(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


def compare_firmware(folder):
    table = firmware_table()
    write(folder + "/dump", entry_point(table, 32).ljust(32, b"\0") + table)
    write(folder + "/root/sys/firmware/dmi/tables/smbios_entry_point", entry_point(table, 0x7F000000))
    write(folder + TABLE.join(("/root", "")), table)
    SCAN.extend(["--root", folder + "/root"])
    compared = compare("dmidecode", lambda: dmidecode("--from-dump", folder + "/dump"), dmidecode_said)
    print(f"dmidecode: {compared} facts")
    return compared


# Monitors.


def monitor_blocks():
    """Blocks of every revision, by connector."""
    wide = edid.timing(154000, 1920, 160, 1200, 35, 518, 324)
    interlaced = edid.timing(74250, 1920, 280, 540, 22, interlaced=True)
    without = edid.text(edid.TEXT, "no timing")
    return {
        "VGA-1": edid.block(0, "NOK", 0x0446, 0x1234, 12, 1996, (36, 27), [], digital=False, preferred=False),
        "VGA-2": edid.block(1, "SNY", 0x0150, 16909060, 0, 1999, (40, 30), [
            without, edid.ranges((48, 120), (30, 96), 200), edid.text(edid.NAME, "CPD-G400")], digital=False, preferred=False),
        "DVI-I-1": edid.block(2, "NEC", 0x6622, 0, 53, 2001, (0, 0), [wide, edid.ranges((50, 75), (31, 82), 140)]),
        "DVI-D-1": edid.block(3, "DEL", 0xA087, 1110521164, 26, 2015, (52, 32), [
            wide, edid.text(edid.SERIAL, "GH85D6BQ15BL"), edid.text(edid.NAME, "DELL U2415"),
            edid.ranges((49, 86), (30, 83), 170)]),
        "HDMI-A-1": edid.block(3, "SAM", 0x0F91, 16780800, 1, 2020, (160, 90), [
            interlaced, edid.ranges((24, 120), (30, 135), 600), edid.text(edid.NAME, "SAMSUNG")],
            extensions=[edid.cta([wide, interlaced])]),
        "eDP-1": edid.block(4, "AUO", 0x63AD, 0, 0, 2022, (30, 19), [edid.timing(154000, 1920, 160, 1200, 35, 301, 188),
                                                                   edid.text(edid.TEXT, "B140UAN02.7")]),
        "DP-1": edid.block(4, "GSM", 0x5BBF, 271828182, 5, 2023, (60, 34), [
            edid.timing(594000, 3840, 560, 2160, 90, 600, 340), edid.ranges((48, 300), (30, 340), 1200),
            edid.text(edid.NAME, "LG ULTRAGEAR"), edid.text(edid.SERIAL, "303NTAB1C234")],
            extensions=[edid.cta(), edid.display_id()]),
    }


def edid_decode(path):
    """The facts of the first block alone: further ones have timings too."""
    text = run("edid-decode", path, check=False).split("Block 1,")[0]
    found = lambda pattern: (re.search(pattern, text) or [None, None])[1]
    number = lambda pattern: int(found(pattern) or 0) or None
    facts = dict(maker=found(r"Manufacturer: (\w{3})\b"), product=number(r"Model: (\d+)"),
                 name=found(r"Display Product Name: '(.*)'"),
                 serial=found(r"Display Product Serial Number: '(.*)'") or found(r"\n    Serial Number: (\d+)"),
                 week=number(r"Made in: week (\d+) of"), year=number(r"Made in: (?:week \d+ of )?(\d+)"))
    if ranges := re.search(r"\): (\d+)-(\d+) Hz V, (\d+)-(\d+) kHz H, max dotclock (\d+) MHz", text):
        facts["ranges"] = [int(part) for part in ranges.groups()]
    if timing := re.search(r"First detailed timing.*DTD 1: +(\d+x\d+i?) +([\d.]+) Hz", text, re.DOTALL):
        facts["mode"] = f"{timing[1]}@{round(float(timing[2]), 2):g}"
    size = re.search(r"DTD 1:.*\((\d+) mm x (\d+) mm\)", text)
    in_cm = re.search(r"Maximum image size: (\d+) cm x (\d+) cm", text)
    if size or in_cm:
        facts["size"] = [int(part) for part in size.groups()] if size else [10 * int(part) for part in in_cm.groups()]
    return facts


def edid_decode_said(report):
    facts = {}
    for row in rows(report, "Monitor"):
        ranges = [row.get(name) for name in ("MinVertScanFreqHz", "MaxVertScanFreqHz", "MinHorizScanFreqkHz",
                                             "MaxHorizScanFreqkHz", "PixelClockMHz")]
        put(facts, row["Connector"], maker=row.get("ManufacturerCodename"), product=row.get("ProductCode"), name=row.get("Name"),
            serial=row.get("SerialNumber"), week=row.get("WeekManufactured"), year=row.get("YearManufactured"), ranges=ranges,
            mode=row.get("PreferredMode"), size=[row.get("Width"), row.get("Height")])
    return facts


def compare_monitors(folder):
    place = lambda name: f"{folder}/root/sys/class/drm/card0-{name}/edid"
    os.makedirs(folder + "/root/sys/devices/platform/gpu/drm/card0")
    os.makedirs(folder + "/root/sys/class/drm")
    os.symlink("../..", folder + "/root/sys/devices/platform/gpu/drm/card0/device")
    os.symlink("../../devices/platform/gpu/drm/card0", folder + "/root/sys/class/drm/card0")
    blocks = monitor_blocks()
    for name, content in blocks.items():
        write(place(name), content)
    SCAN.extend(["--root", folder + "/root"])

    def ask():
        facts = {}
        for name in blocks:
            put(facts, name, **edid_decode(place(name)))
        return facts
    compared = compare("edid-decode", ask, edid_decode_said)
    print(f"edid-decode: {compared} facts")
    return compared


TOOLS = {"firmware": "dmidecode", "monitors": "edid-decode", "rpm": "rpmbuild"}  # without which there is nothing to compare


# RPM: databases that it makes itself.

SPECS = [  # name, version, release, epoch, group
    ("alpha", "1.0", "1", 0, "Applications/System"),
    ("beta", "2.3", "4.el9", 2, "Unspecified"),
    ("kernel", "5.14.0", "427.el9", 0, "System Environment/Kernel"),
    ("kernel", "5.14.0", "503.el9", 0, "System Environment/Kernel"),
]
SPEC = """Name: {0}
Version: {1}
Release: {2}
Epoch: {3}
Group: {4}
Summary: what {0} is
License: MIT
Vendor: The Vendor
BuildArch: noarch
%description
what {0} is
%install
mkdir -p %{{buildroot}}/opt
head -c 5000 /dev/zero > %{{buildroot}}/opt/{0}-{2}
%files
/opt/{0}-{2}
"""


def rpm_query(database):
    facts = {}
    form = "%{NAME}\\t%{ARCH}\\t%{EPOCH}\\t%{VERSION}\\t%{RELEASE}\\t%{VENDOR}\\t%{GROUP}\\t%{SIZE}\\t%{SOURCERPM}\\n"
    for entry in run("rpm", "--dbpath", database, "-qa", "--qf", form).splitlines():
        name, architecture, epoch, version, release, vendor, group, size, source = entry.split("\t")
        put(facts, f"{name}:{architecture}-{release}", version=version if epoch == "(none)" else f"{epoch}:{version}",
            vendor=vendor, group=group, size=(int(size) + 1023) // 1024, source=source)
    return facts


def rpm_query_said(report):
    facts = {}
    for row in rows(report, "SoftwarePackages"):
        if row["Manager"] == "rpm":
            put(facts, f"{row['PackageID']}-{row['Revision']}", version=row["Version"].removesuffix("-" + row["Revision"]),
                vendor=row["Vendor"], group=row["Category"], size=row["InstalledSize"], source=row["SourcePackage"])
    return facts


def compare_rpm(folder):
    database = folder + "/root/usr/lib/sysimage/rpm"
    os.makedirs(database)
    for index, spec in enumerate(SPECS):
        file = f"{folder}/{index}.spec"
        write(file, SPEC.format(*spec).encode())
        run("rpmbuild", "-bb", "--quiet", "--define", f"_topdir {folder}/top", file)
    run("rpm", "--dbpath", database, "--initdb")
    packages = [os.path.join(place, name) for place, _, names in os.walk(folder + "/top/RPMS") for name in names]
    run("rpm", "--dbpath", database, "-i", "--justdb", "--nodeps", "--noscripts", "--force", *packages)
    SCAN.extend(["--root", folder + "/root"])
    compared = compare("rpm", lambda: rpm_query(database), rpm_query_said)
    print(f"rpm: {compared} facts")
    return compared


def main():
    what = sys.argv[2]
    if what == "private":
        if subprocess.run(["unshare", "-n", "-m", "true"], capture_output=True, check=False).returncode != 0:
            print("no namespaces of one's own here")
            return SKIP
        return subprocess.run(["unshare", "-n", "-m", sys.executable, __file__, PROGRAM, "inside"], check=False).returncode
    with tempfile.TemporaryDirectory() as folder:
        if what in TOOLS and not has(TOOLS[what]):
            return SKIP
        compared = {"live": lambda _: compare_all(), "inside": compare_private, "firmware": compare_firmware,
                    "monitors": compare_monitors, "rpm": compare_rpm}[what](folder)
        if what == "inside":
            run("umount", "-R", folder, check=False)
    for failure in failures:
        print(failure)
    if compared == 0:
        print("nothing could be compared")
        return SKIP
    return 1 if failures else 0


PROGRAM = sys.argv[1]
sys.exit(main())
