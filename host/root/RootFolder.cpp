#include "host/root/RootFolder.h"

#include <algorithm>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <memory>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "host/root/BoundedRead.h"
#include "host/root/NaturalOrder.h"
#include "host/root/PathWalk.h"

namespace host
{
static_assert(kNoRegularFile == EMEDIUMTYPE);

// The kernel gives up with EAGAIN whenever anything on the machine is renamed or mounted meanwhile.
static constexpr int kMostTries = 32;

static int openInside(int folder, const char* path, int flags)
{
    open_how how{};
    how.flags = static_cast<uint64_t>(flags);
    how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    return static_cast<int>(syscall(SYS_openat2, folder, path, &how, sizeof how));
}

RootFolder::RootFolder(const std::string& folder)
    : folder_(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)), way_(bestWay())
{
}

// ENOSYS on kernels before 5.6, EPERM or anything else from a filter: what cannot open the folder itself is of no use.
RootFolder::Way RootFolder::bestWay() const
{
    if (!isOpen())
        return Way::Walk;
    if (const Descriptor probe(openInside(folder_.get(), ".", O_PATH | O_DIRECTORY | O_CLOEXEC)); probe.isOpen())
        return Way::Openat2;
    struct stat folder;
    struct stat machine;
    const bool isWholeMachine = fstat(folder_.get(), &folder) == 0 && stat("/", &machine) == 0 &&
                                folder.st_dev == machine.st_dev && folder.st_ino == machine.st_ino;
    return isWholeMachine ? Way::Plain : Way::Walk;
}

// The path as the system calls take it, relative to the folder.
static std::string relative(std::string_view path)
{
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return path.empty() ? "." : std::string(path);
}

Descriptor RootFolder::open(std::string_view path, int flags) const
{
    flags |= O_CLOEXEC;
    const std::string name = relative(path);
    if (name.find('\0') != std::string::npos || !isOpen()) {
        errno = ENOENT;
        return Descriptor();
    }
    for (int tries = 0; way_ == Way::Openat2 && tries < kMostTries; ++tries) {
        const int opened = openInside(folder_.get(), name.c_str(), flags);
        if (opened != -1 || errno != EAGAIN)
            return Descriptor(opened);
    }
    // A plain call would follow magic links, which only /proc has.
    if (way_ == Way::Plain && !name.starts_with("proc"))
        return Descriptor(openat(folder_.get(), name.c_str(), flags));
    PathWalk walk(folder_.get());
    return Descriptor(walk.go(name, (flags & O_NOFOLLOW) == 0) ? walk.open(flags) : -1);
}

// Looks before it opens: opening alone starts a watchdog, winds a tape and wakes a writer of a FIFO.
Descriptor RootFolder::openRegular(std::string_view path) const
{
    for (const int flags : {O_PATH, O_RDONLY | O_NONBLOCK | O_NOCTTY}) {
        Descriptor file = open(path, flags);
        struct stat status;
        if (!file.isOpen() || fstat(file.get(), &status) != 0)
            return Descriptor();
        if (!S_ISREG(status.st_mode)) {
            errno = S_ISDIR(status.st_mode) ? EISDIR : kNoRegularFile;
            return Descriptor();
        }
        if (flags != O_PATH)
            return file;
    }
    return Descriptor();
}

Answer<std::string> RootFolder::read(std::string_view path, size_t limit) const
{
    const Descriptor file = openRegular(path);
    return file.isOpen() ? readBounded(file.get(), limit) : Answer<std::string>::failed(errno);
}

Answer<std::vector<std::string>> RootFolder::lines(std::string_view path, const LineChoice& isWanted,
                                                   size_t lineLimit) const
{
    const Descriptor file = openRegular(path);
    if (!file.isOpen())
        return Answer<std::vector<std::string>>::failed(errno);
    return chooseLines(file.get(), isWanted, {lineLimit, kDatabaseLimit, kChosenLimit});
}

static EntryKind kindOf(mode_t mode)
{
    return S_ISLNK(mode) ? EntryKind::Link : S_ISDIR(mode) ? EntryKind::Folder : EntryKind::File;
}

static EntryKind kindOf(int folder, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return kindOf(static_cast<mode_t>(DTTOIF(entry.d_type)));
    struct stat status;
    return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? kindOf(status.st_mode) : EntryKind::File;
}

static bool entryBefore(const Entry& left, const Entry& right)
{
    return naturallyBefore(left.name, right.name);
}

// Keeps the first entries in natural order, so that the same ones are kept whatever order the file system has.
static void keepFirst(std::vector<Entry>& entries, size_t limit)
{
    if (entries.size() <= limit)
        return;
    std::nth_element(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(limit), entries.end(), entryBefore);
    entries.resize(limit);
}

static Answer<std::vector<Entry>> listStream(DIR* stream, size_t limit)
{
    Answer<std::vector<Entry>> answer;
    std::vector<Entry>& entries = answer.value;
    size_t count = 0;
    errno = 0;
    while (const dirent* entry = count < RootFolder::kNamesRead ? readdir(stream) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        entries.push_back({std::string(name), kindOf(dirfd(stream), *entry)});
        ++count;
        if (entries.size() >= 2 * limit + 1)
            keepFirst(entries, limit);
        errno = 0;
    }
    answer.error = entries.empty() ? errno : 0;
    answer.isCut = count > limit;
    keepFirst(entries, limit);
    std::sort(entries.begin(), entries.end(), entryBefore);
    return answer;
}

Answer<std::vector<Entry>> RootFolder::list(std::string_view path, size_t limit) const
{
    Descriptor folder = open(path, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(folder.isOpen() ? fdopendir(folder.get()) : nullptr, closedir);
    if (stream == nullptr)
        return Answer<std::vector<Entry>>::failed(errno);
    folder.release(); // the stream's now
    return listStream(stream.get(), limit);
}

Answer<std::string> RootFolder::link(std::string_view path) const
{
    const Descriptor link = open(path, O_PATH | O_NOFOLLOW);
    struct stat status;
    if (!link.isOpen() || fstat(link.get(), &status) != 0)
        return Answer<std::string>::failed(errno);
    if (!S_ISLNK(status.st_mode))
        return Answer<std::string>::failed(EINVAL);
    std::string target(PATH_MAX, '\0');
    const ssize_t size = readlinkat(link.get(), "", target.data(), target.size());
    if (size < 0)
        return Answer<std::string>::failed(errno);
    target.resize(static_cast<size_t>(size));
    return {0, std::move(target), false};
}

Answer<std::string> RootFolder::realPath(std::string_view path) const
{
    PathWalk walk(folder_.get());
    if (!isOpen() || path.find('\0') != std::string_view::npos)
        return Answer<std::string>::failed(ENOENT);
    if (!walk.go(path, true))
        return Answer<std::string>::failed(errno);
    return {0, walk.path(), false};
}

Answer<EntryKind> RootFolder::kind(std::string_view path) const
{
    const Descriptor entry = open(path, O_PATH | O_NOFOLLOW);
    struct stat status;
    if (!entry.isOpen() || fstat(entry.get(), &status) != 0)
        return Answer<EntryKind>::failed(errno);
    return {0, kindOf(status.st_mode), false};
}
} // namespace host
