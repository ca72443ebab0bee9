#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host
{
/// What a service's unit file and the files that amend it say (systemd.unit(5), systemd.service(5)). Specifiers ("%i")
/// stay as they are.
struct UnitFile {
    std::string description;
    std::string type;      // as it stands; empty without one
    std::string execStart; // the first command, without the marks before its path; secrets are not hidden
    std::string user;
    bool hasBusName = false;
    bool isWanted = false;   // an [Install] section tells who would pull it in
    bool hasOthers = false;  // it tells other units to enable with it
    bool isAnything = false; // some assignment was read

    /// The type that counts: systemd's own choice where the file has none.
    std::string effectiveType() const;
};

/// Reads one file's text into what the files before it said. Lines that end with a backslash go on in the next one.
void parseUnitFile(std::string_view text, UnitFile& unit);
} // namespace host
