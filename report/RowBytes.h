#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "report/Report.h"

// Values as bytes between parts of one program: from a worker through a pipe, from a temporary file. Numbers stand in
// the machine's own order. What takes bytes apart takes nothing on trust.

namespace report
{
template <typename T>
void appendBytes(std::string& bytes, T value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void appendText(std::string& bytes, std::string_view text);
void appendContent(std::string& bytes, const Content& content);

/// Takes a value from the front of the bytes; false, and nothing taken, when there are too few.
template <typename T>
bool takeBytes(std::string_view& bytes, T& value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    if (bytes.size() < sizeof value)
        return false;
    memcpy(&value, bytes.data(), sizeof value);
    bytes.remove_prefix(sizeof value);
    return true;
}

/// A byte of 0 or 1.
bool takeFlag(std::string_view& bytes, bool& flag);

/// The text lives as long as the bytes.
bool takeText(std::string_view& bytes, std::string_view& text);

/// False when the bytes are no content: an unknown kind, a date-time that no report can hold.
bool takeContent(std::string_view& bytes, Content& content);
} // namespace report
