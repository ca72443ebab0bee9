#pragma once

#include <string_view>

#include "com/catalog/CatalogCheck.h"
#include "report/Catalog.h"
#include "report/catalog/AttributeIds.h"

// How the group files write their rows, and what is checked of them at compile time. That rows without a name have one
// in com/catalog is checked when the catalog is made (report/Catalog.cpp) and by its test.

namespace report
{
/// An attribute of com/catalog: marks, unit and source are said here. A widened text names its new length.
constexpr AttributeDef known(uint32_t id, uint8_t marks, const char* unit, const char* source, uint32_t maxLength = 0)
{
    return {id, nullptr, 0, maxLength, unit, nullptr, nullptr, marks, source};
}

/// A known attribute whose enumeration gains texts: the whole enumeration is given. Of a VEX_STRING they are the texts
/// of its source's codes.
constexpr AttributeDef knownEnum(uint32_t id, uint8_t marks, const vexEnumDef* enums, const char* source)
{
    return {id, nullptr, 0, 0, "", enums, nullptr, marks, source};
}

constexpr AttributeDef text(uint32_t id, const char* name, uint32_t maxLength, uint8_t marks, const char* source)
{
    return {id, name, VEX_STRING, maxLength, "", nullptr, nullptr, marks, source};
}

/// A text that is one of a closed list of words.
constexpr AttributeDef word(uint32_t id, const char* name, uint32_t maxLength, const char* const* words, uint8_t marks,
                            const char* source)
{
    return {id, name, VEX_STRING, maxLength, "", nullptr, words, marks, source};
}

constexpr AttributeDef number(uint32_t id, const char* name, const char* unit, uint8_t marks, const char* source)
{
    return {id, name, VEX_ULONG, 0, unit, nullptr, nullptr, marks, source};
}

/// A number of 64 bits: bytes, inodes, sectors.
constexpr AttributeDef quad(uint32_t id, const char* name, const char* unit, uint8_t marks, const char* source)
{
    return {id, name, VEX_UQUAD, 0, unit, nullptr, nullptr, marks, source};
}

/// A number with a sign or a fraction.
constexpr AttributeDef real(uint32_t id, const char* name, const char* unit, uint8_t marks, const char* source)
{
    return {id, name, VEX_DOUBLE, 0, unit, nullptr, nullptr, marks, source};
}

constexpr AttributeDef enumeration(uint32_t id, const char* name, const vexEnumDef* enums, uint8_t marks,
                                   const char* source)
{
    return {id, name, VEX_ULONG, 0, "", enums, nullptr, marks, source};
}

constexpr vexEnumDef YES_NO_ENUM_DEF[] = {{0, "No"}, {1, "Yes"}, {VEX_END, nullptr}};

constexpr AttributeDef yesNo(uint32_t id, const char* name, uint8_t marks, const char* source)
{
    return {id, name, VEX_ULONG, 0, "", YES_NO_ENUM_DEF, nullptr, static_cast<uint8_t>(marks | YES_NO), source};
}

constexpr AttributeDef dateTime(uint32_t id, const char* name, uint8_t marks, const char* source)
{
    return {id, name, VEX_DATETIME, 0, "", nullptr, nullptr, marks, source};
}

/// True when a row says all that a row of its kind must say and nothing else.
constexpr bool isConsistent(const AttributeDef& row)
{
    if (row.source == nullptr || row.unit == nullptr)
        return false;
    if (row.id < FIRST_ADDED_ID && row.name == nullptr)
        return row.type == 0;
    return row.name != nullptr && row.type >= VEX_UCHAR && row.type <= VEX_DATETIME &&
           (row.type == VEX_STRING) == (row.maxLength != 0) && (row.enums == nullptr || row.type == VEX_ULONG) &&
           (row.words == nullptr || row.type == VEX_STRING);
}

/// True when every row is consistent and no id and no name comes twice.
template <size_t N>
constexpr bool isWellFormed(const AttributeDef (&rows)[N])
{
    for (size_t i = 0; i < N; ++i) {
        if (!isConsistent(rows[i]))
            return false;
        for (size_t j = 0; j < i; ++j)
            if (rows[j].id == rows[i].id ||
                (rows[i].name != nullptr && rows[j].name != nullptr && std::string_view(rows[j].name) == rows[i].name))
                return false;
    }
    return true;
}

/// True when every id of the list is one of the table's.
template <size_t N>
constexpr bool areIdsOf(std::span<const uint32_t> ids, const AttributeDef (&rows)[N])
{
    for (const uint32_t id : ids) {
        bool found = false;
        for (const AttributeDef& row : rows)
            found = found || row.id == id;
        if (!found)
            return false;
    }
    return true;
}

/// True when every pairing names at least one attribute and only attributes of the table.
template <size_t N>
constexpr bool arePairingsOf(std::span<const PairingDef> pairings, const AttributeDef (&rows)[N])
{
    for (const PairingDef& pairing : pairings) {
        size_t count = 0;
        while (count < 3 && pairing.ids[count] != 0)
            ++count;
        if (count == 0 || !areIdsOf(std::span<const uint32_t>(pairing.ids, count), rows))
            return false;
    }
    return true;
}
} // namespace report
