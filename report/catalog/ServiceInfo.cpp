#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SERVICE_INFO_SERVICE_NAME, PLAIN, "", "systemd over D-Bus, Id; name of the unit file or of the script in `/etc/init.d`", 255),
    known(SERVICE_INFO_DISPLAY_NAME, PLAIN, "", "as Description; of a script its Short-Description"),
    known(SERVICE_INFO_DESCRIPTION, PLAIN, "", "systemd over D-Bus or the unit file, Description; of a script what its heading says"),
    known(SERVICE_INFO_PATH_NAME, PLAIN, "", "systemd over D-Bus or the unit file, first command of ExecStart, secrets masked; the script"),
    known(SERVICE_INFO_SERVICE_TYPE, PLAIN, "", "systemd over D-Bus or the unit file, Type"),
    known(SERVICE_INFO_STARTED, VOLATILE, "", "Yes when State is active or reloading, else No"),
    known(SERVICE_INFO_START_MODE, PLAIN, "", "Unit File State without \"-runtime\"; of a script enabled where a run level starts it"),
    known(SERVICE_INFO_START_NAME, PLAIN, "", "systemd over D-Bus or the unit file, User; root when it is empty"),
    known(SERVICE_INFO_STATE, VOLATILE, "", "systemd over D-Bus, ActiveState"),
    known(SERVICE_INFO_STATUS, VOLATILE, "", "systemd over D-Bus, SubState"),
    text(SERVICE_INFO_UNIT_FILE_STATE, "Unit File State", 32, PLAIN, "systemd over D-Bus, UnitFileState, or the links that enable and mask the unit file"),
};
// clang-format on

constexpr uint32_t kKeys[] = {SERVICE_INFO_SERVICE_NAME};

static_assert(isWellFormed(kAttributes), "ServiceInfo: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "ServiceInfo: key without attribute");
} // namespace

constexpr GroupDef SERVICE_INFO_GROUP = {
    .id = GROUP_SERVICE_INFO,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "systemd over D-Bus; unit files and links of what it has not loaded and of copies; else `/etc/init.d`: a "
              "row a service",
};
} // namespace report
