#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
class Root;

/// One line of /proc/self/mountinfo (proc(5)), octal escapes resolved.
struct Mount {
    std::string id, parent; // of the mount, and of the one that it is mounted on
    std::string number;     // major:minor of the device
    std::string root;       // of the mount within its file system
    std::string point;
    std::string options, superOptions;
    std::string type;
    std::string source;
};

constexpr std::string_view kMountinfo = "/proc/self/mountinfo";

/// The lines of a mountinfo text, those of another form left out.
std::vector<Mount> parseMounts(std::string_view text);

/// Which mounts no path leads to, because another one was mounted on their point or on a folder above it: what their
/// path is asked, the upper mount answers.
std::vector<bool> hiddenMounts(const std::vector<Mount>& mounts);

/// Every mount that the scan's process sees.
std::vector<Mount> readMounts(const Root& root);

/// A mount point of each device that has one, by its number.
std::map<std::string, std::string> mountPoints(const Root& root);

/// A text with octal escapes (\040) resolved.
std::string unescapedOctal(std::string_view text);
} // namespace host
