#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(MODEM_INDEX, PLAIN, "", "row number from 1"),
    known(MODEM_ID, PLAIN, "", "MD5 digest of Description, Manufacturer and Port"),
    known(MODEM_DESCRIPTION, PLAIN, "", "`product` of the USB device, or pci.ids"),
    known(MODEM_MANUFACTURER, PLAIN, "", "`manufacturer` of the USB device, or pci.ids"),
    known(MODEM_PROVIDER_NAME, PLAIN, "", "not produced by invhwctl"),
    known(MODEM_MODEM_TYPE, PLAIN, "", "External Modem on USB, Internal Modem on PCI and at ports of USB that are `fixed`"),
    known(MODEM_PORT, PLAIN, "", "name in `/sys/class/tty`"),
    known(MODEM_PORT_SPEED, PLAIN, "", "not produced by invhwctl"),
    known(MODEM_PORT_SETTINGS, PLAIN, "", "not produced by invhwctl"),
    known(MODEM_USER_INIT, PLAIN, "", "not produced by invhwctl"),
    known(MODEM_INF_FILE, PLAIN, "", "not produced by invhwctl"),
    known(MODEM_INF_SECTION, PLAIN, "", "not produced by invhwctl"),
    text(MODEM_INTERFACE, "Interface", 64, IDENTIFYING_IF_ADDRESS, "name of the folder in `/sys/class/net` or `/sys/class/tty`"),
    text(MODEM_DRIVER, "Driver", 64, PLAIN, "link `device/driver`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {MODEM_INTERFACE};

static_assert(isWellFormed(kAttributes), "Modem: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Modem: key without attribute");
} // namespace

constexpr GroupDef MODEM_GROUP = {
    .id = GROUP_MODEM,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/sys/class/net/wwan*`, `/sys/class/tty/ttyACM*` of interfaces that take commands, PCI class 0703: a "
              "row a modem",
};
} // namespace report
