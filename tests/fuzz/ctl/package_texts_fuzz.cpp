// Any text as dpkg's, apt's, apk's and pacman's databases: no crash, no more packages than lines, and none without a
// name and a version.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/packages/Apk.h"
#include "host/packages/Dpkg.h"
#include "host/packages/Flatpak.h"
#include "host/packages/Pacman.h"
#include "host/packages/Snap.h"

namespace
{
void check(const host::Package& package)
{
    for (const std::string_view text : {package.name, package.version, package.revision, package.architecture,
                                        package.vendor, package.category, package.sourcePackage})
        if (text.find('\n') != std::string_view::npos)
            abort();
    if (package.name.empty() || package.version.empty())
        abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    const host::AptStates apt(text);
    size_t packages = 0;
    host::parseDpkgStatus(text, [&](const host::DpkgPackage& package) {
        check(package);
        apt.isAutomatic(package);
        ++packages;
    });
    host::parseApkInstalled(text, [&](const host::Package& package) {
        check(package);
        ++packages;
    });
    if (const std::optional<host::Package> package = host::parsePacmanDescription(text)) {
        check(*package);
        ++packages;
    }
    if (const std::optional<host::Package> package = host::parseSnapYaml(text))
        check(*package);
    if (host::newestRelease(text).size() > size)
        abort();
    for (const std::string_view name : host::parseApkWorld(text))
        if (name.empty() || name.find_first_of("<>=~@ \t\n") != std::string_view::npos)
            abort();
    if (packages > 2 * lines)
        abort();
    return 0;
}
