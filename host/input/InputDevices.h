#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Collection.h"

// Keyboards, mice and what else the kernel's input layer knows, with the bit sets that say what each can do
// (linux/input-event-codes.h).

namespace host
{
/// Codes of one kind of event; the kernel has no kind with more.
using InputBits = std::bitset<0x300>;

/// One input device as the kernel tells it. Texts are empty and numbers absent where it does not.
struct InputDevice {
    std::string name;
    std::string physicalPath;                     // "isa0060/serio0/input0"
    std::string folder;                           // its path below /sys, "/devices/..."
    std::string events;                           // "event4", its node in /dev/input
    std::optional<uint64_t> bus, vendor, product; // 16 bits each
    InputBits properties, kinds, keys, relative, absolute;
    std::string source; // the file that tells it

    /// The bus by name ("USB", "PS/2"), by its number in hexadecimal where it has none here; empty where it is not
    /// told.
    std::string busName() const;

    /// True of a device that a program made: no hardware stands behind it.
    bool isMadeByProgram() const { return folder.starts_with("/devices/virtual/input/") && physicalPath.empty(); }

    /// True when a key of it that is held down repeats.
    bool repeats() const;

    /// True when it types letters: buttons of the case, remote controls and extra keys of keyboards do not.
    bool isKeyboard() const;

    /// What it points with, as a code of Pointing Device's Type; absent when it does not point.
    std::optional<uint32_t> pointerType() const;
};

/// The devices of /proc/bus/input/devices. wordBits: how many bits a word of its bit sets has, 32 or 64.
std::vector<InputDevice> parseInputDevices(std::string_view text, size_t wordBits);

/// How many bits a word of the text's bit sets has: words of 64 bits are told by their digits, where none is that long
/// by the machine's name (uname).
size_t inputWordBits(std::string_view text, std::string_view machine);

/// The machine's input devices but those that programs made, in the kernel's order.
std::vector<InputDevice> readInputDevices(const Machine& machine);
} // namespace host
