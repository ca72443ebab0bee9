// Sources: the distribution's release file, uname for the kernel and the machine, the C library for the locale. What
// cannot be read has a default: "Linux", version 0.0, no architecture.

#include "linux/OperatingSystemGroup.h"

#include <clocale>
#include <cstring>
#include <sys/utsname.h>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "linux/KernelVersion.h"
#include "linux/ReleaseFile.h"

// Values of OS_TYPE_ENUM_DEF.
static constexpr uint32_t kTypeLinux = 37;
static constexpr uint32_t kTypeLinuxPpc = 67;

// The distributions that write a release file, in the order in which they are asked.
static constexpr const char* kReleaseFiles[] = {
    "/etc/redhat-release",
    "/etc/turbolinux-release",
    "/etc/SuSE-release",
    "/etc/UnitedLinux-release",
};

// One distribution writes none and is known by other marks.
static constexpr char kCalderaMark[] = "/etc/.installed";
static constexpr char kCalderaIssue[] = "/etc/.issue";
static constexpr char kCalderaName[] = "Caldera Linux";

static constexpr char kDefaultName[] = "Linux";

static KernelVersion readKernelVersion()
{
    struct utsname kernel;
    if (uname(&kernel) != 0)
        return {};
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nuname name=%s node=%s rel=%s ver=%s mach=%s", kernel.sysname,
            kernel.nodename, kernel.release, kernel.version, kernel.machine);
    return parseKernelRelease(kernel.release);
}

static bool isCaldera()
{
    if (TextStream::openFile(kCalderaMark))
        return true;
    TextStream issue = TextStream::openFile(kCalderaIssue);
    char line[256];
    while (issue.readLine(line))
        if (strstr(line, "Caldera") != nullptr)
            return true;
    return false;
}

// The distribution's name, which is also its description; empty when a release file is empty.
static std::string readDistribution()
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

static std::string readArchitecture()
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
static const char* adoptMessagesLocale()
{
    const char* locale = setlocale(LC_MESSAGES, "");
    if (locale != nullptr)
        return locale;
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nsetlocale returned NULL");
    return setlocale(LC_MESSAGES, nullptr);
}

OperatingSystemGroup::OperatingSystemGroup() : VexGroup(GROUP_OPERATING_SYSTEM, 1) {}

VexTable* OperatingSystemGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_OPERATING_SYSTEM, "OperatingSystem");
    VexTable* table = new VexTable(getGroupId(), getGroupVersion());
    VexTableRow* row = new VexTableRow;

    const KernelVersion version = readKernelVersion();
    std::string name = readDistribution();
    const uint32_t type = name.find("PPC") != std::string::npos ? kTypeLinuxPpc : kTypeLinux;
    if (name.empty())
        name = kDefaultName;
    const std::string architecture = readArchitecture();
    static constexpr char kKernelMode[] = ""; // nothing on this platform tells it
    VEX_LOG(DEBUG_OPERATING_SYSTEM, VEX_LEVEL_DETAIL, "\nKernel mode retrieved=%s", kKernelMode);

    row->addString(OPER_SYS_NAME, name.c_str());
    row->addULong(OPER_SYS_TYPE, type);
    row->addULong(OPER_SYS_MAJOR_VERSION, static_cast<uint32_t>(version.major));
    row->addULong(OPER_SYS_MINOR_VERSION, static_cast<uint32_t>(version.minor));
    row->addString(OPER_SYS_SUB_VERSION, version.sub.c_str());
    row->addString(OPER_SYS_ARCH, architecture.c_str());
    row->addString(OPER_SYS_KERNEL_MODE, kKernelMode);
    row->addString(OPER_SYS_DESCRIPTION, name.c_str());
    row->addString(OPER_SYS_MESSAGES_LOCALE, adoptMessagesLocale());
    table->addRow(row);
    return table;
}
