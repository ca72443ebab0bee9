"""A file server: LVM on RAID on partitions of two SATA disks, btrfs subvolumes, 10,000 bind mounts, an encrypted volume."""

import sysfs
import system

CLOCK = 1763724934
SHARES = 10000
FLAGS = "fpu vme de pse tsc msr pae mce cx8 apic sep mtrr pge mca cmov pat pse36 clflush mmx fxsr sse sse2 ht syscall nx lm"
BTRFS = "5e7b1f7a-93c2-4c0f-8d6e-aa11bb22cc33"
RAID_PARTITION = "a19d880f-05fc-4d3b-a006-743f0f84911e"


def processors(machine):
    sysfs.processors(machine, "0-3", "0-3", {n: (0, n, str(n)) for n in range(4)}, [
        (1, "Data", "32K", str), (1, "Instruction", "32K", str), (2, "Unified", "2048K", lambda n: f"{n & ~1}-{n | 1}")])
    system.cpuinfo(machine, range(4), lambda n: {
        "vendor_id": "GenuineIntel", "cpu family": 6, "model": 76, "model name": "Intel(R) Pentium(R) CPU  N3700  @ 1.60GHz",
        "stepping": 3, "microcode": "0x368", "cpu MHz": "1600.000", "physical id": 0, "flags": FLAGS})
    system.cpuid(machine)


def disks(machine):
    ahci = sysfs.pci(machine, "pci0000:00/0000:00:13.0", 0x8086, 0x22A3, 0x010601, (0x1849, 0x22A3), "ahci", 0x35)
    members = {1: [], 2: []}
    for index, serial in enumerate(("WD-WCC7K3AAAAAA", "WD-WCC7K3BBBBBB")):
        port = index + 1
        model = "WDC WD40EFRX-68N32N0"
        host = sysfs.ata_host(machine, ahci, port, index, sysfs.ata_identify(model, serial, "82.00A82", security=0x0029))
        name = f"sd{'ab'[index]}"
        disk = sysfs.scsi_disk(machine, host, f"{index}:0:0:0", name, f"8:{16 * index}", 7814037168,
                               {"vendor": "ATA     ", "model": model[:16], "rev": "0A82",
                                "wwid": f"naa.50014ee2b{index}c3d4e5"},
                               {"rotational": 1, "physical_block_size": 4096}, serial_page=f"     {serial}",
                               properties={"ID_PART_TABLE_TYPE": "gpt"})
        for number, start, sectors, uuid in ((1, 2048, 1048576, "27e5c6b4-boot"), (2, 1050624, 7812984832, "27e5c6b4-data")):
            array = "5d4c3b2a:11223344:aabbccdd:0000000" + str(number)
            members[number].append(sysfs.partition(
                machine, disk, f"{name}{number}", number, f"8:{16 * index + number}", start, sectors, {
                    "ID_FS_TYPE": "linux_raid_member", "ID_FS_UUID": array.replace(":", "-"), "ID_FS_LABEL": f"vault:{number}",
                    "ID_FS_LABEL_ENC": f"vault:{number}", "ID_PART_ENTRY_TYPE": RAID_PARTITION,
                    "ID_PART_ENTRY_UUID": f"27e5c6b4-0000-4000-8000-0000000000{index}{number}"}))
        del uuid
    arrays(machine, members)


