#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

/// Names of attributes' ids, read from the headers that declare them: enumerations named as the group, with or without
/// "Host" before it, and "Attrib".
class IdNames
{
public:
    /// Adds a header's enumerations; false when it cannot be read.
    bool read(const std::string& header);

    /// The name of an attribute's id, empty when no header has one. group is the group's element.
    std::string_view find(std::string_view group, uint32_t attribute) const;

private:
    void addLine(std::string_view line);

    std::string group_; // in lower case, of the open enumeration; empty outside
    std::map<std::pair<std::string, uint32_t>, std::string> names_;
};
