// Software Packages: a row a package that a package manager of the system has installed. Each manager's database is
// read as it stands in its files (host/packages); no manager is asked.

#include <unordered_map>
#include <unordered_set>

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "host/packages/Apk.h"
#include "host/packages/Dpkg.h"
#include "host/packages/Flatpak.h"
#include "host/packages/Pacman.h"
#include "host/packages/RpmDatabase.h"
#include "host/packages/RpmHeader.h"
#include "host/packages/Snap.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// Of a database that is one text. A package costs about 1 KB there, with its files' names (apk) 10 KB.
constexpr size_t kDatabaseLimit = size_t{128} << 20;

// What somebody may install; more than this is no system's list.
constexpr size_t kMostPackages = 200'000;

// The rows of one manager's packages.
class PackageRows
{
public:
    PackageRows(const Machine& machine, Collection& collection, std::string_view manager)
        : machine_(machine), collection_(collection), manager_(manager)
    {
    }

    // A package that came before, or one too many, is left out and noted.
    void add(const Package& package, std::string_view source);

private:
    bool isNew(const std::string& id, const Package& package);

    const Machine& machine_;
    Collection& collection_;
    std::string_view manager_;
    std::unordered_set<std::string> known_; // keys
};

bool PackageRows::isNew(const std::string& id, const Package& package)
{
    if (known_.size() >= kMostPackages) {
        collection_.notes().note(std::string(manager_) + ": more than " + std::to_string(kMostPackages) + " packages");
        return false;
    }
    if (known_.insert(id + ' ' + std::string(package.version)).second)
        return true;
    collection_.notes().note(std::string(manager_) + ": a package comes again");
    return false;
}

void PackageRows::add(const Package& package, std::string_view source)
{
    const std::string id =
        std::string(package.name) + (package.architecture.empty() ? "" : ":") + std::string(package.architecture);
    if (!isNew(id, package))
        return;
    RowBuilder row(GROUP_SOFTWARE_PACKAGES);
    row.text(SOFTWARE_PACKAGES_PACKAGE_ID, id, source);
    row.text(SOFTWARE_PACKAGES_NAME, package.name, source);
    row.text(SOFTWARE_PACKAGES_VERSION, package.version, source);
    row.text(SOFTWARE_PACKAGES_REVISION, package.revision, source);
    row.text(SOFTWARE_PACKAGES_VENDOR, package.vendor, source);
    row.text(SOFTWARE_PACKAGES_CATEGORY, package.category, source);
    row.text(SOFTWARE_PACKAGES_MANAGER, manager_, source);
    row.text(SOFTWARE_PACKAGES_ARCHITECTURE, package.architecture, source);
    row.number(SOFTWARE_PACKAGES_INSTALLED_SIZE, package.installedKB, source);
    if (package.installDate && *package.installDate > 0)
        row.dateTime(SOFTWARE_PACKAGES_INSTALL_DATE, machine_.zone.local(*package.installDate), source);
    row.text(SOFTWARE_PACKAGES_SOURCE_PACKAGE, package.sourcePackage, source);
    row.yesNo(SOFTWARE_PACKAGES_AUTOMATIC, package.isAutomatic, source);
    collection_.add(std::move(row));
}

// dpkg writes a package's list of files whenever it unpacks it, and at no other time.
std::optional<int64_t> dpkgInstallDate(const Kernel& kernel, const DpkgPackage& package)
{
    if (package.name.find('/') != std::string_view::npos || package.architecture.find('/') != std::string_view::npos)
        return std::nullopt;
    std::string path = "/var/lib/dpkg/info/";
    path += package.name;
    if (package.isMultiarch)
        (path += ':') += package.architecture;
    return kernel.modificationTime(path += ".list");
}

void addDpkg(const Machine& machine, Collection& collection)
{
    constexpr const char* kStatus = "/var/lib/dpkg/status";
    const std::optional<std::string> status = machine.root.read(kStatus, kDatabaseLimit);
    if (!status)
        return;
    const std::optional<std::string> extended = machine.root.read("/var/lib/apt/extended_states", kDatabaseLimit);
    const AptStates apt(extended ? *extended : std::string_view());
    PackageRows rows(machine, collection, "dpkg");
    parseDpkgStatus(*status, [&](const DpkgPackage& found) {
        DpkgPackage package = found;
        package.installDate = dpkgInstallDate(machine.kernel, package);
        if (extended)
            package.isAutomatic = apt.isAutomatic(package);
        rows.add(package, kStatus);
    });
}

void addApk(const Machine& machine, Collection& collection)
{
    constexpr const char* kInstalled = "/lib/apk/db/installed";
    const std::optional<std::string> installed = machine.root.read(kInstalled, kDatabaseLimit);
    if (!installed)
        return;
    const std::optional<std::string> text = machine.root.read("/etc/apk/world");
    const std::unordered_set<std::string_view> world = parseApkWorld(text ? *text : std::string_view());
    PackageRows rows(machine, collection, "apk");
    parseApkInstalled(*installed, [&](Package package) {
        if (text)
            package.isAutomatic = world.count(package.name) == 0;
        rows.add(package, kInstalled);
    });
}

void addPacman(const Machine& machine, Collection& collection)
{
    constexpr size_t kMostDescription = 65536;
    const std::string local = "/var/lib/pacman/local/";
    PackageRows rows(machine, collection, "pacman");
    for (const std::string& name : machine.root.list(local)) {
        if (name == "ALPM_DB_VERSION")
            continue;
        const std::string path = local + name + "/desc";
        const std::string text = machine.root.read(path, kMostDescription).value_or("");
        if (const std::optional<Package> package = parsePacmanDescription(text))
            rows.add(*package, path);
    }
}
// The first of RPM's folders that has a database in one of its forms, and what was read of it.
class RpmDatabase
{
public:
    explicit RpmDatabase(const Machine& machine, Notes& notes) : machine_(machine), notes_(notes) {}

