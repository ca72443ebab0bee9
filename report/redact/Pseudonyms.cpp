#include "report/redact/Pseudonyms.h"

#include <algorithm>
#include <arpa/inet.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <span>
#include <vector>

#include "report/Identity.h"
#include "report/Text.h"

namespace report
{
namespace
{
constexpr std::string_view kHexDigits = "0123456789abcdef";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}
bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}
int hexValue(char c)
{
    const size_t value = kHexDigits.find(isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c);
    return value == kHexDigits.npos ? -1 : static_cast<int>(value);
}
bool areHex(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return hexValue(c) >= 0; });
}

// What stands in front of an identifier and says of what kind it is (SCSI names, Linux's by-id links).
constexpr std::string_view kPrefixes[] = {"eui.", "naa.", "nvme.", "uuid.", "0x", "iqn."};
constexpr size_t kLongestPrefix = 5;
constexpr std::string_view kVendorPrefix = "t10."; // vendor, model and serial number follow, blanks between them

// Whether a word's letters and digits are hexadecimal ones: both, and enough of them not to be a word.
bool isHexWord(std::string_view text)
{
    constexpr size_t kFewest = 8;
    size_t digits = 0, letters = 0;
    for (const char c : text) {
        if (hexValue(c) < 0 && (isLower(c) || (c & 0x80) != 0))
            return false;
        digits += isDigit(c) ? 1U : 0U;
        letters += isLower(c) ? 1U : 0U;
    }
    return digits != 0 && letters != 0 && digits + letters >= kFewest;
}

// The last byte of a character beyond ASCII, which tells it from its 63 neighbours; those of U+0080 to U+00BF are
// controls and signs, those of U+FFC0 to U+FFFF no characters in part.
bool isLastOfCharacter(std::string_view text, size_t i)
{
    const auto byte = [text](size_t at) { return static_cast<unsigned char>(text[at]); };
    if ((byte(i) & 0xC0) != 0x80 || (i + 1 < text.size() && (byte(i + 1) & 0xC0) == 0x80) || i == 0)
        return false;
    return byte(i - 1) != 0xC2 && !(i >= 2 && byte(i - 2) == 0xEF && byte(i - 1) == 0xBF);
}

using Place = Pseudonyms::Place;

std::vector<Place> placesOf(std::string_view text)
{
    const bool isHex = isHexWord(text);
    std::vector<Place> places;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto from = [c](char base) { return static_cast<unsigned int>(static_cast<unsigned char>(c - base)); };
        if (isHex && hexValue(c) >= 0)
            places.push_back({i, 16, static_cast<unsigned int>(hexValue(c)), 0});
        else if (isDigit(c))
            places.push_back({i, 10, from('0'), '0'});
        else if (isLower(c))
            places.push_back({i, 26, from('a'), 'a'});
        else if (isLastOfCharacter(text, i))
            places.push_back({i, 64, from('\x80'), '\x80'});
    }
    return places;
}

std::string shapeOf(std::string_view text, const std::vector<Place>& places)
{
    std::string shape(text);
    for (const Place& place : places)
        shape[place.at] = static_cast<char>(place.radix);
    return shape;
}

// Classes of addresses that stay what they are: those whose first bits are these keep so many of them.
struct AddressClass {
    unsigned char first[2];
    unsigned int bits; // of first
    size_t kept;
};
constexpr AddressClass kIPv4Classes[] = {
    {{0, 0}, 8, 32},      {{127, 0}, 8, 32},   {{10, 0}, 8, 8},  {{169, 254}, 16, 16}, {{172, 16}, 12, 12},
    {{192, 168}, 16, 16}, {{100, 64}, 10, 10}, {{224, 0}, 4, 4}, {{240, 0}, 4, 4},
};
constexpr AddressClass kIPv6Classes[] = {
    {{0, 0}, 16, 128}, {{0xFE, 0x80}, 10, 64}, {{0xFC, 0}, 7, 8}, {{0xFF, 0}, 8, 16}, {{0x20, 0}, 3, 3},
};

template <size_t N>
const AddressClass* classOf(const std::array<unsigned char, N>& bytes)
{
    const unsigned int first = bytes[0] * 256U + bytes[1];
    const auto isOf = [first](const AddressClass& row) {
        return (first ^ (row.first[0] * 256U + row.first[1])) >> (16U - row.bits) == 0;
    };
    const std::span<const AddressClass> classes =
        N == 4 ? std::span<const AddressClass>(kIPv4Classes) : std::span<const AddressClass>(kIPv6Classes);
    const auto found = std::find_if(classes.begin(), classes.end(), isOf);
    return found != classes.end() ? &*found : nullptr;
}

