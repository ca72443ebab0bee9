#include "preload/Machine.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <unistd.h>

#include "preload/Calls.h"
#include "preload/Text.h"

namespace fakemachine
{

static constexpr char kMemoryPath[] = "/dev/mem";
static constexpr int kMaxLinks = 8;

static int realStatus(const std::string& path, struct stat64* status)
{
    static auto* const real = realFunction<int(const char*, struct stat64*)>("lstat64");
    return real(path.c_str(), status);
}

static bool exists(const std::string& path)
{
    struct stat64 status;
    return realStatus(path, &status) == 0;
}

// The absolute path without "//", "." and "..".
static std::string normalise(const std::string& path)
{
    std::string result;
    for (size_t at = 0; at < path.size();) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string part = path.substr(at, end - at);
        if (part == "..")
            result.resize(result.empty() ? 0 : result.rfind('/'));
        else if (!part.empty() && part != ".")
            result += "/" + part;
        at = end + 1;
    }
    return result.empty() ? "/" : result;
}

static std::vector<std::string> splitList(const char* list)
{
    std::vector<std::string> parts;
    const std::string text = list == nullptr ? "" : list;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find(':', at), text.size());
        if (end > at)
            parts.push_back(normalise(text.substr(at, end - at)));
        at = end + 1;
    }
    return parts;
}

static std::string machineFolder()
{
    const char* folder = hasSettings() ? getenv("FAKEMACHINE") : nullptr;
    return folder == nullptr ? "" : folder;
}

Machine::Machine()
    : folder_(machineFolder()), passThrough_(splitList(getenv("FAKEMACHINE_PASS"))), commands_(folder_ + "/commands")
{
    const std::string confName = folder_ + "/machine.conf";
    conf_ = MachineConf::parse(readWhole(confName).value_or(""), confName);
}

Machine& Machine::instance()
{
    static Machine* machine = nullptr; // used until the process has ended
    static bool complete = false;
    if (machine == nullptr || !complete) {
        complete = hasSettings();
        machine = new Machine;
    }
    return *machine;
}

const MemoryImage& Machine::memory()
{
    if (!memory_) {
        const std::string name = folder_ + "/memory.txt";
        memory_.emplace(readWhole(name).value_or(""), name);
    }
    return *memory_;
}

DeviceNode Machine::device(const Location& where) const
{
    return DeviceNode(readWhole(where.path).value_or(""), where.path);
}

bool Machine::isPassedThrough(const std::string& name) const
{
    if (name == "/proc/self/exe" || name == "/dev/null")
        return true;
    for (const std::string& folder : passThrough_)
        if (name.compare(0, folder.size(), folder) == 0 && (name.size() == folder.size() || name[folder.size()] == '/'))
            return true;
    return false;
}

// The machine stands still, so that every name is looked at once.
const std::string& Machine::linkTarget(const std::string& name)
{
    static auto* const realReadlink = realFunction<ssize_t(const char*, char*, size_t)>("readlink");
    const auto known = linkTargets_.find(name);
    if (known != linkTargets_.end())
        return known->second;
    char target[4096];
    const ssize_t length = realReadlink((folder_ + "/root" + name).c_str(), target, sizeof target);
    return linkTargets_[name].assign(target, length > 0 ? static_cast<size_t>(length) : 0);
}

// Follows the symbolic links that were recorded, inside the machine.
std::string Machine::resolveLinks(const std::string& name, int depth)
{
    for (size_t end = name.find('/', 1);; end = name.find('/', end + 1)) {
        const std::string prefix = name.substr(0, end);
        std::string next = linkTarget(prefix);
        if (!next.empty() && depth < kMaxLinks) {
            if (next[0] != '/')
                next = prefix.substr(0, prefix.rfind('/')) + "/" + next;
            return resolveLinks(normalise(next + (end == std::string::npos ? "" : name.substr(end))), depth + 1);
        }
        if (end == std::string::npos)
            return name;
    }
}

