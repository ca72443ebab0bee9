#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(MONITOR_INDEX, PLAIN, "", "row number from 1"),
    known(MONITOR_ID, IDENTIFYING, "", "MD5 digest of the EDID block"),
    known(MONITOR_MANUFACTURER_CODENAME, PLAIN, "", "`/sys/class/drm/*/edid`, bytes 8 and 9"),
    known(MONITOR_NAME, PLAIN, "", "`/sys/class/drm/*/edid`, descriptor FC"),
    known(MONITOR_WEEK_MANUFACTURED, PLAIN, "", "`/sys/class/drm/*/edid`, byte 16, where it is a week"),
    known(MONITOR_YEAR_MANUFACTURED, PLAIN, "", "`/sys/class/drm/*/edid`, byte 17; not where it is the year of the model (byte 16 is 255)"),
    known(MONITOR_SERIAL_NUMBER, IDENTIFYING, "", "`/sys/class/drm/*/edid`, descriptor FF; else bytes 12 to 15"),
    known(MONITOR_APPROX_SIZE_INCHES, PLAIN, "inches", "from Width and Height"),
    known(MONITOR_MIN_VERT_SCAN_FREQ_HZ, PLAIN, "Hz", "`/sys/class/drm/*/edid`, descriptor FD"),
    known(MONITOR_MAX_VERT_SCAN_FREQ_HZ, PLAIN, "Hz", "`/sys/class/drm/*/edid`, descriptor FD"),
    known(MONITOR_MIN_HORIZ_SCAN_FREQ_K_HZ, PLAIN, "kHz", "`/sys/class/drm/*/edid`, descriptor FD"),
    known(MONITOR_MAX_HORIZ_SCAN_FREQ_K_HZ, PLAIN, "kHz", "`/sys/class/drm/*/edid`, descriptor FD"),
    known(MONITOR_PIXEL_CLOCK_MHZ, PLAIN, "MHz", "`/sys/class/drm/*/edid`, descriptor FD"),
    text(MONITOR_BUS_ADDRESS, "Bus Address", 64, PLAIN, "device of the card, `/sys/class/drm/card*/device`"),
    text(MONITOR_CONNECTOR, "Connector", 64, PLAIN, "name of the folder `/sys/class/drm/card*-*`, behind the card's"),
    number(MONITOR_PRODUCT_CODE, "Product Code", "", PLAIN, "`/sys/class/drm/*/edid`, bytes 10 and 11"),
    number(MONITOR_WIDTH, "Width", "mm", PLAIN, "`/sys/class/drm/*/edid`, first detailed timing; else byte 21"),
    number(MONITOR_HEIGHT, "Height", "mm", PLAIN, "`/sys/class/drm/*/edid`, first detailed timing; else byte 22"),
    text(MONITOR_PREFERRED_MODE, "Preferred Mode", 32, PLAIN, "`/sys/class/drm/*/edid`, first detailed timing: pixels, lines (`i`: interlaced) and Hz, `1920x1200@59.95`"),
};
// clang-format on

constexpr uint32_t kKeys[] = {MONITOR_BUS_ADDRESS, MONITOR_CONNECTOR};
constexpr PairingDef kPairing[] = {{{MONITOR_SERIAL_NUMBER, MONITOR_PRODUCT_CODE}}};

static_assert(isWellFormed(kAttributes), "Monitor: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Monitor: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "Monitor: pairing without attribute");
} // namespace

constexpr GroupDef MONITOR_GROUP = {
    .id = GROUP_MONITOR,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/sys/class/drm/*/edid`: a row a connected monitor",
};
} // namespace report
