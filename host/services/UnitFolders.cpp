#include "host/services/UnitFolders.h"

#include <array>

#include "host/Root.h"

namespace host
{
namespace
{
constexpr std::string_view kAdministrator = "/etc/systemd/system", kRuntime = "/run/systemd/system";

// Where systemd looks, best first. /lib is another name of /usr/lib, or an older home of the same.
constexpr std::array<std::string_view, 9> kFolders{"/run/systemd/transient",
                                                   "/run/systemd/generator.early",
                                                   kAdministrator,
                                                   kRuntime,
                                                   "/run/systemd/generator",
                                                   "/usr/local/lib/systemd/system",
                                                   "/usr/lib/systemd/system",
                                                   "/lib/systemd/system",
                                                   "/run/systemd/generator.late"};

constexpr size_t kMostUnits = 20'000;
constexpr std::string_view kService = ".service";

// "getty@tty1.service" -> "getty@.service"; empty for what is no instance.
std::string templateOf(const std::string& name)
{
    const size_t at = name.find('@');
    if (at == std::string::npos || name.compare(at + 1, std::string::npos, kService) == 0)
        return "";
    return name.substr(0, at + 1) + std::string(kService);
}

bool isTemplate(const std::string& name)
{
    return name.ends_with("@.service");
}
} // namespace

UnitFolders::UnitFolders(const Root& root) : root_(root)
{
    list();
    for (const auto& [name, path] : files_) {
        const std::string target = root_.linkName(path).value_or(name);
        const bool isAlias = target != name && files_.count(target) != 0;
        if (!isTemplate(name) && !isAlias)
            add(name, name);
    }
    for (const auto& [name, folders] : linkedFrom_)
        find(name);
}

// Folders "NAME.wants" and "NAME.requires" hold links to what NAME pulls in, "NAME.d" what amends NAME's file.
void UnitFolders::list()
{
    for (const std::string_view place : kFolders) {
        const std::string folder(place);
        for (const std::string& name : root_.list(folder)) {
            if (name.ends_with(kService))
                listFile(folder, name);
            else if (name.ends_with(".wants") || name.ends_with(".requires"))
                listLinks(folder, name);
            else if (name.ends_with(".service.d") && amended_.size() < kMostUnits)
                listAmendments(folder + '/', name);
        }
    }
}

void UnitFolders::listAmendments(std::string folder, const std::string& name)
{
    folder += name;
    const std::vector<std::string> files = root_.list(folder);
    folder += '/';
    for (const std::string& file : files)
        if (file.ends_with(".conf"))
            amended_[name.substr(0, name.size() - 2)].try_emplace(file, folder + file);
}

// A link to a file of another name is another name of that service, and made by who enabled it.
void UnitFolders::listFile(std::string_view folder, const std::string& name)
{
    const std::string path = std::string(folder) + '/' + name;
    if (files_.size() >= kMostUnits)
        return;
    files_.try_emplace(name, path);
    if (folder != kAdministrator && folder != kRuntime)
        return;
    const std::optional<std::string> target = root_.linkName(path);
    if (target && *target != name && linkedFrom_.size() < kMostUnits)
        linkedFrom_[*target].insert(std::string(folder));
}

void UnitFolders::listLinks(const std::string& folder, const std::string& name)
{
    std::string path = folder;
    path.append("/").append(name);
    for (const std::string& link : root_.list(path))
        if (link.ends_with(kService) && linkedFrom_.size() < kMostUnits)
            linkedFrom_[link].insert(folder);
}

const FoundUnit* UnitFolders::find(const std::string& name)
{
    const auto known = services_.find(name);
    if (known != services_.end())
        return &known->second;
    const std::string fileName = templateOf(name);
    if (fileName.empty() || files_.count(fileName) == 0 || !add(name, fileName))
        return nullptr;
    return &services_.at(name);
}

// In the order of their names, whatever folders they stand in; the instance's own before its template's.
std::vector<std::string> UnitFolders::amendments(const std::string& name, const std::string& fileName) const
{
    std::map<std::string, std::string> files;
    for (const std::string& unit : {name, fileName}) {
        const auto found = amended_.find(unit);
        if (found != amended_.end())
            files.insert(found->second.begin(), found->second.end());
    }
    std::vector<std::string> paths;
    paths.reserve(files.size());
    for (const auto& [file, path] : files)
        paths.push_back(path);
    return paths;
}

// An empty file, and a link to /dev/null, say that there is to be no such service. Returns false when a name leads to
// no file that can be read.
bool UnitFolders::add(const std::string& name, const std::string& fileName)
{
    constexpr size_t kMostBytes = size_t{1} << 20;
    FoundUnit unit;
    unit.path = files_.at(fileName);
    const bool isNull = root_.link(unit.path) == "/dev/null";
    const std::optional<std::string> text = isNull ? std::string() : root_.read(unit.path, kMostBytes);
    if (!text || services_.size() >= kMostUnits)
        return false;
    if (text->empty()) {
        unit.state = unit.path.starts_with("/run/") ? "masked-runtime" : "masked";
    } else {
        parseUnitFile(*text, unit.file);
        for (const std::string& path : amendments(name, fileName))
            parseUnitFile(root_.read(path, kMostBytes).value_or(""), unit.file);
        unit.state = stateOf(name, unit.path, unit.file);
    }
    services_.emplace(name, std::move(unit));
    return true;
}

bool UnitFolders::isLinkedFrom(std::string_view folder, const std::string& name) const
{
    const auto found = linkedFrom_.find(name);
    return found != linkedFrom_.end() && found->second.count(std::string(folder)) != 0;
}

std::string UnitFolders::stateOf(const std::string& name, const std::string& path, const UnitFile& file) const
{
    if (path.starts_with("/run/systemd/transient/"))
        return "transient";
    if (path.starts_with("/run/systemd/generator"))
        return "generated";
    if (isLinkedFrom(kAdministrator, name))
        return "enabled";
    if (isLinkedFrom(kRuntime, name))
        return "enabled-runtime";
    if (path.starts_with(kAdministrator) && root_.link(path))
        return "linked";
    if (file.isWanted)
        return "disabled";
    return file.hasOthers ? "indirect" : "static";
}
} // namespace host
