#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// An EDID block, made byte by byte; its checksum is right whatever was put.
class EdidBytes
{
public:
    explicit EdidBytes(uint8_t revision = 4) : bytes_(128, '\0')
    {
        put(0, {0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00});
        put(18, {1, revision});
        for (size_t field = 0; field < 4; ++field)
            put(place(field), {0, 0, 0, 0x10}); // unused
    }

    EdidBytes& put(size_t offset, std::initializer_list<uint8_t> values)
    {
        for (const uint8_t value : values)
            bytes_[offset++] = static_cast<char>(value);
        return *this;
    }
    EdidBytes& maker(const char (&letters)[4])
    {
        const int word = (letters[0] - '@') << 10 | (letters[1] - '@') << 5 | (letters[2] - '@');
        return put(8, {static_cast<uint8_t>(word >> 8), static_cast<uint8_t>(word)});
    }
    EdidBytes& text(size_t field, uint8_t tag, std::string_view text)
    {
        put(place(field), {0, 0, 0, tag, 0});
        for (size_t i = 0; i < 13; ++i)
            bytes_[place(field) + 5 + i] = i < text.size() ? text[i] : i == text.size() ? '\n' : ' ';
        return *this;
    }
    EdidBytes& field(size_t number, std::initializer_list<uint8_t> values) { return put(place(number), values); }

    /// The block with as many extension blocks behind it as are said.
    std::string bytes(const std::string& extensions = "") const
    {
        std::string bytes = bytes_;
        bytes[126] = static_cast<char>(extensions.size() / 128);
        uint8_t sum = 0;
        for (const char byte : bytes)
            sum = static_cast<uint8_t>(sum + static_cast<uint8_t>(byte));
        bytes[127] = static_cast<char>(-sum);
        return bytes + extensions;
    }

private:
    static size_t place(size_t field) { return 54 + 18 * field; }

    std::string bytes_;
};

/// 1920 by 1200 at 59.95 Hz on 301 by 188 mm: 154 MHz, 160 and 35 blank.
constexpr std::initializer_list<uint8_t> kPanelTiming = {0x28, 0x3C, 0x80, 0xA0, 0x70, 0xB0, 0x23, 0x40, 0x30,
                                                         0x20, 0x36, 0x00, 0x2D, 0xBC, 0x10, 0x00, 0x00, 0x1A};
