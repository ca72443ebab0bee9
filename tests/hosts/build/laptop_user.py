"""The laptop as one of its ordinary users sees it: what only root may read is refused."""

import laptop

# Mode 0400 in /sys and /proc.
REFUSED = ["/sys/firmware/dmi/tables/smbios_entry_point", "/sys/firmware/dmi/tables/DMI", "/proc/1/environ", "/etc/shadow"]
REFUSED += ["/etc/cups/printers.conf"]
REFUSED += [f"/sys/class/dmi/id/{name}" for name in ("product_serial", "product_uuid", "board_serial", "chassis_serial")]


def build():
    machine = laptop.build()
    machine.answer("userId", 1000)
    for path in REFUSED:
        machine.error(path, "EACCES")
        machine.file(path.replace("/sys/class/dmi/id", "/sys/devices/virtual/dmi/id"), "")
    for number in (3, 6):
        machine.answer("keyboardRepeat", {"error": "EACCES", "call": "EVIOCGREP"}, f"/dev/input/event{number}")
    machine.answer("nvmeHealth", {"error": "EACCES", "call": "NVME_IOCTL_ADMIN_CMD"}, "/dev/nvme0")
    modules = ""
    for slot in range(2):
        name = f"E:MEMORY_DEVICE_{slot}_"
        modules += "".join(f"{name}{key}={value}\n" for key, value in [
            ("TOTAL_WIDTH", 64), ("DATA_WIDTH", 64), ("SIZE", 17179869184), ("FORM_FACTOR", "SODIMM"),
            ("LOCATOR", f"Controller{slot}-ChannelA-DIMM0"), ("BANK_LOCATOR", f"BANK {slot}"), ("TYPE", "DDR5"),
            ("TYPE_DETAIL", "Synchronous Unbuffered (Unregistered)"), ("SPEED_MTS", 5600), ("MANUFACTURER", "Samsung"),
            ("PART_NUMBER", "M425R2GA3BB0-CWMOL"), ("RANK", 1), ("CONFIGURED_SPEED_MTS", 5200)])
    machine.file("/run/udev/data/+dmi:id", "E:MEMORY_ARRAY_LOCATION=System Board Or Motherboard\n" + modules +
                 "E:MEMORY_ARRAY_NUM_DEVICES=2\n")
    return machine
