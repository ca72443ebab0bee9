#include "host/record/RecordingFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

#include "host/Workers.h"

namespace host
{
static constexpr int kOpenFolder = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

RecordingFolder::RecordingFolder(const std::string& folder)
    : folder_(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
{
}

void RecordingFolder::fail(std::string_view path, int error)
{
    if (trouble_.empty())
        trouble_ = std::string(path) + ": " + strerror(error);
}

// Takes room for what is about to be written; false when there is none, or when writing has ended.
bool RecordingFolder::claim(size_t names, size_t bytes)
{
    names_ += names;
    bytes_ += bytes;
    if (trouble_.empty() && names_ > kMostNames)
        trouble_ = "more than " + std::to_string(kMostNames) + " names";
    if (trouble_.empty() && bytes_ > kMostBytes)
        trouble_ = "more than " + std::to_string(kMostBytes >> 20) + " MiB";
    return trouble_.empty();
}

// Opens the folder that a path is in, name by name, and makes those that are missing. Not open, with errno, when
// something else is in their place.
Descriptor RecordingFolder::openParent(std::string_view path, std::string& name)
{
    Descriptor at(openat(folder_.get(), ".", kOpenFolder));
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    for (size_t end = path.find('/'); end != std::string_view::npos && at.isOpen(); end = path.find('/')) {
        const std::string folder(path.substr(0, end));
        path.remove_prefix(end + 1);
        Descriptor next(openat(at.get(), folder.c_str(), kOpenFolder));
        if (!next.isOpen() && errno == ENOENT && mkdirat(at.get(), folder.c_str(), 0700) == 0)
            next = Descriptor(openat(at.get(), folder.c_str(), kOpenFolder));
        at = std::move(next);
    }
    name = path;
    return at;
}

void RecordingFolder::file(std::string_view path, std::string_view content)
{
    std::string name;
    if (!claim(1, content.size()))
        return;
    const Descriptor parent = openParent(path, name);
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC;
    const Descriptor file(parent.isOpen() ? openat(parent.get(), name.c_str(), kFlags, 0600) : -1);
    if (!file.isOpen() || !writeAll(file.get(), content))
        fail(path, errno);
}

void RecordingFolder::folder(std::string_view path)
{
    std::string name;
    if (!claim(1, 0))
        return;
    const Descriptor parent = openParent(path, name);
    if (!parent.isOpen() || (!name.empty() && mkdirat(parent.get(), name.c_str(), 0700) != 0 && errno != EEXIST))
        fail(path, errno);
}

void RecordingFolder::link(std::string_view path, const std::string& target)
{
    std::string name;
    if (!claim(1, target.size()))
        return;
    const Descriptor parent = openParent(path, name);
    if (!parent.isOpen() || symlinkat(target.c_str(), parent.get(), name.c_str()) != 0)
        fail(path, errno);
}
} // namespace host