Location Machine::locate(const char* path)
{
    if (folder_.empty() || path == nullptr || path[0] != '/')
        return {Place::Real, path == nullptr ? "" : path, path == nullptr ? "" : path};
    Location where;
    where.name = normalise(path);
    if (isPassedThrough(where.name)) {
        where.path = path;
        return where;
    }
    const int savedErrno = errno;
    where.name = resolveLinks(where.name, 0);
    where.place = Place::File;
    where.path = folder_ + "/root" + where.name;
    struct stat64 status;
    const std::string devicePath = folder_ + "/devices" + where.name;
    if (where.name == kMemoryPath && exists(folder_ + "/memory.txt")) {
        where.place = Place::Memory;
        where.path = folder_ + "/memory.txt";
    } else if (realStatus(devicePath, &status) == 0 && S_ISREG(status.st_mode)) {
        where.place = Place::Device;
        where.path = devicePath;
    } else if (!exists(where.path) && (exists(devicePath) || conf_.directories.count(where.name) != 0 ||
                                       (where.name == "/dev" && exists(folder_ + "/memory.txt")))) {
        where.path = folder_; // a folder that has no files of its own stands for one
    }
    errno = savedErrno;
    return where;
}

static void addEntries(const std::string& folder, bool devices, std::vector<FolderEntry>& entries)
{
    static auto* const realOpendir = realFunction<DIR*(const char*)>("opendir");
    static auto* const realReaddir = realFunction<dirent64*(DIR*)>("readdir64");
    static auto* const realClosedir = realFunction<int(DIR*)>("closedir");
    DIR* const stream = realOpendir(folder.c_str());
    if (stream == nullptr)
        return;
    while (const dirent64* entry = realReaddir(stream)) {
        const std::string name = entry->d_name;
        const bool known = std::any_of(entries.begin(), entries.end(), [&](const auto& e) { return e.name == name; });
        struct stat64 status;
        if (known || realStatus(folder + "/" + name, &status) != 0)
            continue;
        const unsigned char type = S_ISDIR(status.st_mode) ? DT_DIR : S_ISLNK(status.st_mode) ? DT_LNK : DT_REG;
        entries.push_back({name, devices && type == DT_REG ? static_cast<unsigned char>(DT_BLK) : type});
    }
    realClosedir(stream);
}

// First "." and "..", then those that the machine lists, then the others by name.
static void sortEntries(std::vector<FolderEntry>& entries, const std::vector<std::string>& order)
{
    const auto rank = [&](const std::string& name) -> size_t {
        const size_t listed = static_cast<size_t>(std::find(order.begin(), order.end(), name) - order.begin());
        if (listed < order.size())
            return listed + 2;
        return name == "." ? 0 : name == ".." ? 1 : order.size() + 2;
    };
    std::sort(entries.begin(), entries.end(), [&](const FolderEntry& a, const FolderEntry& b) {
        return rank(a.name) != rank(b.name) ? rank(a.name) < rank(b.name) : a.name < b.name;
    });
}

std::optional<std::vector<FolderEntry>> Machine::entries(const Location& where) const
{
    struct stat64 status;
    if (where.place == Place::File && realStatus(where.path, &status) != 0)
        return std::nullopt;
    if (where.place != Place::File || !S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return std::nullopt;
    }
    std::vector<FolderEntry> found = {{".", DT_DIR}, {"..", DT_DIR}};
    const std::string base = where.name == "/" ? "" : where.name;
    addEntries(folder_ + "/root" + base, false, found);
    addEntries(folder_ + "/devices" + base, true, found);
    for (const std::string& directory : conf_.directories)
        if (directory.rfind(base + "/", 0) == 0 && directory.find('/', base.size() + 1) == std::string::npos)
            found.push_back({directory.substr(base.size() + 1), DT_DIR});
    const auto order = conf_.order.find(where.name);
    sortEntries(found, order == conf_.order.end() ? std::vector<std::string>() : order->second);
    return found;
}

int Machine::errorOf(const char* call, const Location& where) const
{
    return conf_.errorOf(call, where.name);
}

} // namespace fakemachine
