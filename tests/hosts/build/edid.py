"""What monitors tell of themselves: EDID blocks (VESA E-EDID), structure 1."""

import struct

RANGES, NAME, SERIAL, TEXT = 0xFD, 0xFC, 0xFF, 0xFE


def timing(clock_khz, columns, blank_columns, lines, blank_lines, width_mm=0, height_mm=0, interlaced=False):
    """A detailed timing; lines are those of a field where it is interlaced."""
    def upper(first, second):
        return first >> 8 << 4 | second >> 8
    return struct.pack("<HBBBBBBBBBBBBBBBB", clock_khz // 10, columns & 0xFF, blank_columns & 0xFF,
                       upper(columns, blank_columns), lines & 0xFF, blank_lines & 0xFF, upper(lines, blank_lines), 48, 32,
                       0x36, 0, width_mm & 0xFF, height_mm & 0xFF, upper(width_mm, height_mm), 0, 0,
                       0x1A | (0x80 if interlaced else 0))


def text(tag, content):
    return bytes([0, 0, 0, tag, 0]) + (content + "\n")[:13].ljust(13).encode()


def ranges(vertical, horizontal, clock_mhz):
    """Hz, kHz, and the highest pixel clock; rates above 255 in the way of the fourth revision."""
    def flag(pair):
        return 3 if pair[0] > 255 else 2 if pair[1] > 255 else 0

    def byte(rate):
        return rate - 255 if rate > 255 else rate
    flags = flag(vertical) | flag(horizontal) << 2
    return bytes([0, 0, 0, RANGES, flags, *map(byte, vertical + horizontal), clock_mhz // 10, 0, 10]) + b" " * 6


UNUSED = bytes([0, 0, 0, 0x10]) + bytes(14)


def checked(block):
    return block[:127] + bytes([-sum(block[:127]) & 0xFF])


def block(revision, maker, product, serial, week, year, size_cm, descriptors, digital=True, preferred=True, extensions=()):
    """The blocks of a monitor: the first, and those behind it. year: 0 where none is told."""
    letters = [ord(letter) - ord("@") for letter in maker]
    head = bytes([0, *[0xFF] * 6, 0])
    head += struct.pack(">H", letters[0] << 10 | letters[1] << 5 | letters[2]) + struct.pack("<HI", product, serial)
    kind = 0x08 if not digital else 0xA5 if revision >= 4 else 0x80
    head += bytes([week, max(year - 1990, 0), 1, revision, kind, *size_cm, 120, 0x02 if preferred else 0])
    head += bytes.fromhex("ee91a3544c99260f505421080001010101010101010101010101010101")  # colours, standard timings
    fields = b"".join(list(descriptors) + [UNUSED] * (4 - len(descriptors)))
    first = checked((head + fields)[:126] + bytes([len(extensions), 0]))
    return first + b"".join(extensions)


def cta(timings=()):
    """A block of CTA-861 without data blocks: timings alone."""
    return checked((bytes([2, 3, 4, 0x40]) + b"".join(timings)).ljust(128, b"\0"))


def display_id():
    """A block of DisplayID 1.3 without data blocks."""
    section = bytes([0x13, 121, 0, 0]) + bytes(121)
    return checked(bytes([0x70]) + section + bytes([-sum(section) & 0xFF]) + b"\0")
