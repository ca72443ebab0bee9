#pragma once

#include <map>
#include <string>
#include <string_view>

namespace host
{
class Root;

/// A script that starts a service.
struct InitScript {
    std::string summary; // its short description; empty where it has none
    std::string description;
    bool isService = false; // it says of itself that it is one, and is no helper of others
    bool isEnabled = false; // a run level starts it
};

/// What a script's heading says (LSB comments, chkconfig's, OpenRC's); isEnabled is not looked at.
InitScript parseInitScript(std::string_view text);

/// The services of /etc/init.d by name, with the run levels that start them: links "S20name" of rc2.d to rc5.d, or
/// those of OpenRC.
std::map<std::string, InitScript> readInitScripts(const Root& root);
} // namespace host
