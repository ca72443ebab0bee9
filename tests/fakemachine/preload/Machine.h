#pragma once

#include <map>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "preload/Commands.h"
#include "preload/DeviceNode.h"
#include "preload/MachineConf.h"
#include "preload/MemoryImage.h"

namespace fakemachine
{

enum class Place {
    Real,   // not the machine's: relative paths, the program itself, /dev/null, what FAKEMACHINE_PASS lists
    File,   // a file or folder of the machine, or nothing
    Device, // a device node
    Memory, // /dev/mem
};

/// Where a path of the program leads.
struct Location {
    Place place = Place::Real;
    std::string path; // on the real computer
    std::string name; // as the program knows it, without superfluous "/", "." and ".."
};

/// One entry of a folder.
struct FolderEntry {
    std::string name;
    unsigned char type = 0; // DT_DIR, ...
};

/// The recorded machine of this process: the folder that FAKEMACHINE names.
class Machine
{
public:
    /// The one machine; read at the first call.
    static Machine& instance();

    const MachineConf& conf() const { return conf_; }
    const Commands& commands() const { return commands_; }
    const MemoryImage& memory();
    DeviceNode device(const Location& where) const;

    Location locate(const char* path);
    /// The entries of a folder in the machine's order, or nothing (errno set) when it is none.
    std::optional<std::vector<FolderEntry>> entries(const Location& where) const;
    /// The errno that the machine's rules give call on this path, 0 for none.
    int errorOf(const char* call, const Location& where) const;

private:
    Machine();
    const std::string& linkTarget(const std::string& name);
    std::string resolveLinks(const std::string& name, int depth);
    bool isPassedThrough(const std::string& name) const;

    std::string folder_; // empty: no machine, everything is real
    std::vector<std::string> passThrough_;
    MachineConf conf_;
    Commands commands_;
    std::optional<MemoryImage> memory_;
    std::map<std::string, std::string> linkTargets_; // of what has been looked at; empty: no link
};

} // namespace fakemachine
