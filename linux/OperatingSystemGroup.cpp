// Sources: the distribution's release file, uname for the kernel and the machine, the C library for the locale. What
// cannot be read has a default: "Linux", version 0.0, no architecture.

#include "linux/OperatingSystemGroup.h"

#include <clocale>
#include <cstring>
#include <sys/utsname.h>

#include "com/VexDebug.h"
#include "com/VexEnumValues.h"
#include "com/VexTable.h"
#include "linux/system/KernelVersion.h"
#include "linux/system/ReleaseFile.h"
#include "linux/text/TextParse.h"

namespace
{

// The distributions that write a release file, in the order in which they are asked.
constexpr const char* kReleaseFiles[] = {
    "/etc/redhat-release",
    "/etc/turbolinux-release",
    "/etc/SuSE-release",
    "/etc/UnitedLinux-release",
};

// One distribution writes none and is known by other marks.
constexpr char kCalderaMark[] = "/etc/.installed";
constexpr char kCalderaIssue[] = "/etc/.issue";
constexpr char kCalderaName[] = "Caldera Linux";

constexpr char kDefaultName[] = "Linux";

KernelVersion readKernelVersion()
{
    struct utsname kernel;
    if (uname(&kernel) != 0)
        return {};
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nuname name=%s node=%s rel=%s ver=%s mach=%s", kernel.sysname,
            kernel.nodename, kernel.release, kernel.version, kernel.machine);
    return parseKernelRelease(kernel.release);
}

bool isCaldera()
{
    if (TextStream::openFile(kCalderaMark))
        return true;
    TextStream issue = TextStream::openFile(kCalderaIssue);
    char line[256];
    while (issue.readLine(line))
        if (contains(line, "Caldera"))
            return true;
    return false;
}

// The distribution's name, which is also its description; empty when a release file is empty.
std::string readDistribution()
{
    for (const char* path : kReleaseFiles) {
        TextStream file = TextStream::openFile(path);
        if (!file)
            continue;
        std::string name = readReleaseName(file);
        VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nOS Description retrieved=%s", name.c_str());
        return name;
    }
    return isCaldera() ? kCalderaName : "";
}

std::string readArchitecture()
{
    static constexpr size_t kMaxLength = 19;
    struct utsname kernel;
    std::string architecture;
    if (uname(&kernel) == 0)
        architecture.assign(kernel.machine, strnlen(kernel.machine, kMaxLength));
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nArch retrieved=%s", architecture.c_str());
    return architecture;
}

// Adopts the environment's messages locale for the rest of the process.
const char* adoptMessagesLocale()
{
    const char* locale = setlocale(LC_MESSAGES, "");
    if (locale != nullptr)
        return locale;
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nsetlocale returned NULL");
    return setlocale(LC_MESSAGES, nullptr);
}

} // namespace

OperatingSystemGroup::OperatingSystemGroup() : VexGroup(GROUP_OPERATING_SYSTEM, 1) {}

VexTable* OperatingSystemGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_OPERATING_SYSTEM, "OperatingSystem");
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    auto* const row = new VexTableRow;

    const KernelVersion version = readKernelVersion();
    std::string name = readDistribution();
    const uint32_t type =
        name.find("PPC") != std::string::npos ? OPERATING_SYSTEM_TYPE_LINUX_PPC : OPERATING_SYSTEM_TYPE_LINUX;
    if (name.empty())
        name = kDefaultName;
    const std::string architecture = readArchitecture();
    static constexpr char kKernelMode[] = ""; // nothing on this platform tells it
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nKernel mode retrieved=%s", kKernelMode);

    row->addString(OPERATING_SYSTEM_NAME, name.c_str());
    row->addULong(OPERATING_SYSTEM_TYPE, type);
    row->addULong(OPERATING_SYSTEM_MAJOR_VERSION, static_cast<uint32_t>(version.major));
    row->addULong(OPERATING_SYSTEM_MINOR_VERSION, static_cast<uint32_t>(version.minor));
    row->addString(OPERATING_SYSTEM_SUB_VERSION, version.sub.c_str());
    row->addString(OPERATING_SYSTEM_ARCH, architecture.c_str());
    row->addString(OPERATING_SYSTEM_KERNEL_MODE, kKernelMode);
    row->addString(OPERATING_SYSTEM_DESCRIPTION, name.c_str());
    row->addString(OPERATING_SYSTEM_MESSAGES_LOCALE, adoptMessagesLocale());
    table->addRow(row);
    return table;
}
