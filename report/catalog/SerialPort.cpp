#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(SERIAL_PORT_INDEX, PLAIN, "", "row number from 1"),
    known(SERIAL_PORT_NAME, PLAIN, "", "name of the folder in `/sys/class/tty`"),
    text(SERIAL_PORT_ADDRESS, "Address", 32, PLAIN, "`port`; else `iomem_base`"),
    number(SERIAL_PORT_IRQ, "IRQ", "", PLAIN, "`irq`"),
    text(SERIAL_PORT_UART_TYPE, "UART Type", 32, PLAIN, "`type`, as its name"),
};
// clang-format on

constexpr uint32_t kKeys[] = {SERIAL_PORT_NAME};

static_assert(isWellFormed(kAttributes), "SerialPort: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "SerialPort: key without attribute");
} // namespace

constexpr GroupDef SERIAL_PORT_GROUP = {
    .id = GROUP_SERIAL_PORT,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/sys/class/tty` and `/sys/bus/pnp`: a row a port with hardware",
};
} // namespace report
