#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <nlohmann/json.hpp>

// Values out of JSON that nobody vouches for.

namespace host
{
/// Longer texts are none of a kernel's.
constexpr size_t kMostText = 4096;

/// A whole number that its type can hold.
template <class Number>
std::optional<Number> numberIn(const nlohmann::json& value)
{
    if (value.is_number_unsigned() && std::in_range<Number>(value.get<uint64_t>()))
        return static_cast<Number>(value.get<uint64_t>());
    if (value.is_number_integer() && !value.is_number_unsigned() && std::in_range<Number>(value.get<int64_t>()))
        return static_cast<Number>(value.get<int64_t>());
    return std::nullopt;
}

/// The member of an object, null when there is none or it is no object.
inline const nlohmann::json& memberOf(const nlohmann::json& object, const char* name)
{
    static const nlohmann::json none;
    const auto found = object.find(name);
    return found != object.end() ? *found : none;
}

/// The text that a member is; empty when it is none.
inline std::string textOf(const nlohmann::json& object, const char* name)
{
    const std::string* text = memberOf(object, name).get_ptr<const std::string*>();
    return text != nullptr && text->size() <= kMostText ? *text : std::string();
}

/// The number that a member is; 0 when it is none or too large.
template <class Number>
Number numberOf(const nlohmann::json& object, const char* name)
{
    return numberIn<Number>(memberOf(object, name)).value_or(Number{});
}

/// True when a member is there and true.
inline bool isTrue(const nlohmann::json& object, const char* name)
{
    const nlohmann::json& member = memberOf(object, name);
    return member.is_boolean() && member.get<bool>();
}
} // namespace host
