#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <sys/utsname.h>
#include <vector>

namespace fakemachine
{

struct Interface {
    std::string name;
    std::optional<uint32_t> address; // network byte order
    std::optional<uint32_t> mask;
    std::optional<std::string> hardware; // six bytes
    unsigned short hardwareType = 1;     // ARPHRD_ETHER
};

struct Login {
    int type = 0;
    int64_t seconds = 0;
    std::string line, id, user;
};

using Numbers = std::map<std::string, uint64_t>;

/// What no file of a machine tells: machine.conf, parsed (see README.md). What it does not say is empty.
struct MachineConf {
    /// Parses the text of a machine.conf; name stands in messages.
    static MachineConf parse(const std::string& text, const std::string& name);

    /// The errno that the machine's rules give call ("open", "stat", ...) on subject, 0 when it may succeed.
    int errorOf(const std::string& call, const std::string& subject) const;

    std::optional<utsname> uname;
    std::optional<int> processors, configuredProcessors;
    std::optional<Numbers> sysinfo;
    std::optional<int> pageSize;
    std::optional<int64_t> clock;
    bool network = false;
    std::vector<Interface> interfaces;
    std::map<std::string, std::string> hosts; // dotted address -> name
    int64_t hostSeconds = 0;                  // that each reverse look-up takes
    std::vector<Login> logins;
    std::map<std::string, Numbers> fileSystems;                // by mount point
    std::map<std::string, std::vector<std::string>> order;     // of the entries of a folder
    std::set<std::string> directories;                         // empty ones, which a repository cannot hold
    std::map<std::pair<std::string, std::string>, int> errors; // (call, subject) -> errno
};

} // namespace fakemachine
