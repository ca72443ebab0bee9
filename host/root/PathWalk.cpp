#include "host/root/PathWalk.h"

#include <algorithm>
#include <climits>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace host
{
// Names of a path, the first one to come last; "." and empty names left out.
void PathWalk::push(std::string_view path)
{
    const size_t before = pending_.size();
    while (!path.empty()) {
        const size_t end = std::min(path.find('/'), path.size());
        const std::string_view name = path.substr(0, end);
        if (!name.empty() && name != ".")
            pending_.emplace_back(name);
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(before), pending_.end());
}

bool PathWalk::go(std::string_view path, bool followLast)
{
    steps_.clear();
    pending_.clear();
    links_ = 0;
    push(path);
    while (!pending_.empty()) {
        const std::string name = std::move(pending_.back());
        pending_.pop_back();
        if (!enter(name, followLast || !pending_.empty()))
            return false;
    }
    return true;
}

bool PathWalk::enter(const std::string& name, bool followLinks)
{
    if (name == "..") {
        if (!steps_.empty())
            steps_.pop_back();
        return true;
    }
    if (steps_.size() >= kMostNames) {
        errno = ENAMETOOLONG;
        return false;
    }
    Step step{name, Descriptor(openat(top(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC))};
    struct stat status;
    if (!step.at.isOpen() || fstat(step.at.get(), &status) != 0)
        return false;
    if (S_ISLNK(status.st_mode) && followLinks)
        return follow(step);
    if (!S_ISDIR(status.st_mode) && !pending_.empty()) {
        errno = ENOTDIR;
        return false;
    }
    steps_.push_back(std::move(step));
    return true;
}

// Links of /proc that lead to a process's own files whatever their text says. The plain ones there ("self",
// "thread-self", "mounts", "net") tell their text's length as their size, or begin with a process's number.
static bool isMagic(int link, std::string_view target)
{
    struct statfs system;
    struct stat status;
    if (fstatfs(link, &system) != 0 || system.f_type != PROC_SUPER_MAGIC || fstat(link, &status) != 0)
        return false;
    const bool beginsWithNumber = !target.empty() && target.front() >= '0' && target.front() <= '9';
    const bool isPlain = (status.st_mode & 0777) == 0777 && static_cast<size_t>(status.st_size) == target.size();
    return !beginsWithNumber && !isPlain;
}

bool PathWalk::follow(const Step& link)
{
    char target[PATH_MAX];
    const ssize_t size = readlinkat(link.at.get(), "", target, sizeof target);
    if (size < 0)
        return false;
    const std::string_view text(target, static_cast<size_t>(size));
    if (++links_ > kMostLinks || isMagic(link.at.get(), text)) {
        errno = ELOOP;
        return false;
    }
    if (text.empty() || text.size() == sizeof target) {
        errno = text.empty() ? ENOENT : ENAMETOOLONG;
        return false;
    }
    if (text.front() == '/')
        steps_.clear();
    push(text);
    return true;
}

std::string PathWalk::path() const
{
    std::string path;
    for (const Step& step : steps_)
        path += '/' + step.name;
    return path.empty() ? "/" : path;
}

int PathWalk::open(int flags) const
{
    if (steps_.empty())
        return openat(folder_, ".", flags | O_CLOEXEC);
    const int parent = steps_.size() < 2 ? folder_ : steps_[steps_.size() - 2].at.get();
    return openat(parent, steps_.back().name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC);
}
} // namespace host