def arrays(machine, members):
    for number, level, sectors, degraded, state, inside in (
            (1, "raid1", 1046528, 0, "clean", {"ID_FS_TYPE": "ext4", "ID_FS_UUID": "0c5de1ab-7777-4444-9999-123456789abc"}),
            (2, "raid1", 7812720640, 1, "active", {"ID_FS_TYPE": "LVM2_member",
                                                  "ID_FS_UUID": "rX9yZa-1bCd-2eFg-3hIj-4kLm-5nOp-6qRsTu"})):
        folder = f"/sys/devices/virtual/block/md{number}"
        sysfs.block(machine, folder, f"9:{number}", sectors, {"rotational": 1}, properties={
            "MD_LEVEL": level, "MD_DEVICES": "2", "MD_METADATA": "1.2", "MD_DEVNAME": str(number),
            "MD_UUID": f"5d4c3b2a:11223344:aabbccdd:0000000{number}", **inside})
        machine.files(f"{folder}/md", {"level": level, "raid_disks": 2, "array_state": state, "degraded": degraded,
                                       "metadata_version": "1.2"})
        sysfs.hold(machine, folder, members[number])
    raid = "/sys/devices/virtual/block/md2"
    group = "LVM-" + "Qw1Er2Ty3Ui4Op5As6Df7Gh8Jk9Lz0Xc"
    sysfs.mapper(machine, 0, "vault-root", group + "Vb1Nm2Qa3Ws4Ed5Rf6Tg7Yh8Uj9Ik0Ol", 62914560, [raid], {
        "ID_FS_TYPE": "ext4", "ID_FS_UUID": "1f2e3d4c-5b6a-4978-8695-a4b3c2d1e0f1", "ID_FS_LABEL": "root",
        "ID_FS_LABEL_ENC": "root"})
    sysfs.mapper(machine, 1, "vault-shares", group + "Cv1Bn2Mq3Wa4Se5Dr6Ft7Gy8Hu9Ji0Ko", 7516192768, [raid], {
        "ID_FS_TYPE": "btrfs", "ID_FS_UUID": BTRFS, "ID_FS_LABEL": "shares", "ID_FS_LABEL_ENC": "shares"})
    secret = sysfs.mapper(machine, 2, "vault-secret", group + "Za1Xs2Cd3Vf4Bg5Nh6Mj7Kl8Po9Iu0Yt", 209715200, [raid], {
        "ID_FS_TYPE": "crypto_LUKS", "ID_FS_UUID": "77665544-3322-4111-8000-ffeeddccbbaa"})
    sysfs.mapper(machine, 3, "secret", "CRYPT-LUKS2-77665544332241118000ffeeddccbbaa-secret", 209682432, [secret], {
        "ID_FS_TYPE": "xfs", "ID_FS_UUID": "99887766-5544-4332-8110-aabbccddeeff"})
    image = sysfs.block(machine, "/sys/devices/virtual/block/loop0", "7:0", 1366016, {}, properties={
        "ID_FS_TYPE": "iso9660", "ID_FS_UUID": "2025-09-06-10-22-58-00", "ID_FS_LABEL": "DEBIAN"})
    machine.files(f"{image}/loop", {"backing_file": "/srv/shares/iso/debian.iso"})


def mounts(machine):
    shares = "rw,space_cache=v2,subvolid=256,subvol=/@shares"
    rows = [
        ("254:0", "/", "/", "rw,relatime", "ext4", "/dev/mapper/vault-root", "rw"),
        ("9:1", "/", "/boot", "rw,relatime", "ext4", "/dev/md1", "rw"),
        ("0:44", "/@shares", "/srv/shares", "rw,noatime", "btrfs", "/dev/mapper/vault-shares", shares),
        ("0:44", "/@snapshots/daily 1", "/srv/snapshots/daily\\0401".replace("daily 1", "daily\\0401"), "ro,noatime", "btrfs",
         "/dev/mapper/vault-shares", "rw,space_cache=v2,subvolid=257,subvol=/@snapshots/daily\\0401"),
        ("254:3", "/", "/srv/secret", "rw,relatime", "xfs", "/dev/mapper/secret", "rw,attr2,inode64"),
        ("7:0", "/", "/srv/iso", "ro,relatime", "iso9660", "/dev/loop0", "ro,nojoliet,check=s,map=n,blocksize=2048"),
    ]
    rows[3] = (rows[3][0], "/@snapshots/daily\\0401", *rows[3][2:])
    sizes = {"/": (31526391808, 21474836480, 19864223744, 1966080, 1801234),
             "/boot": (506695680, 371195904, 333447168, 130816, 130461),
             "/srv/shares": (3848290697216, 1210987741184, 1209871237120, 0, 0),
             "/srv/snapshots/daily 1": (3848290697216, 1210987741184, 1209871237120, 0, 0),
             "/srv/secret": (107303391232, 98761232384, 98761232384, 52420608, 52419321),
             "/srv/iso": (699400192, 0, 0, 0, 0)}
    for share in range(SHARES):
        point = f"/export/s{share:05}"
        rows.append(("0:44", f"/@shares/s{share:05}", point, "rw,noatime", "btrfs", "/dev/mapper/vault-shares", shares))
        sizes[point] = sizes["/srv/shares"]
    system.mounts(machine, system.PSEUDO + rows)
    for point, size in sizes.items():
        machine.size(point, *size)


def build():
    machine = system.recorded_by_root()
    processors(machine)
    system.memory(machine, 7999416, 412300, 6501232, 0, 0)
    disks(machine)
    mounts(machine)
    machine.names("vault", "6.12.30-amd64", "#1 SMP PREEMPT_DYNAMIC Debian 6.12.30-1 (2025-05-29)", "x86_64")
    system.os_release(machine, PRETTY_NAME="Debian GNU/Linux 13 (trixie)", NAME="Debian GNU/Linux", VERSION_ID="13", ID="debian")
    system.booted(machine, CLOCK, 1209600, "BOOT_IMAGE=/vmlinuz root=/dev/mapper/vault-root ro")
    system.systemd(machine, "multi-user.target")
    machine.file("/etc/machine-id", "0123456789abcdef0123456789abcdef\n")
    machine.file("/sys/kernel/address_bits", "64\n")
    machine.answer("birthTime", 1747000000, "/")
    return machine