    bool read(const std::string& folder);
    const std::vector<RpmPackage>& packages() const { return packages_; }
    const std::string& path() const { return path_; }

private:
    // A few MB for a container, hundreds for thousands of packages.
    static constexpr size_t kLimit = size_t{512} << 20;

    void take(std::string_view header);
    void tell(const std::string& trouble);

    const Machine& machine_;
    Notes& notes_;
    std::string path_;
    std::vector<RpmPackage> packages_;
};

void RpmDatabase::take(std::string_view header)
{
    std::optional<RpmPackage> package = parseRpmHeader(header);
    if (!package)
        notes_.note(path_ + ": a header that is none");
    else if (packages_.size() <= kMostPackages)
        packages_.push_back(std::move(*package));
}

void RpmDatabase::tell(const std::string& trouble)
{
    if (!trouble.empty())
        notes_.note(path_ + ": " + trouble);
}

bool RpmDatabase::read(const std::string& folder)
{
    const TakeHeader takeHeader = [this](std::string_view header) { take(header); };
    path_ = folder + "/rpmdb.sqlite";
    if (std::optional<std::string> database = machine_.root.read(path_, kLimit)) {
        const std::optional<std::string> log = machine_.root.read(path_ + "-wal", kLimit);
        tell(readRpmSqlite(*database, log ? *log : std::string_view(), takeHeader));
        return true;
    }
    path_ = folder + "/Packages.db";
    if (const std::optional<std::string> database = machine_.root.read(path_, kLimit)) {
        tell(readRpmNdb(*database, takeHeader));
        return true;
    }
    path_ = folder + "/Packages";
    if (machine_.root.exists(path_))
        tell("a database of this form is not read");
    return machine_.root.exists(path_);
}

// Versions of one package that are installed side by side (kernels) may differ in their release alone. Then it stands
// in their versions, too, so that each row has keys of its own.
void addRpm(const Machine& machine, Collection& collection)
{
    RpmDatabase database(machine, collection.notes());
    if (!database.read("/usr/lib/sysimage/rpm") && !database.read("/var/lib/rpm"))
        return;
    const auto keyOf = [](const RpmPackage& package) {
        return package.name + ':' + package.architecture + ' ' + package.version;
    };
    std::unordered_map<std::string, size_t> count;
    for (const RpmPackage& package : database.packages())
        ++count[keyOf(package)];
    PackageRows rows(machine, collection, "rpm");
    for (const RpmPackage& package : database.packages()) {
        const std::string full = package.version + '-' + package.release;
        Package views = package.package();
        if (count[keyOf(package)] > 1)
            views.version = full;
        rows.add(views, database.path());
    }
}
constexpr size_t kMostDescription = size_t{1} << 20;

// A snap that is in use is mounted, its present revision as "current".
void addSnaps(const Machine& machine, Collection& collection)
{
    PackageRows rows(machine, collection, "snap");
    for (const char* place : {"/snap/", "/var/lib/snapd/snap/"}) {
        const std::vector<std::string> names = machine.root.list(place);
        for (const std::string& name : names) {
            const std::string path = place + name + "/current/meta/snap.yaml";
            const std::string text = machine.root.read(path, kMostDescription).value_or("");
            if (const std::optional<Package> package = parseSnapYaml(text))
                rows.add(*package, path);
        }
        if (!names.empty())
            return; // the other name of the same folder
    }
}

std::string joinedPath(const std::string& folder, std::string_view name)
{
    std::string path = folder;
    path.append("/").append(name);
    return path;
}

// The release that an application tells of; a runtime, and an application without one, has its branch for a version.
void addFlatpak(const Machine& machine, const std::string& deployed, const Package& flatpak, PackageRows& rows)
{
    const std::string active = joinedPath(deployed, "active");
    if (!machine.root.exists(active))
        return;
    std::string path = joinedPath(active, "files/share/metainfo/");
    path.append(flatpak.name).append(".metainfo.xml");
    const std::string text = machine.root.read(path, kMostDescription).value_or("");
    const std::string_view release = newestRelease(text);
    Package package = flatpak;
    if (!release.empty())
        package.version = release;
    rows.add(package, active);
}

// A folder for each architecture, and in it one for each branch; "current" links to one of these.
void addFlatpaksOf(const Machine& machine, const std::string& folder, const std::string& id, PackageRows& rows)
{
    for (const std::string& architecture : machine.root.list(folder)) {
        if (architecture == "current")
            continue;
        const std::string branches = joinedPath(folder, architecture);
        for (const std::string& branch : machine.root.list(branches)) {
            Package package;
            package.name = id;
            package.architecture = architecture;
            package.version = branch;
            addFlatpak(machine, joinedPath(branches, branch), package, rows);
        }
    }
}

void addFlatpaks(const Machine& machine, Collection& collection)
{
    PackageRows rows(machine, collection, "flatpak");
    for (const std::string folder : {"/var/lib/flatpak/app", "/var/lib/flatpak/runtime"})
        for (const std::string& id : machine.root.list(folder))
            addFlatpaksOf(machine, joinedPath(folder, id), id, rows);
}
} // namespace

void collectSoftwarePackages(const Machine& machine, Collection& collection)
{
    const RowsTogether together(collection);
    addDpkg(machine, collection);
    addRpm(machine, collection);
    addApk(machine, collection);
    addPacman(machine, collection);
    addSnaps(machine, collection);
    addFlatpaks(machine, collection);
}
} // namespace host