// The digits, in lower case, of a hardware address in any of its forms; empty of anything else.
std::string hardwareDigits(std::string_view text)
{
    constexpr size_t kBare = 12, kShortest = 17, kLongest = 95; // characters, of 6 to 32 bytes
    if (text.size() == kBare && areHex(text))
        return lower(text);
    if (text.size() < kShortest || text.size() > kLongest || text.size() % 3 != 2 || (text[2] != ':' && text[2] != '-'))
        return {};
    std::string digits;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isSeparator = i % 3 == 2;
        if (isSeparator ? text[i] != text[2] : hexValue(text[i]) < 0)
            return {};
        if (!isSeparator)
            digits += text[i];
    }
    return lower(digits);
}

template <size_t N>
bool isBroadcast(const std::array<unsigned char, N>& bytes)
{
    return N == 4 && std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == 0xFF; });
}

template <size_t N>
std::string addressText(const std::array<unsigned char, N>& bytes)
{
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(N == 4 ? AF_INET : AF_INET6, bytes.data(), text, sizeof text) != nullptr ? text : "";
}
} // namespace

std::string_view identifierIn(std::string_view text)
{
    std::string_view inner = trimmed(text);
    const std::string start = lower(inner.substr(0, kLongestPrefix));
    if (start.starts_with(kVendorPrefix)) {
        const size_t blank = inner.rfind(' ');
        inner.remove_prefix(blank != inner.npos ? blank + 1 : kVendorPrefix.size());
        return inner;
    }
    for (const std::string_view prefix : kPrefixes)
        if (start.starts_with(prefix) && inner.size() > prefix.size())
            return inner.substr(prefix.size());
    return inner;
}

std::string inCaseOf(std::string_view pattern, std::string text)
{
    const bool hasUpper = std::any_of(pattern.begin(), pattern.end(), isUpper);
    const bool isAllUpper = hasUpper && std::none_of(pattern.begin(), pattern.end(), isLower);
    for (size_t i = 0; hasUpper && i < text.size(); ++i)
        if (isLower(text[i]) && (isAllUpper || (pattern.size() == text.size() && isUpper(pattern[i]))))
            text[i] = static_cast<char>(text[i] - 'a' + 'A');
    return text;
}

std::string uuidDigits(std::string_view text)
{
    constexpr size_t kDashes[] = {8, 13, 18, 23};
    std::string digits(text);
    if (digits.size() == 36)
        for (size_t i = std::size(kDashes); i-- > 0;)
            if (digits[kDashes[i]] == '-')
                digits.erase(kDashes[i], 1);
    return digits.size() == 32 && areHex(digits) ? lower(digits) : "";
}

std::string swappedUuidDigits(std::string_view digits)
{
    std::string swapped = uuidOfRaw(digits);
    std::erase(swapped, '-');
    return swapped;
}

std::string dashedUuid(std::string_view digits)
{
    return uuidOfRaw(digits, false);
}

Pseudonyms::Digest Pseudonyms::digest(std::string_view purpose, std::string_view message) const
{
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr);
    std::string text(purpose);
    text += '\0';
    text += message;
    Digest result{};
    HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()), reinterpret_cast<const unsigned char*>(text.data()),
         text.size(), result.data(), nullptr);
    return result;
}

// Adds what a digest of the others says to these digits.
void Pseudonyms::turn(std::span<Place> places, std::span<const Place> others, std::string message) const
{
    for (const Place& place : others)
        message += static_cast<char>(place.digit);
    Digest stream = digest("word", message);
    size_t used = 0;
    for (Place& place : places) {
        if (used == stream.size()) {
            used = 0;
            stream = digest("more", {reinterpret_cast<const char*>(stream.data()), stream.size()});
        }
        place.digit = (place.digit + stream[used] * 256U + stream[used + 1]) % place.radix;
        used += 2;
    }
}

// A Feistel network over the places: in turns, each half's digits get the other half's digest added. Every step can be
// taken back, so that no two words of one shape become the same.
std::string Pseudonyms::word(std::string_view text) const
{
    constexpr int kRounds = 10;
    std::string result = lower(text);
    std::vector<Place> places = placesOf(result);
    const std::string shape = shapeOf(result, places);
    const std::span<Place> all(places);
    const std::span<Place> front = all.first(places.size() / 2), back = all.subspan(places.size() / 2);
    for (int round = 0; round < kRounds && !places.empty(); ++round)
        round % 2 == 0 ? turn(back, front, shape + static_cast<char>(round))
                       : turn(front, back, shape + static_cast<char>(round));
    for (const Place& place : places)
        result[place.at] =
            place.base == 0 ? kHexDigits[place.digit] : static_cast<char>(place.base + static_cast<char>(place.digit));
    return inCaseOf(text, std::move(result));
}

std::optional<std::string> Pseudonyms::hardwareAddress(std::string_view text) const
{
    const std::string digits = hardwareDigits(text);
    if (digits.empty())
        return std::nullopt;
    if (isPlaceholder(digits))
        return std::string(text);
    Digest bytes = digest("hardware address", digits);
    bytes[0] = static_cast<unsigned char>((bytes[0] | 0x02U) & 0xFEU); // given by no maker, of one interface (IEEE 802)
    std::string result(text);
    size_t digit = 0;
    for (char& c : result) {
        if (hexValue(c) < 0)
            continue;
        const unsigned int byte = bytes[digit / 2];
        c = kHexDigits[digit % 2 == 0 ? byte >> 4U : byte & 0xFU];
        ++digit;
    }
    return inCaseOf(text, std::move(result));
}

