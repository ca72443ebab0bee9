#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/services/UnitFile.h"

namespace host
{
class Root;

/// A service that has a unit file, found where systemd looks for them.
struct FoundUnit {
    std::string path;  // of its file
    std::string state; // as systemctl list-unit-files calls it: "enabled", "static", "masked" ...
    UnitFile file;
};

/// The services that unit files and the links between them tell of, by name. Names that are others' aliases, and
/// templates, are left out; instances that links ask for are there.
class UnitFolders
{
public:
    explicit UnitFolders(const Root& root);

    const std::map<std::string, FoundUnit>& services() const { return services_; }

    /// The service that a name means, a running instance too; null when no file tells of it.
    const FoundUnit* find(const std::string& name);

private:
    void list();
    void listAmendments(std::string folder, const std::string& name);
    void listLinks(const std::string& folder, const std::string& name);
    void listFile(std::string_view folder, const std::string& name);
    bool add(const std::string& name, const std::string& fileName);
    std::string stateOf(const std::string& name, const std::string& path, const UnitFile& file) const;
    bool isLinkedFrom(std::string_view folder, const std::string& name) const;
    std::vector<std::string> amendments(const std::string& name, const std::string& fileName) const;

    const Root& root_;
    std::map<std::string, std::string> files_;                // paths by name, of the first folder that has it
    std::map<std::string, std::set<std::string>> linkedFrom_; // folders with links that pull a service in or rename it
    std::map<std::string, std::map<std::string, std::string>> amended_; // by unit: paths by name
    std::map<std::string, FoundUnit> services_;
};
} // namespace host
