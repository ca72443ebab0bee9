#include <algorithm>
#include <vector>

#include "host/record/Redaction.h"
#include "report/Text.h"

namespace host
{
namespace
{
uint8_t byteAt(std::string_view bytes, size_t at)
{
    return static_cast<uint8_t>(bytes[at]);
}

// What makes the sum of all bytes zero, when that byte is zero.
uint8_t checksumOf(std::string_view bytes)
{
    uint8_t sum = 0;
    for (const char c : bytes)
        sum = static_cast<uint8_t>(sum + static_cast<uint8_t>(c));
    return static_cast<uint8_t>(-sum);
}

// A text of a fixed place, blanks behind it.
std::string padded(std::string text, size_t length)
{
    text.resize(length, ' ');
    return text;
}

std::string hexOf(std::string_view bytes)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits;
    for (size_t i = 0; i < bytes.size(); ++i) {
        digits += kDigits[byteAt(bytes, i) >> 4];
        digits += kDigits[byteAt(bytes, i) & 0xF];
    }
    return digits;
}

std::string bytesOf(std::string_view digits)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(report::parseNumber<uint8_t>(digits.substr(i, 2), 16).value_or(0));
    return bytes;
}

constexpr size_t kIdentifyBytes = 512;
constexpr size_t kSerial = 20, kSerialLength = 20;  // word 10, in the order of the text
constexpr size_t kName = 216, kNameLength = 8;      // word 108, world wide name
constexpr size_t kSignature = 511, kChecksum = 510; // word 255
constexpr uint8_t kSigned = 0xA5;

// Words of four digits, with blanks and line ends between them; their bytes in the order of texts.
std::string bytesOfWords(std::string_view text, std::vector<size_t>& places)
{
    std::string digits;
    for (size_t at = text.find_first_not_of(" \n"); at < text.size(); at = text.find_first_not_of(" \n", at + 4)) {
        const std::string_view word = text.substr(at, 4);
        if (word.size() != 4 || !report::parseNumber<uint16_t>(word, 16))
            return {};
        places.push_back(at);
        digits += word;
    }
    return bytesOf(digits);
}

// The serial number's 32 bits; makers that have none write zeros, ones or 01010101.
void redactEdidNumber(std::string& block, const report::IdentifyingValues& values)
{
    constexpr size_t kNumber = 12;
    constexpr uint32_t kNone = 0x01010101;
    uint32_t number = 0;
    for (size_t i = 4; i-- > 0;)
        number = number << 8 | byteAt(block, kNumber + i);
    if (number == 0 || number == kNone || number == UINT32_MAX)
        return;
    const std::string made = values.pseudonyms().value(std::to_string(number));
    const std::optional<uint64_t> other = report::parseNumber(made);
    number = static_cast<uint32_t>(other.value_or(0));
    for (size_t i = 0; i < 4; ++i)
        block[kNumber + i] = static_cast<char>(number >> (8 * i) & 0xFF);
}
} // namespace

std::string redactedIdentify(std::string words, const report::IdentifyingValues& values)
{
    std::vector<size_t> places;
    std::string bytes = bytesOfWords(words, places);
    if (bytes.size() != kIdentifyBytes)
        return values.replaced(words);
    const report::Pseudonyms& pseudonyms = values.pseudonyms();
    bytes.replace(kSerial, kSerialLength,
                  padded(pseudonyms.value(bytes.substr(kSerial, kSerialLength)), kSerialLength));
    bytes.replace(kName, kNameLength, bytesOf(pseudonyms.value(hexOf(bytes.substr(kName, kNameLength)))));
    if (byteAt(bytes, kSignature) == kSigned) {
        bytes[kChecksum] = 0;
        bytes[kChecksum] = static_cast<char>(checksumOf(bytes));
    }
    const std::string digits = hexOf(bytes);
    for (size_t i = 0; i < places.size(); ++i)
        words.replace(places[i], 4, digits, 4 * i, 4);
    return words;
}

// Detailed descriptors of 18 bytes from 54 on; of a serial number's the kind is FF and 13 characters follow, which a
// line end and blanks fill (VESA E-EDID A2, 3.10.3).
std::string redactedEdid(std::string block, const report::IdentifyingValues& values)
{
    constexpr size_t kBlock = 128, kFirst = 54, kDescriptor = 18, kText = 5, kTextLength = 13;
    if (block.size() < kBlock)
        return values.replaced(block);
    const bool isSound = checksumOf(std::string_view(block).substr(0, kBlock)) == 0;
    redactEdidNumber(block, values);
    for (size_t at = kFirst; at + kDescriptor < kBlock; at += kDescriptor) {
        if (block.compare(at, 4, std::string("\0\0\0\xFF", 4)) != 0)
            continue;
        const std::string text = block.substr(at + kText, kTextLength);
        const std::string own = text.substr(0, text.find('\n'));
        block.replace(at + kText, own.size(), padded(values.pseudonyms().value(own), own.size()));
    }
    if (isSound) {
        block[kBlock - 1] = 0;
        block[kBlock - 1] = static_cast<char>(checksumOf(std::string_view(block).substr(0, kBlock)));
    }
    return block;
}
} // namespace host
