#pragma once

#include <cstddef>
#include <string_view>

#include "com/VexCatalog.h"

// Checks of the catalog's tables at compile time. Look-ups and the report trust what is checked here: that a table
// ends, that an id or a name finds one row only, and that a text has room for at least one character.

/// True when the last row alone is the terminator, every other value has a text, and no value comes twice.
template <size_t N>
constexpr bool isWellFormed(const vexEnumDef (&rows)[N])
{
    for (size_t i = 0; i + 1 < N; ++i) {
        if (rows[i].value == VEX_END || rows[i].text == nullptr)
            return false;
        for (size_t j = 0; j < i; ++j)
            if (rows[j].value == rows[i].value)
                return false;
    }
    return rows[N - 1].value == VEX_END && rows[N - 1].text == nullptr;
}

/// True for a well-formed enumeration whose values ascend.
template <size_t N>
constexpr bool isAscending(const vexEnumDef (&rows)[N])
{
    for (size_t i = 1; i < N; ++i)
        if (rows[i].value <= rows[i - 1].value)
            return false;
    return isWellFormed(rows);
}

/// True when only texts have a maximum length.
constexpr bool isConsistent(const vexAttribDef& row)
{
    return row.id != VEX_END && row.name != nullptr && row.type >= VEX_UCHAR && row.type <= VEX_DATETIME &&
           (row.type == VEX_STRING) == (row.maxLength != 0);
}

/// True when the last row alone is the terminator, every other row is consistent, and no id and no name comes twice.
template <size_t N>
constexpr bool isWellFormed(const vexAttribDef (&rows)[N])
{
    for (size_t i = 0; i + 1 < N; ++i) {
        if (!isConsistent(rows[i]))
            return false;
        for (size_t j = 0; j < i; ++j)
            if (rows[j].id == rows[i].id || std::string_view(rows[j].name) == rows[i].name)
                return false;
    }
    const vexAttribDef& end = rows[N - 1];
    return end.id == VEX_END && end.name == nullptr && end.type == 0 && end.maxLength == 0 && end.enums == nullptr;
}

/// True when every key is the id of an attribute of the table.
template <size_t K, size_t N>
constexpr bool areKeysOf(const uint32_t (&keys)[K], const vexAttribDef (&rows)[N])
{
    for (const uint32_t key : keys) {
        bool found = false;
        for (size_t i = 0; i + 1 < N; ++i)
            found = found || rows[i].id == key;
        if (!found)
            return false;
    }
    return true;
}

/// True when the last row alone is the terminator, ids ascend, names are unique and every row has a mask. Tables of
/// other files are not looked at: their addresses are no constants to every compiler.
template <size_t N>
constexpr bool isWellFormed(const vexGroupDef (&rows)[N])
{
    for (size_t i = 0; i + 1 < N; ++i) {
        if (rows[i].id >= rows[i + 1].id || rows[i].name == nullptr || rows[i].version == 0 || rows[i].debugMask == 0)
            return false;
        for (size_t j = 0; j < i; ++j)
            if (std::string_view(rows[j].name) == rows[i].name)
                return false;
    }
    const vexGroupDef& end = rows[N - 1];
    return end.id == VEX_END && end.name == nullptr && end.attributes == nullptr && end.keys == nullptr &&
           end.numKeys == 0 && end.version == 0 && end.debugMask == 0;
}
