"""A router: a bond of two ports, VLANs on it, bridges, a tunnel, virtual links, IPv6 everywhere, routes over several hops."""

import sysfs
import system

CLOCK = 1763724934


def links(machine):
    cards = []
    for port in range(4):
        cards.append(sysfs.pci(machine, f"pci0000:00/0000:00:02.0/0000:05:00.{port}", 0x8086, 0x1521, 0x020000,
                               (0x8086, 0x0001), "igb", 1, now=("5.0 GT/s PCIe", 4), most=("5.0 GT/s PCIe", 4)))
    usb = "/sys/devices/pci0000:00/0000:00:14.0/usb2/2-1"
    machine.files(usb, {"idVendor": "0bda", "idProduct": "8153", "manufacturer": "Realtek", "product": "USB 10/100/1000 LAN",
                        "serial": "001000001"})
    interface = f"{usb}/2-1:1.0"
    sysfs.on_bus(machine, interface, "usb", "r8152")
    bond, mac = 5, "3c:fd:fe:aa:bb:0{}"
    rows = [
        {"index": 1, "name": "lo", "hardwareType": 772, "flags": 65609, "mtu": 65536, "address": "00:00:00:00:00:00",
         "operationalState": "unknown"},
        {"index": 2, "name": "eno1", "flags": 71747, "master": bond, "address": mac.format(1), "permanentAddress": mac.format(1)},
        {"index": 3, "name": "eno2", "flags": 71747, "master": bond, "address": mac.format(1), "permanentAddress": mac.format(2)},
        {"index": 4, "name": "eno3", "flags": 4099, "address": mac.format(3), "permanentAddress": mac.format(3),
         "operationalState": "down"},
        {"index": bond, "name": "bond0", "flags": 70723, "kind": "bond", "address": mac.format(1), "mtu": 9000},
        {"index": 6, "name": "bond0.100", "kind": "vlan", "parent": bond, "address": mac.format(1), "master": 8},
        {"index": 7, "name": "bond0.200", "kind": "vlan", "parent": bond, "address": mac.format(1)},
        {"index": 8, "name": "br-lan", "kind": "bridge", "address": mac.format(1)},
        {"index": 9, "name": "veth1a2b", "kind": "veth", "parent": 2, "address": "fe:01:02:03:04:05", "master": 8},
        {"index": 10, "name": "wg0", "kind": "wireguard", "hardwareType": 65534, "mtu": 1420, "flags": 65745,
         "operationalState": "unknown"},
        {"index": 11, "name": "tun0", "kind": "tun", "hardwareType": 65534, "mtu": 1500, "flags": 69841,
         "operationalState": "unknown"},
        {"index": 12, "name": "enx00e04c680001", "address": "00:e0:4c:68:00:01", "permanentAddress": "00:e0:4c:68:00:01",
         "operationalState": "dormant"},
        {"index": 13, "name": "dummy0", "kind": "dummy", "address": "0a:0b:0c:0d:0e:0f", "operationalState": "unknown"},
        {"index": 14, "name": "eno4", "flags": 69699, "address": mac.format(4), "permanentAddress": mac.format(4)},
    ]
    machine.answer("links", [{"hardwareType": 1, "flags": 69699, "mtu": 1500, "operationalState": "up", **row} for row in rows])
    for port, name in enumerate(("eno1", "eno2", "eno3", "eno4")):
        sysfs.net(machine, name, cards[port], None if name == "eno3" else 1000, "full")
        machine.answer("linkDriver", {"driver": "igb", "firmwareVersion": "1.63, 0x80000a05", "port": 0,
                                      "busAddress": f"0000:05:00.{port}"}, name)
    sysfs.net(machine, "enx00e04c680001", interface, 100, "half")
    machine.answer("linkDriver", {"driver": "r8152", "busAddress": "usb-0000:00:14.0-1", "port": 2}, "enx00e04c680001")
    for name, speed, duplex in (("bond0", 2000, "full"), ("bond0.100", 2000, "full"), ("bond0.200", 2000, "full"),
                                ("br-lan", 2000, "unknown"), ("veth1a2b", 10000, "full"), ("wg0", None, None),
                                ("tun0", 10, "full"), ("dummy0", None, None)):
        sysfs.net(machine, name, None, speed, duplex)
    for name, driver, version in (("bond0", "bonding", "2"), ("bond0.100", "802.1Q VLAN Support", None),
                                  ("bond0.200", "802.1Q VLAN Support", None), ("br-lan", "bridge", None),
                                  ("veth1a2b", "veth", None), ("wg0", "wireguard", None), ("tun0", "tun", None),
                                  ("dummy0", "dummy", None)):
        answer = {"driver": driver}
        if version:
            answer["firmwareVersion"] = version
        machine.answer("linkDriver", answer, name)


