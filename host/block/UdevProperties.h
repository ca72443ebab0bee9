#pragma once

#include <map>
#include <string>

#include "host/Fact.h"

namespace host
{
class Root;

/// What udev has found on a device and keeps for all to read: the lines "E:NAME=value" of /run/udev/data.
class UdevProperties
{
public:
    /// Of the block device with this number ("8:1"); none when the number is empty.
    UdevProperties(const Root& root, const std::string& number);

    /// A property, with hexadecimal escapes (\x20) resolved; absent when udev does not know it.
    MaybeFact value(const char* name) const;

private:
    std::string path_;
    std::map<std::string, std::string, std::less<>> values_;
};
} // namespace host
