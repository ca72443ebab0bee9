"""The firmware's table (DSP0134) and its entry points."""

import struct
import uuid


class Table:
    def __init__(self):
        self.bytes = b""
        self.handle = 0
        self.structures = 0
        self.largest = 0

    def add(self, kind, formatted, strings=()):
        """formatted: what follows the header; strings count from 1. Returns the handle."""
        handle = self.handle
        texts = b"".join(text.encode() + b"\0" for text in strings) or b"\0"
        one = struct.pack("<BBH", kind, 4 + len(formatted), handle) + formatted + texts + b"\0"
        self.bytes += one
        self.handle += 1
        self.structures += 1
        self.largest = max(self.largest, len(one))
        return handle

    def end(self):
        self.add(127, b"")
        return self.bytes


def raw_uuid(text):
    """The bytes of a UUID as 2.6 and later write them: the first three fields with their low byte first."""
    return uuid.UUID(text).bytes_le


class Strings(list):
    """The strings of a structure: takes one and gives its number, 0 for an empty one."""

    def number(self, text):
        if not text:
            return 0
        self.append(text)
        return len(self)


def firmware(table, vendor, version, date, release, rom_megabytes):
    texts = Strings()
    rom = rom_megabytes * 16 - 1 if rom_megabytes < 16 else 0xFF
    table.add(0, struct.pack("<BBHBBQBBBBBBH", texts.number(vendor), texts.number(version), 0xE800, texts.number(date), rom,
                             0x08, 3, 0x0D, release[0], release[1], 0xFF, 0xFF, rom_megabytes), texts)


def system(table, manufacturer, product, version, serial, identity, sku, family):
    texts = Strings()
    first = [texts.number(text) for text in (manufacturer, product, version, serial)]
    table.add(1, struct.pack("<BBBB16sBBB", *first, raw_uuid(identity), 6, texts.number(sku), texts.number(family)), texts)


def board(table, manufacturer, product, version, serial):
    texts = Strings()
    numbers = [texts.number(text) for text in (manufacturer, product, version, serial)]
    table.add(2, struct.pack("<BBBBBBBHBB", *numbers, 0, 9, 0, 3, 10, 0), texts)


def chassis(table, manufacturer, kind, version, serial, tag, height, sku):
    texts = Strings()
    maker = texts.number(manufacturer)
    numbers = [texts.number(text) for text in (version, serial, tag)]
    table.add(3, struct.pack("<BBBBBBBBBIBBBBB", maker, kind, *numbers, 3, 3, 3, 3, 0, height, 1, 0, 3,
                             texts.number(sku)), texts)


def begun(vendor, version, date, release, rom_megabytes, whole, board_of, chassis_of):
    """A table that begins as they all do: what follows the first five arguments are those of system, board and chassis."""
    table = Table()
    firmware(table, vendor, version, date, release, rom_megabytes)
    system(table, *whole)
    board(table, *board_of)
    chassis(table, *chassis_of)
    return table


def processor(table, socket, manufacturer, version, family, clock, maximum, current, upgrade, cores, threads,
              enabled=None):
    """family: one below 0xFE, or a larger one for the word behind it; counts of 256 and more likewise."""
    def short(number, most):
        return number if number < most else most
    enabled = cores if enabled is None else enabled
    table.add(4, struct.pack("<BBBBQBBHHHBBHHHBBBBBBHHHHH", 1, 3, short(family, 0xFE), 2, 0, 3, 0x8B, clock, maximum,
                             current, 0x41, upgrade, 0xFFFF, 0xFFFF, 0xFFFF, 0, 0, 0, short(cores, 0xFF),
                             short(enabled, 0xFF), short(threads, 0xFF), 0xFC, family, cores, enabled, threads),
              [socket, manufacturer, version])


def memory_array(table, capacity_bytes, slots, error_correction):
    kilobytes = capacity_bytes >> 10
    small = kilobytes if kilobytes < 0x80000000 else 0x80000000
    large = 0 if small == kilobytes else capacity_bytes
    return table.add(16, struct.pack("<BBBIHHQ", 3, 3, error_correction, small, 0xFFFE, slots, large))


def memory_module(table, array, locator, bank, megabytes, form, kind, detail, speed, configured, manufacturer, serial,
                  part, rank, data_width, total_width, millivolts, tag=""):
    """An empty socket has 0 megabytes."""
    size, extended = (megabytes, 0) if megabytes < 0x7FFF else (0x7FFF, megabytes)
    texts = Strings()
    places = [texts.number(text) for text in (locator, bank)]
    names = [texts.number(text) for text in (manufacturer, serial, tag, part)]
    table.add(17, struct.pack("<HHHHHBBBBBHHBBBBBIHHHHBHBHHHHQQQQII", array, 0xFFFE, total_width, data_width, size, form,
                              0, *places, kind, detail, speed, *names, rank, extended, configured, millivolts,
                              millivolts, millivolts, 3, 8, 0, 0, 0, 0, 0, 0, megabytes << 20, 0, 0, 0, 0), texts)


def management_controller(table):
    table.add(38, struct.pack("<BBBBQBB", 1, 0x20, 0x20, 0xFF, 0xCA3, 0, 0))


def checked(entry, at):
    """Makes the bytes' sum 0 by the one at an offset."""
    entry = bytearray(entry)
    entry[at] = -sum(entry) & 0xFF
    return bytes(entry)


def entry_point_64(table, major, minor):
    return checked(struct.pack("<5sBBBBBBBIQ", b"_SM3_", 0, 24, major, minor, 0, 1, 0, len(table.bytes), 0x7A1D4000), 5)


def entry_point_32(table, major, minor):
    second = struct.pack("<5sBHIHB", b"_DMI_", 0, len(table.bytes), 0xE8480, table.structures, major << 4 | minor)
    first = struct.pack("<4sBBBBHB5s", b"_SM_", 0, 31, major, minor, table.largest, 0, bytes(5))
    return checked(first + checked(second, 5), 4)


def install(machine, table, entry_point):
    machine.file("/sys/firmware/dmi/tables/smbios_entry_point", entry_point)
    machine.file("/sys/firmware/dmi/tables/DMI", table.bytes)


DMI_ID = "/sys/devices/virtual/dmi/id"


def show(machine, values):
    """What the kernel shows of the table in /sys/class/dmi/id."""
    machine.link_to("/sys/class/dmi/id", DMI_ID)
    machine.files(DMI_ID, values)
