#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The firmware's table of structures (DSP0134, System Management BIOS, 2.0 to 3.7). Every field is checked against the
// length that its structure claims, and that against the table's end: a field of a younger standard than the structure
// is absent.

namespace host
{
/// Types of structures that collectors read (DSP0134, clause 7).
enum StructureType : uint8_t {
    SMBIOS_FIRMWARE = 0,
    SMBIOS_SYSTEM = 1,
    SMBIOS_BOARD = 2,
    SMBIOS_CHASSIS = 3,
    SMBIOS_PROCESSOR = 4,
    SMBIOS_CACHE = 7,
    SMBIOS_MEMORY_ARRAY = 16,
    SMBIOS_MEMORY_DEVICE = 17,
    SMBIOS_HARDWARE_SECURITY = 24,
    SMBIOS_IPMI = 38,
    SMBIOS_TPM = 43,
    SMBIOS_INACTIVE = 126,
    SMBIOS_END = 127,
};

/// One structure. Offsets count from its first byte, as the standard's tables do. Its bytes are the table's.
class Structure
{
public:
    /// bytes begin at the structure and reach to the table's end; formatted is the length of its formatted area, at
    /// least 4.
    Structure(std::string_view bytes, size_t formatted) : bytes_(bytes), formatted_(formatted) {}

    uint8_t type() const { return *byte(0); }
    uint16_t handle() const { return *word(2); }
    size_t formattedLength() const { return formatted_; }

    /// Little-endian fields; absent when they do not lie wholly in the formatted area.
    std::optional<uint8_t> byte(size_t offset) const;
    std::optional<uint16_t> word(size_t offset) const;
    std::optional<uint32_t> doubleWord(size_t offset) const;
    std::optional<uint64_t> quadWord(size_t offset) const;

    /// The string whose number stands at the offset, without blanks at both ends; empty when there is none. The
    /// standard's strings are ASCII; any byte may stand in them.
    std::string_view string(size_t offset) const;

    /// The raw bytes of a field, empty when it does not lie in the formatted area.
    std::string_view field(size_t offset, size_t length) const;

private:
    std::string_view bytes_;
    size_t formatted_;
};

class StructureTable
{
public:
    /// The longest table that is taken: the 16-bit length of 2.x, and far more than any 3.x firmware writes.
    static constexpr size_t kMostBytes = size_t{4} * 1024 * 1024;

    StructureTable() = default;

    /// Takes a table and its entry point ("_SM_", "_SM3_" or "_DMI_"; empty or unknown bytes: no version). Owns copies.
    StructureTable(std::string_view entryPoint, std::string table);

    StructureTable(const StructureTable&) = delete;
    StructureTable& operator=(const StructureTable&) = delete;

    /// "3.7"; empty when the entry point does not tell.
    std::string version() const;

    /// True when the entry point tells this version or a younger one; one that tells none counts as young.
    bool isAtLeast(unsigned major, unsigned minor) const;

    /// Why the table's end was not reached, empty when it was.
    const std::string& problem() const { return problem_; }

    bool isEmpty() const { return structures_.empty(); }

    /// All structures of a type in the table's order, inactive ones left out.
    std::vector<const Structure*> all(uint8_t type) const;

    /// The first structure of a type, or null.
    const Structure* first(uint8_t type) const;

    /// Every structure, whatever its type.
    const std::vector<Structure>& structures() const { return structures_; }

private:
    void parse();

    struct Version {
        unsigned major, minor;
    };
    static std::optional<Version> versionOf(std::string_view entryPoint);

    std::optional<Version> version_;
    std::string problem_;
    std::string bytes_;
    std::vector<Structure> structures_;
};
} // namespace host
