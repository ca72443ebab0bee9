#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host
{
/// The IDENTIFY DEVICE data of an ATA disk (ACS-4, 7.12): 256 words.
class AtaIdentify
{
public:
    static constexpr size_t kWords = 256;

    /// From the kernel's text of it: words of four hexadecimal digits; absent when there are not that many.
    static std::optional<AtaIdentify> parse(std::string_view text);

    std::string serialNumber() const { return string(10, 10); }
    std::string firmwareRevision() const { return string(23, 4); }
    std::string model() const { return string(27, 20); }

    /// Word 0: an optical drive or a tape, which takes SCSI commands in packets and has no geometry.
    bool isPacketDevice() const { return (words_[0] & 0x8000) != 0; }

    uint16_t cylinders() const { return words_[1]; }
    uint16_t heads() const { return words_[3]; }
    uint16_t sectors() const { return words_[6]; }

    /// Word 76 tells Serial ATA's features; 0 and 0xFFFF where there are none.
    bool isSerial() const { return words_[76] != 0 && words_[76] != 0xFFFF; }

    /// Word 128: whether there is a password, and whether there can be one.
    bool hasSecurity() const { return (words_[128] & 1) != 0; }
    bool isSecurityEnabled() const { return (words_[128] & 2) != 0; }

private:
    /// Characters stand in words with the first one high.
    std::string string(size_t first, size_t count) const;

    std::array<uint16_t, kWords> words_{};
};
} // namespace host
