#pragma once

#include <string>
#include <string_view>
#include <vector>

// Which machine a report is of. Every basis that exists gives a key; a store joins reports by any of them, the best
// first.

namespace report
{
/// What identifies a machine, as its sources say it; empty where there is none.
struct IdentityFacts {
    std::string systemUuid;                // RFC 4122 text, in either case
    std::string serialNumber;              // of the system
    std::string machineId;                 // /etc/machine-id
    std::vector<std::string> macAddresses; // permanent ones of physical adapters
    bool inContainer = false;              // sees its host's firmware and links of its own: the machine id alone counts
};

/// The bases of identities, best first.
constexpr const char* IDENTITY_SYSTEM_UUID = "System UUID";
constexpr const char* IDENTITY_SERIAL_NUMBER = "Serial Number";
constexpr const char* IDENTITY_MACHINE_ID = "Machine ID";
constexpr const char* IDENTITY_MAC_ADDRESS = "MAC Address";

/// One way to know the machine again.
struct Identity {
    const char* basis;
    std::string key; // lower-case hexadecimal SHA-256 of "basis:value"
};

/// The identities of a machine, best first. Placeholders that makers leave in firmware are no identities, nor are
/// addresses that were made up (locally administered ones); of several addresses the lowest counts.
std::vector<Identity> identitiesOf(const IdentityFacts& facts);

/// The key of a basis and its value: of a UUID, a machine ID or an address in lower case, trimmed.
std::string machineKey(std::string_view basis, std::string_view value);

/// True for what makers and boards write where an identity should stand: nothing, one digit repeated, "To be filled by
/// O.E.M.", "Default string", "None" and their like.
bool isPlaceholder(std::string_view value);

/// A UUID as RFC 4122 text in lower case, from the 32 hexadecimal digits of its bytes as the firmware's table holds
/// them; there the first three fields are little-endian (DSP0134, 7.2.1; not so in tables older than 2.6). Empty when
/// the text is something else.
std::string uuidOfRaw(std::string_view digits, bool isLittleEndian = true);

/// Lower-case hexadecimal SHA-256 of the bytes.
std::string sha256(std::string_view bytes);
} // namespace report
