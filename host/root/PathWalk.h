#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Descriptor.h"

namespace host
{
/// Goes along a path below a folder, name by name, every link followed by its text and never by the kernel: ".." and
/// absolute targets end at the folder, whatever is renamed meanwhile. Works on every kernel, and tells the path with
/// its links resolved. At most kMostLinks links are followed; magic links are none of them.
class PathWalk
{
public:
    static constexpr int kMostLinks = 40;     // as the kernel
    static constexpr size_t kMostNames = 256; // folders open at once

    /// folder stays open as long as the walk is used.
    explicit PathWalk(int folder) : folder_(folder) {}

    /// Goes to a path; false, with errno, when something on the way is missing or refused. followLast: a link at the
    /// path itself is followed too.
    bool go(std::string_view path, bool followLast);

    /// The path with all links resolved, "/" for the folder itself.
    std::string path() const;

    /// Opens what go() found; -1 with errno.
    int open(int flags) const;

private:
    struct Step {
        std::string name;
        Descriptor at; // O_PATH
    };

    bool enter(const std::string& name, bool follow);
    bool follow(const Step& link);
    void push(std::string_view path);
    int top() const { return steps_.empty() ? folder_ : steps_.back().at.get(); }

    int folder_;
    int links_ = 0;
    std::vector<Step> steps_;
    std::vector<std::string> pending_; // names still to go, the next one last
};
} // namespace host
