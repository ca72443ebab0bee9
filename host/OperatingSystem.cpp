// Operating System: which distribution and kernel run, since when, under whom, and how they are guarded.

#include <map>

#include "com/VexEnumValues.h"
#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "host/system/SystemFiles.h"
#include "host/system/Virtualization.h"
#include "host/text/Assignments.h"
#include "host/text/Secrets.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr std::string_view kUname = "uname";

// os-release(5): /etc before /usr/lib.
struct OsRelease {
    std::string path;
    std::map<std::string, std::string, std::less<>> values;

    MaybeFact fact(std::string_view name) const
    {
        const auto found = values.find(name);
        return found != values.end() ? MaybeFact(Fact{found->second, path}) : std::nullopt;
    }
};

OsRelease readOsRelease(const Root& root)
{
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"})
        if (const std::optional<std::string> text = root.read(path))
            return {path, parseAssignments(*text)};
    return {};
}

void addDistribution(const Root& root, RowBuilder& row)
{
    const OsRelease release = readOsRelease(root);
    const MaybeFact pretty = release.fact("PRETTY_NAME");
    const MaybeFact id = release.fact("ID");
    const MaybeFact version = release.fact("VERSION_ID");
    row.text(OPERATING_SYSTEM_NAME, pretty ? pretty : release.fact("NAME"));
    row.text(OPERATING_SYSTEM_DESCRIPTION, pretty ? pretty : release.fact("NAME"));
    row.text(OPERATING_SYSTEM_PRETTY_NAME, pretty);
    row.text(OPERATING_SYSTEM_DISTRIBUTION_ID, id);
    row.text(OPERATING_SYSTEM_VERSION_ID, version);
    if (id)
        row.text(OPERATING_SYSTEM_PRODUCT_ID, id->value + (version ? " " + version->value : ""), id->source);
}

// "6.1.0-18-amd64": major, minor and what follows the second dot.
void addRelease(const std::string& release, RowBuilder& row)
{
    const size_t first = std::min(release.find('.'), release.size());
    const size_t second = std::min(release.find('.', first + 1), release.size());
    row.number(OPERATING_SYSTEM_MAJOR_VERSION, report::leadingNumber(release), kUname);
    if (first == release.size())
        return;
    row.number(OPERATING_SYSTEM_MINOR_VERSION, report::leadingNumber(std::string_view(release).substr(first + 1)),
               kUname);
    if (second != release.size())
        row.text(OPERATING_SYSTEM_SUB_VERSION, release.substr(second + 1), kUname);
}

// Bits of the kernel's addresses; before 6.x only the machine's name tells them.
void addKernelMode(const Root& root, const std::string& machine, RowBuilder& row)
{
    constexpr const char* kPath = "/sys/kernel/address_bits";
    if (const MaybeFact bits = root.fact(kPath))
        row.text(OPERATING_SYSTEM_KERNEL_MODE, *bits);
    else if (!machine.empty())
        row.text(OPERATING_SYSTEM_KERNEL_MODE,
                 machine.find("64") != std::string::npos || machine == "s390x" ? "64" : "32", kUname);
}

void addKernel(const Machine& machine, RowBuilder& row)
{
    const KernelNames names = machine.kernel.names();
    const bool isPower = names.machine.starts_with("ppc");
    row.number(OPERATING_SYSTEM_TYPE, isPower ? OPERATING_SYSTEM_TYPE_LINUX_PPC : OPERATING_SYSTEM_TYPE_LINUX, kUname);
    addRelease(names.release, row);
    row.text(OPERATING_SYSTEM_KERNEL_RELEASE, names.release, kUname);
    row.text(OPERATING_SYSTEM_KERNEL_VERSION, names.version, kUname);
    row.text(OPERATING_SYSTEM_ARCH, names.machine, kUname);
    addKernelMode(machine.root, names.machine, row);
    if (const MaybeFact line = machine.root.fact("/proc/cmdline"))
        row.text(OPERATING_SYSTEM_COMMAND_LINE, maskCommandLine(line->value), line->source);
}

void addTimes(const Machine& machine, RowBuilder& row)
{
    if (const std::optional<int64_t> boot = bootTime(machine.root)) {
        row.dateTime(OPERATING_SYSTEM_LAST_BOOT_UP_TIME, machine.zone.local(*boot), kStatPath);
        row.dateTime(OPERATING_SYSTEM_BOOT_TIME, machine.zone.local(*boot), kStatPath);
    }
    for (const char* path : {"/", "/etc/machine-id"}) {
        const std::optional<int64_t> birth = machine.kernel.birthTime(path);
        if (!birth)
            continue;
        row.dateTime(OPERATING_SYSTEM_INSTALL_DATE, machine.zone.local(*birth), path);
        return;
    }
}

void addLocales(const Root& root, RowBuilder& row)
{
    const MaybeFact language = localeOf(root, "LANG");
    row.text(OPERATING_SYSTEM_LANGUAGE_VERSION, language);
    row.text(OPERATING_SYSTEM_LOCALE_ID, language);
    row.text(OPERATING_SYSTEM_MESSAGES_LOCALE, localeOf(root, "LC_MESSAGES"));
}

// "none [integrity] confidentiality": the mode in force stands in brackets.
MaybeFact lockdown(const Root& root)
{
    MaybeFact fact = root.fact("/sys/kernel/security/lockdown");
    const size_t open = fact ? fact->value.find('[') : std::string::npos;
    const size_t close = fact ? fact->value.find(']') : std::string::npos;
    if (open == std::string::npos || close == std::string::npos || close < open)
        return std::nullopt;
    fact->value = fact->value.substr(open + 1, close - open - 1);
    return fact;
}

void addInit(const Root& root, RowBuilder& row)
{
    constexpr const char* kSystemd = "/run/systemd/system";
    if (root.exists(kSystemd))
        row.text(OPERATING_SYSTEM_INIT_SYSTEM, "systemd", kSystemd);
    else
        row.text(OPERATING_SYSTEM_INIT_SYSTEM, root.fact("/proc/1/comm"));
}

// None is said only of a machine that told something of its processors.

// Debian's mark of an upgrade that wants a new start; elsewhere nothing tells, so that nothing is said.
void addReboot(const Root& root, RowBuilder& row)
{
    constexpr const char* kMark = "/run/reboot-required";
    const bool isMarked = root.exists(kMark);
    if (isMarked || root.exists("/var/lib/dpkg/status"))
        row.yesNo(OPERATING_SYSTEM_REBOOT_PENDING, isMarked, kMark);
}
} // namespace

void collectOperatingSystem(const Machine& machine, Collection& collection)
{
    const Root& root = machine.root;
    RowBuilder row(GROUP_OPERATING_SYSTEM);
    addDistribution(root, row);
    addKernel(machine, row);
    addTimes(machine, row);
    addLocales(root, row);
    row.text(OPERATING_SYSTEM_MACHINE_ID, machineId(root));
    row.text(OPERATING_SYSTEM_VIRTUALIZATION, virtualizationOf(machine));
    row.text(OPERATING_SYSTEM_CONTAINER, containerOf(machine));
    addInit(root, row);
    row.text(OPERATING_SYSTEM_SECURITY_MODULE, root.fact("/sys/kernel/security/lsm"));
    row.text(OPERATING_SYSTEM_LOCKDOWN, lockdown(root));
    addReboot(root, row);
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
