// opendir, readdir and closedir on the machine's folders, in the machine's order.

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <set>

#include "preload/Calls.h"
#include "preload/Export.h"
#include "preload/Machine.h"

using namespace fakemachine;

namespace
{

// What the program holds as a DIR*.
struct OpenFolder {
    std::string name;
    std::vector<FolderEntry> entries;
    size_t next = 0;
    dirent narrow{};
    dirent64 wide{};
};

std::set<const void*>& openFolders()
{
    static auto* const folders = new std::set<const void*>;
    return *folders;
}

bool isOurs(DIR* stream)
{
    return openFolders().count(stream) != 0;
}

template <typename Entry>
Entry* nextEntry(OpenFolder& folder, Entry& out)
{
    Call call("readdir", folder.name);
    if (call.endsData())
        return nullptr;
    if (call.fails())
        return nullptr;
    if (const int error = Machine::instance().conf().errorOf("readdir", folder.name); error != 0) {
        errno = error;
        return nullptr;
    }
    if (folder.next == folder.entries.size())
        return nullptr;
    const FolderEntry& entry = folder.entries[folder.next++];
    out.d_ino = static_cast<decltype(out.d_ino)>(folder.next);
    out.d_type = entry.type;
    out.d_reclen = sizeof out;
    snprintf(out.d_name, sizeof out.d_name, "%s", entry.name.c_str());
    return &out;
}

} // namespace

FAKE(DIR*, opendir, const char* path)
{
    static auto* const real = realFunction<DIR*(const char*)>("opendir");
    Call call("opendir", path);
    if (call.fails())
        return nullptr;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (where.place == Place::Real)
        return real(path);
    if (const int error = machine.errorOf("opendir", where); error != 0) {
        errno = error;
        return nullptr;
    }
    std::optional<std::vector<FolderEntry>> entries = machine.entries(where);
    if (!entries)
        return nullptr;
    OpenFolder* const folder = new OpenFolder;
    folder->name = where.name;
    folder->entries = std::move(*entries);
    openFolders().insert(folder);
    return reinterpret_cast<DIR*>(folder);
}

FAKE(dirent*, readdir, DIR* stream)
{
    static auto* const real = realFunction<dirent*(DIR*)>("readdir");
    OpenFolder* const folder = reinterpret_cast<OpenFolder*>(stream);
    return isOurs(stream) ? nextEntry(*folder, folder->narrow) : real(stream);
}

FAKE(dirent64*, readdir64, DIR* stream)
{
    static auto* const real = realFunction<dirent64*(DIR*)>("readdir64");
    OpenFolder* const folder = reinterpret_cast<OpenFolder*>(stream);
    return isOurs(stream) ? nextEntry(*folder, folder->wide) : real(stream);
}

FAKE(int, closedir, DIR* stream)
{
    static auto* const real = realFunction<int(DIR*)>("closedir");
    Call call("closedir");
    if (!isOurs(stream))
        return real(stream);
    openFolders().erase(stream);
    delete reinterpret_cast<OpenFolder*>(stream);
    return call.fails() ? -1 : 0;
}

FAKE(void, rewinddir, DIR* stream)
{
    if (isOurs(stream))
        reinterpret_cast<OpenFolder*>(stream)->next = 0;
    else
        realFunction<void(DIR*)>("rewinddir")(stream);
}
