#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(PRINTER_INDEX, PLAIN, "", "row number from 1"),
    known(PRINTER_ID, PLAIN, "", "MD5 digest of Name"),
    known(PRINTER_NAME, PLAIN, "", "`/etc/cups/printers.conf`, name of the queue"),
    known(PRINTER_PORT_NAME, IDENTIFYING, "", "as Device URI"),
    known(PRINTER_DESCRIPTION, PLAIN, "", "`/etc/cups/printers.conf`, Info"),
    known(PRINTER_IS_LOCAL, PLAIN, "", "from the scheme of Device URI: Y or N; Y where the host is this one"),
    known(PRINTER_LOCATION, PLAIN, "", "`/etc/cups/printers.conf`, Location"),
    known(PRINTER_DRIVER_NAME, PLAIN, "", "`/etc/cups/printers.conf`, MakeModel; else the PPD's NickName"),
    known(PRINTER_DRIVER_VERSION, PLAIN, "", "the PPD's FileVersion"),
    known(PRINTER_DRIVER_PATH, PLAIN, "", "the PPD's cupsFilter"),
    known(PRINTER_DRIVER_DATA_FILE, PLAIN, "", "`/etc/cups/ppd/*.ppd`"),
    known(PRINTER_DRIVER_CONFIG_FILE, PLAIN, "", "not produced by invhwctl"),
    text(PRINTER_DEVICE_URI, "Device URI", 1024, IDENTIFYING, "`/etc/cups/printers.conf`, DeviceURI, user part and secrets masked"),
    yesNo(PRINTER_DEFAULT, "Default", PLAIN, "`/etc/cups/printers.conf`, DefaultPrinter"),
};
// clang-format on

constexpr uint32_t kKeys[] = {PRINTER_NAME};

static_assert(isWellFormed(kAttributes), "Printer: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Printer: key without attribute");
} // namespace

constexpr GroupDef PRINTER_GROUP = {
    .id = GROUP_PRINTER,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "`/etc/cups/printers.conf`: a row a queue",
};
} // namespace report
