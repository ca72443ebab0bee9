#include "report/Identity.h"

#include <algorithm>
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include "report/Text.h"

namespace report
{
namespace
{
bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// A text of hexadecimal digits with separators at the given places.
bool hasForm(std::string_view text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                      [](char c, char expected) { return expected == 'x' ? isHexDigit(c) : c == expected; });
}

constexpr std::string_view kUuidForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
constexpr std::string_view kMacForm = "xx:xx:xx:xx:xx:xx";
constexpr std::string_view kDigitsForm = "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx";

// Beginnings, in lower case, of what stands where nobody filled anything in. The UUID is one that many boards share.
constexpr std::string_view kPlaceholderBeginnings[] = {
    "to be filled",
    "default string",
    "03000200-0400-0500-0006",
    "not specified",
    "not applicable",
    "not available",
    "system serial number",
    "chassis serial number",
    "serial number",
    "o.e.m.",
    "empty",
    "no asset",
};
constexpr std::string_view kPlaceholders[] = {
    "none",
    "n/a",
    "na",
    "unknown",
    "invalid",
    "oem",
    "default",
    "0123456789",
    "123456789",
    "1234567890",
    "12345678-1234-5678-90ab-cddeefaabbcc",
};

// One character repeated, whatever separates it: "00000000-0000-...", "FF:FF:...", "1111111".
bool isOneCharacter(std::string_view value)
{
    char only = 0;
    for (const char c : value) {
        if (c == '-' || c == ':' || c == '.' || c == ' ')
            continue;
        if (only != 0 && c != only)
            return false;
        only = c;
    }
    return true;
}

// The bit of an address's first byte that says that it was not given by its maker (IEEE 802), and the one of groups.
bool isMakersAddress(const std::string& address)
{
    return hasForm(address, kMacForm) && std::string_view("048c").find(address[1]) != std::string_view::npos &&
           !isPlaceholder(address);
}

std::string lowestAddress(const std::vector<std::string>& addresses)
{
    std::string lowest;
    for (const std::string& given : addresses) {
        const std::string address = lower(trimmed(given));
        if (isMakersAddress(address) && (lowest.empty() || address < lowest))
            lowest = address;
    }
    return lowest;
}

void addIdentity(std::vector<Identity>& identities, const char* basis, const std::string& value)
{
    if (!isPlaceholder(value))
        identities.push_back({basis, machineKey(basis, value)});
}
} // namespace

std::string machineKey(std::string_view basis, std::string_view value)
{
    return sha256(std::string(basis) + ':' + std::string(value));
}

bool isPlaceholder(std::string_view value)
{
    const std::string text = lower(trimmed(value));
    return isOneCharacter(text) ||
           std::any_of(std::begin(kPlaceholderBeginnings), std::end(kPlaceholderBeginnings),
                       [&](std::string_view beginning) { return text.starts_with(beginning); }) ||
           std::find(std::begin(kPlaceholders), std::end(kPlaceholders), text) != std::end(kPlaceholders);
}

std::vector<Identity> identitiesOf(const IdentityFacts& facts)
{
    std::vector<Identity> identities;
    const std::string uuid = lower(trimmed(facts.systemUuid));
    const std::string machineId = lower(trimmed(facts.machineId));
    if (!facts.inContainer && hasForm(uuid, kUuidForm))
        addIdentity(identities, IDENTITY_SYSTEM_UUID, uuid);
    if (!facts.inContainer)
        addIdentity(identities, IDENTITY_SERIAL_NUMBER, std::string(trimmed(facts.serialNumber)));
    if (hasForm(machineId, kDigitsForm))
        addIdentity(identities, IDENTITY_MACHINE_ID, machineId);
    if (!facts.inContainer)
        addIdentity(identities, IDENTITY_MAC_ADDRESS, lowestAddress(facts.macAddresses));
    return identities;
}

std::string uuidOfRaw(std::string_view digits, bool isLittleEndian)
{
    if (!hasForm(digits, kDigitsForm))
        return {};
    constexpr size_t kLittleEndian[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15}; // bytes
    std::string text;
    for (size_t i = 0; i < 16; ++i) {
        text += digits.substr(2 * (isLittleEndian ? kLittleEndian[i] : i), 2);
        if (i == 3 || i == 5 || i == 7 || i == 9)
            text += '-';
    }
    return lower(text);
}

std::string sha256(std::string_view bytes)
{
    // The library's configuration belongs to the machine that this runs on, which a report of another must not touch.
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr);
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_Digest(bytes.data(), bytes.size(), digest, &length, EVP_sha256(), nullptr);
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned int i = 0; i < length; ++i) {
        text += kDigits[digest[i] >> 4];
        text += kDigits[digest[i] & 0xF];
    }
    return text;
}
} // namespace report