// Of the two orders of bytes the one that sorts first is hashed, and the result turned like the original.
std::optional<std::string> Pseudonyms::uuid(std::string_view text) const
{
    const std::string digits = uuidDigits(text);
    if (digits.empty())
        return std::nullopt;
    if (isPlaceholder(text))
        return std::string(text);
    const std::string swapped = swappedUuidDigits(digits);
    const std::string& first = std::min(digits, swapped);
    const Digest bytes = digest("uuid", first);
    std::string made;
    for (size_t i = 0; i < 32; ++i)
        made += kHexDigits[i % 2 == 0 ? bytes[i / 2] >> 4U : bytes[i / 2] & 0xFU];
    made[12] = first[12]; // the version, in either order of bytes, and the variant
    made[14] = first[14];
    made[16] = first[16];
    if (first != digits)
        made = swappedUuidDigits(made);
    return inCaseOf(text, text.size() == 32 ? made : dashedUuid(made));
}

// Bits from one place on up to another are turned or not as the digest of all bits before them says: of every byte its
// bits by the path that leads to them.
template <size_t N>
std::array<unsigned char, N> Pseudonyms::preservingPrefix(const std::array<unsigned char, N>& bytes, size_t from,
                                                          size_t to) const
{
    std::array<unsigned char, N> result = bytes;
    for (size_t i = from / 8; i < N && 8 * i < to; ++i) {
        const Digest turns = digest(N == 4 ? "IPv4" : "IPv6", {reinterpret_cast<const char*>(bytes.data()), i});
        for (unsigned int bit = 0; bit < 8; ++bit) {
            const size_t place = 8 * i + bit;
            const unsigned int path = (1U << bit) | (bytes[i] >> (8U - bit)); // 1 to 255
            const bool isTurned = ((turns[path / 8] >> (path % 8)) & 1U) != 0;
            if (place >= from && place < to && isTurned)
                result[i] = static_cast<unsigned char>(result[i] ^ (0x80U >> bit));
        }
    }
    return result;
}

// Behind a network's prefix zeros stay, so that it stays a network's address.
template <size_t N>
std::string Pseudonyms::ofAddress(const std::array<unsigned char, N>& bytes, std::optional<size_t> prefixLength) const
{
    constexpr int kMostTries = 64; // one in four addresses is of a class that a general one must not become
    const AddressClass* row = classOf(bytes);
    if ((row != nullptr && row->kept >= 8 * N) || isBroadcast(bytes))
        return addressText(bytes);
    bool isNetwork = prefixLength.has_value();
    for (size_t bit = prefixLength.value_or(8 * N); bit < 8 * N; ++bit)
        isNetwork = isNetwork && ((bytes[bit / 8] >> (7 - bit % 8)) & 1U) == 0;
    const size_t from = row != nullptr ? row->kept : 0;
    const size_t to = isNetwork ? std::min(*prefixLength, 8 * N) : 8 * N;
    auto result = preservingPrefix(bytes, from, to);
    for (int i = 0; i < kMostTries && to > from && (classOf(result) != row || isBroadcast(result)); ++i)
        result = preservingPrefix(result, from, to);
    return addressText(result);
}

std::optional<std::string> Pseudonyms::addressAlone(std::string_view text, std::optional<size_t> prefixLength) const
{
    std::array<unsigned char, 4> four{};
    std::array<unsigned char, 16> sixteen{};
    const std::string address(text);
    if (inet_pton(AF_INET, address.c_str(), four.data()) == 1)
        return ofAddress(four, prefixLength);
    if (inet_pton(AF_INET6, address.c_str(), sixteen.data()) == 1)
        return ofAddress(sixteen, prefixLength);
    return std::nullopt;
}

std::optional<std::string> Pseudonyms::address(std::string_view text) const
{
    constexpr size_t kLongest = INET6_ADDRSTRLEN + 4;
    if (text.size() > kLongest || text.find('\0') != text.npos)
        return std::nullopt;
    const size_t slash = text.find('/');
    if (slash == text.npos)
        return addressAlone(text, std::nullopt);
    const auto length = parseNumber<uint8_t>(text.substr(slash + 1));
    if (!length)
        return std::nullopt;
    const auto result = addressAlone(text.substr(0, slash), *length);
    return result ? *result + std::string(text.substr(slash)) : result;
}

std::string Pseudonyms::value(std::string_view text) const
{
    const std::string_view inner = identifierIn(text);
    if (isPlaceholder(inner))
        return std::string(text);
    std::optional<std::string> made = address(inner);
    if (!made)
        made = hardwareAddress(inner);
    if (!made)
        made = uuid(inner);
    std::string result(text);
    result.replace(static_cast<size_t>(inner.data() - text.data()), inner.size(), made ? *made : word(inner));
    return result;
}
} // namespace report
