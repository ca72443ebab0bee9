#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kManagers[] = {"dpkg", "rpm", "apk", "pacman", "snap", "flatpak", nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SOFTWARE_PACKAGES_PACKAGE_ID, PLAIN, "", "name:architecture", 255),
    known(SOFTWARE_PACKAGES_NAME, PLAIN, "", "the package's name"),
    known(SOFTWARE_PACKAGES_VERSION, PLAIN, "", "the package's version; of dpkg and rpm before the last \"-\"", 128),
    known(SOFTWARE_PACKAGES_REVISION, PLAIN, "", "of dpkg and rpm what follows the last \"-\" of the version", 128),
    known(SOFTWARE_PACKAGES_VENDOR, PLAIN, "", "the package's maintainer, vendor or publisher"),
    known(SOFTWARE_PACKAGES_CATEGORY, PLAIN, "", "the package's section or group"),
    word(SOFTWARE_PACKAGES_MANAGER, "Manager", 16, kManagers, PLAIN, "whose database it is"),
    text(SOFTWARE_PACKAGES_ARCHITECTURE, "Architecture", 32, PLAIN, "the package's architecture"),
    number(SOFTWARE_PACKAGES_INSTALLED_SIZE, "Installed Size", "kB", PLAIN, "the package's installed size"),
    dateTime(SOFTWARE_PACKAGES_INSTALL_DATE, "Install Date", PLAIN, "the database's time of installation; of dpkg the time of `/var/lib/dpkg/info/*.list`"),
    text(SOFTWARE_PACKAGES_SOURCE_PACKAGE, "Source Package", 255, PLAIN, "the package's source"),
    yesNo(SOFTWARE_PACKAGES_AUTOMATIC, "Automatic", PLAIN, "`/var/lib/apt/extended_states`; `/etc/apk/world`; the database's reason of installation"),
};
// clang-format on

constexpr uint32_t kKeys[] = {SOFTWARE_PACKAGES_MANAGER, SOFTWARE_PACKAGES_PACKAGE_ID, SOFTWARE_PACKAGES_VERSION};
constexpr PairingDef kPairing[] = {{{SOFTWARE_PACKAGES_MANAGER, SOFTWARE_PACKAGES_PACKAGE_ID}}};

static_assert(isWellFormed(kAttributes), "SoftwarePackages: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "SoftwarePackages: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "SoftwarePackages: pairing without attribute");
} // namespace

constexpr GroupDef SOFTWARE_PACKAGES_GROUP = {
    .id = GROUP_SOFTWARE_PACKAGES,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/var/lib/dpkg`, the RPM database, `/lib/apk/db`, `/var/lib/pacman`, `/var/lib/snapd`, "
              "`/var/lib/flatpak`: a row a package",
};
} // namespace report
