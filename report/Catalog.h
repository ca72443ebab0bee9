#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "com/VexCatalog.h"

// The host catalog: the groups of com/VexCatalog.h with what invhwctl adds to them, and the groups that only invhwctl
// knows. report/catalog/ holds one file a group with one table row an attribute; schema, reference, checks, diff,
// redaction and SQL columns follow from these rows and from nothing else.

namespace report
{
/// What holds of an attribute's values, as bits of AttributeDef::marks.
enum Mark : uint8_t {
    PLAIN = 0,
    VOLATILE = 1,    // differs between two scans of an unchanged machine: no change in a diff, no version in a store
    IDENTIFYING = 2, // tells which machine, network or person it was: replaced when a report is redacted
    YES_NO = 4,      // a VEX_ULONG with Yes = 1 and No = 0, in JSON true and false
    // What depends on the row or on the value:
    VOLATILE_IF_DYNAMIC = 8,          // volatile in rows whose attribute Dynamic is Yes
    IDENTIFYING_IF_ADDRESS = 16,      // identifying when the name is made of a hardware address ("enx...")
    IDENTIFYING_IF_HOST_OR_USER = 32, // identifying when the path holds the name of a host or a user
};

/// One attribute as its group's file declares it. Ids below FIRST_ADDED_ID are the attributes of com/catalog: their
/// name, type and length (and enumeration, unless one is given here) are not said twice, so that those fields are 0
/// here.
struct AttributeDef {
    uint32_t id;              // unique within its group
    const char* name;         // null for an attribute of com/catalog
    uint32_t type;            // VexType, 0 for an attribute of com/catalog
    uint32_t maxLength;       // characters of a VEX_STRING; for an attribute of com/catalog 0 or a wider one
    const char* unit;         // of a number: "kB", "bytes", "MHz" ...; empty where there is none
    const vexEnumDef* enums;  // texts of a VEX_ULONG's values, of a VEX_STRING texts of its source's codes; or null
    const char* const* words; // the only texts of a VEX_STRING, closed by null; or null
    uint8_t marks;            // Mark bits
    const char* source;       // where the value stands, in one line of Markdown
};

constexpr uint32_t FIRST_ADDED_ID = 1001;

/// Attributes that pair two rows in a diff when both have all of them; unused places are 0.
struct PairingDef {
    uint32_t ids[3];
};

/// One group as its file declares it. Ids below FIRST_ADDED_GROUP_ID are groups of com/catalog, whose name is not said
/// twice. Names, texts and tables live as long as the program.
struct GroupDef {
    uint32_t id;
    const char* name; // null for a group of com/catalog
    std::span<const AttributeDef> attributes;
    std::span<const uint32_t> keys;
    std::span<const PairingDef> pairing; // tried in this order before the keys
    uint32_t version;
    const char* source; // where its rows come from, in one line of Markdown
};

constexpr uint32_t FIRST_ADDED_GROUP_ID = 101;

/// One attribute as the rest of the program sees it: a row of AttributeDef with what com/catalog says of it.
struct Attribute {
    uint32_t id = 0;
    size_t position = 0; // in its group's table: the order in which collectors' rows hold their values
    std::string name;    // "Total Physical"
    std::string element; // "TotalPhysical"
    VexType type = VEX_STRING;
    uint32_t maxLength = 0;
    std::string_view unit;
    const vexEnumDef* enums = nullptr;     // only of a VEX_ULONG
    const vexEnumDef* codeTexts = nullptr; // only of a VEX_STRING: what a collector writes for a code; others may occur
    const char* const* words = nullptr;
    bool isVolatile = false;
    bool isIdentifying = false;
    bool isVolatileIfDynamic = false;
    bool isIdentifyingIfAddress = false;
    bool isIdentifyingIfHostOrUser = false;
    bool isYesNo = false;
    bool isKey = false;
    bool isFirstKey = false; // a key of the group's version 1, which invhw reports
    std::string_view source;
};

/// One group of the catalog.
struct Group {
    uint32_t id = 0;
    size_t position = 0; // in the report's order
    std::string name;    // "IP Address"
    std::string element; // "IPAddress"
    uint32_t version = 0;
    std::vector<Attribute> attributes;
    std::vector<uint32_t> keys;
    std::span<const PairingDef> pairing;
    std::string_view source;

    /// The attribute of an id or of an element's name, or null.
    const Attribute* find(uint32_t attributeId) const;
    const Attribute* find(std::string_view attributeElement) const;
};

/// All groups in the order in which a report holds them. Made at the first call; lives as long as the program.
const std::vector<Group>& catalog();

/// The group of an id, of an element's name ("IPAddress"), or of either name ("IP Address" or "IPAddress"); or null.
const Group* findGroup(uint32_t id);
const Group* findGroup(std::string_view element);
const Group* findGroupByAnyName(std::string_view name);

/// The text of an enumeration's value, or null; and the value of a text.
const char* enumText(const vexEnumDef* enums, uint64_t value);
const vexEnumDef* findEnumText(const vexEnumDef* enums, std::string_view text);

/// The element that a report writes for a group or an attribute of this name: what is in parentheses is a unit and no
/// part of it, and characters that XML names do not allow are left out ("Height (U)" -> "Height").
std::string elementName(std::string_view name);
} // namespace report
