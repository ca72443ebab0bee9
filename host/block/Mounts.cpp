#include "host/block/Mounts.h"

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr size_t kMostBytes = size_t{64} << 20; // hundreds of thousands of mounts
constexpr size_t kMostLine = size_t{1} << 20;   // two paths, a source and options, each of pages at most

// "36 35 98:0 /root /mnt rw,noatime master:1 - ext3 /dev/root rw,errors=continue": fields behind "-" stand behind a
// varying number of optional ones.
bool parseMount(std::string_view line, Mount& mount)
{
    const std::vector<std::string_view> words = report::words(line);
    size_t dash = 6;
    while (dash < words.size() && words[dash] != "-")
        ++dash;
    if (words.size() < 7 || dash + 2 >= words.size())
        return false;
    mount.number = words[2];
    mount.root = unescapedOctal(words[3]);
    mount.point = unescapedOctal(words[4]);
    mount.options = words[5];
    mount.type = unescapedOctal(words[dash + 1]);
    mount.source = unescapedOctal(words[dash + 2]);
    mount.superOptions = dash + 3 < words.size() ? unescapedOctal(words[dash + 3]) : "";
    return true;
}
} // namespace

std::string unescapedOctal(std::string_view text)
{
    constexpr size_t kDigits = 3;
    std::string plain;
    while (!text.empty()) {
        const bool isEscape = text[0] == '\\' && text.size() > kDigits;
        const auto byte = isEscape ? report::parseNumber<uint8_t>(text.substr(1, kDigits), 8) : std::nullopt;
        plain += byte ? static_cast<char>(*byte) : text[0];
        text.remove_prefix(byte ? 1 + kDigits : 1);
    }
    return plain;
}

std::vector<Mount> parseMounts(std::string_view text)
{
    std::vector<Mount> mounts;
    std::string_view line;
    while (report::takeLine(text, line)) {
        Mount mount;
        if (line.size() <= kMostLine && parseMount(line, mount))
            mounts.push_back(std::move(mount));
    }
    return mounts;
}

std::vector<Mount> readMounts(const Root& root)
{
    return parseMounts(root.read(kMountinfo, kMostBytes).value_or(""));
}

std::map<std::string, std::string> mountPoints(const Root& root)
{
    std::map<std::string, std::string> points;
    for (const Mount& mount : readMounts(root))
        points.try_emplace(mount.number, mount.point);
    return points;
}
} // namespace host
