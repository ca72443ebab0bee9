#include "host/block/Mounts.h"

#include <map>
#include <utility>

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
    mount.id = words[0];
    mount.parent = words[1];
    mount.number = words[2];
    mount.root = unescapedOctal(words[3]);
    mount.point = unescapedOctal(words[4]);
    mount.options = words[5];
    mount.type = unescapedOctal(words[dash + 1]);
    mount.source = unescapedOctal(words[dash + 2]);
    mount.superOptions = dash + 3 < words.size() ? unescapedOctal(words[dash + 3]) : "";
    return true;
}

// Who stands on whom. A walk from one mount to another that stands on it passes the folders between: the first that has
// a mount of its own leads into that one. Such a mount came later, or the other one would stand on it.
class Stack
{
public:
    explicit Stack(const std::vector<Mount>& mounts) : mounts_(mounts)
    {
        for (size_t i = 0; i < mounts.size(); ++i) {
            points_[{mounts[i].parent, mounts[i].point}] = i;
            children_.emplace(mounts[i].parent, i);
        }
    }
    bool isCovered(const Mount& mount) const { return points_.contains({mount.id, mount.point}); }
    bool isPassedBy(size_t number) const;
    void hideAbove(const Mount& mount, bool isReached, std::vector<bool>& unreached, std::vector<size_t>& open) const;

private:
    const std::vector<Mount>& mounts_;
    std::map<std::pair<std::string_view, std::string_view>, size_t> points_; // the last of a parent's mounts on a point
    std::multimap<std::string_view, size_t> children_;
};

bool Stack::isPassedBy(size_t number) const
{
    std::string_view above = mounts_[number].point;
    for (size_t end = above.rfind('/'); end != 0 && end != above.npos; end = above.rfind('/')) {
        above = above.substr(0, end);
        const auto other = points_.find({mounts_[number].parent, above});
        if (other != points_.end() && other->second > number)
            return true;
    }
    return false;
}

// What stands on a mount that no path leads to is not reached either; on a covered one only what covers it is.
void Stack::hideAbove(const Mount& mount, bool isReached, std::vector<bool>& unreached, std::vector<size_t>& open) const
{
    const auto [first, last] = children_.equal_range(mount.id);
    for (auto child = first; child != last; ++child)
        if (!unreached[child->second] && !(isReached && mounts_[child->second].point == mount.point)) {
            unreached[child->second] = true;
            open.push_back(child->second);
        }
}
} // namespace

std::vector<bool> hiddenMounts(const std::vector<Mount>& mounts)
{
    const Stack stack(mounts);
    std::vector<bool> unreached(mounts.size());
    std::vector<size_t> open;
    for (size_t i = 0; i < mounts.size(); ++i)
        if (stack.isPassedBy(i)) {
            unreached[i] = true;
            open.push_back(i);
        }
    for (const Mount& mount : mounts)
        if (stack.isCovered(mount))
            stack.hideAbove(mount, true, unreached, open);
    while (!open.empty()) {
        const Mount& mount = mounts[open.back()];
        open.pop_back();
        stack.hideAbove(mount, false, unreached, open);
    }
    for (size_t i = 0; i < mounts.size(); ++i)
        unreached[i] = unreached[i] || stack.isCovered(mounts[i]);
    return unreached;
}

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