def addresses(machine):
    def one(link, address, prefix, scope=0, permanent=True):
        return {"link": link, "address": address, "prefixLength": prefix, "scope": scope, "isPermanent": permanent}
    machine.answer("addresses", [
        one(1, "127.0.0.1", 8, 254), one(8, "192.0.2.1", 24), one(8, "192.0.2.2", 24), one(8, "198.51.100.1", 25),
        one(7, "203.0.113.9", 30), one(10, "10.99.0.1", 32), one(14, "100.64.3.17", 20, 0, False),
        one(1, "::1", 128, 254), one(8, "2001:db8:1::1", 64), one(8, "fd12:3456:789a::1", 48),
        one(8, "fe80::3efd:feff:feaa:bb01", 64, 253), one(7, "2001:db8:ffff::2", 126),
        one(14, "2001:db8:77::5c1f:22ff:fe33:4455", 64, 0, False), one(13, "2001:db8:d::d", 128)])
    machine.file("/run/systemd/netif/leases/14", "ADDRESS=100.64.3.17\nROUTER=100.64.0.1\n")


def routes(machine):
    def one(destination, prefix, link=0, gateway=None, metric=0, table=254, kind=1, scope=0, flags=0):
        route = {"table": table, "destination": destination, "prefixLength": prefix, "metric": metric, "type": kind,
                 "scope": scope, "flags": flags}
        if link:
            route["link"] = link
        if gateway:
            route["gateway"] = gateway
        return route
    machine.answer("routes", [
        one("0.0.0.0", 0, 7, "203.0.113.10", 10), one("0.0.0.0", 0, 14, "100.64.0.1", 1024),
        one("10.0.0.0", 8, 8, "192.0.2.254"), one("10.0.0.0", 8, 10, "10.99.0.2"),  # one route over two hops
        one("10.99.0.2", 32, 10, scope=253), one("192.0.2.0", 24, 8, scope=253),
        one("172.16.0.0", 12, kind=6), one("0.0.0.0", 0, 10, metric=0, table=100),
        one("192.0.2.1", 32, 8, table=255, kind=2, scope=254),
        one("192.0.2.77", 32, 8, flags=0x200),
        one("::", 0, 7, "2001:db8:ffff::1", 10), one("2001:db8:1::", 64, 8, metric=256),
        one("2001:db8:2::", 48, 8, "fe80::2", 256), one("fe80::", 64, 8, metric=256), one("::1", 128, 1, metric=256),
        one("ff00::", 8, 8, metric=256, table=255, kind=5)])


def build():
    machine = system.recorded_by_root()
    links(machine)
    addresses(machine)
    routes(machine)
    system.pci_ids(machine)
    machine.names("gw.example.org", "6.1.0-21-amd64", "#1 SMP PREEMPT_DYNAMIC Debian 6.1.90-1 (2024-05-03)", "x86_64")
    system.booted(machine, CLOCK, 86400, "root=/dev/sda1 ro")
    system.systemd(machine, "multi-user.target")
    machine.file("/etc/resolv.conf", "nameserver 127.0.0.1\n")
    machine.file("/run/NetworkManager/resolv.conf", "search lan.example.org\nnameserver 2001:db8:53::53\n"
                 "nameserver 192.0.2.53\n")
    machine.file("/etc/machine-id", "aabbccddeeff00112233445566778899\n")
    return machine
