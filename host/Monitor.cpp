// Monitor: a row a connected monitor that tells what it is (EDID).

#include "host/Collectors.h"
#include "host/Digest.h"
#include "host/Root.h"
#include "host/display/DisplayCards.h"
#include "host/display/Edid.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr size_t kEdidLimit = size_t{256} * 128; // a first block and 255 more

void addRange(const std::optional<ScanRange>& range, uint32_t lowest, uint32_t highest, const std::string& source,
              RowBuilder& row)
{
    if (!range)
        return;
    row.number(lowest, range->lowest, source);
    row.number(highest, range->highest, source);
}

void addEdid(const Edid& edid, const std::string& source, RowBuilder& row)
{
    row.text(MONITOR_MANUFACTURER_CODENAME, edid.manufacturer, source);
    row.text(MONITOR_NAME, edid.name, source);
    row.number(MONITOR_WEEK_MANUFACTURED, edid.week, source);
    row.number(MONITOR_YEAR_MANUFACTURED, edid.year, source);
    row.text(MONITOR_SERIAL_NUMBER, edid.serialNumber, source);
    row.number(MONITOR_APPROX_SIZE_INCHES, edid.diagonalInches(), source);
    addRange(edid.verticalHz, MONITOR_MIN_VERT_SCAN_FREQ_HZ, MONITOR_MAX_VERT_SCAN_FREQ_HZ, source, row);
    addRange(edid.horizontalKHz, MONITOR_MIN_HORIZ_SCAN_FREQ_K_HZ, MONITOR_MAX_HORIZ_SCAN_FREQ_K_HZ, source, row);
    row.number(MONITOR_PIXEL_CLOCK_MHZ, edid.pixelClockMHz, source);
    row.number(MONITOR_PRODUCT_CODE, edid.product, source);
    row.number(MONITOR_WIDTH, edid.width, source);
    row.number(MONITOR_HEIGHT, edid.height, source);
    row.text(MONITOR_PREFERRED_MODE, edid.preferredMode, source);
}
} // namespace

void collectMonitor(const Machine& machine, Collection& collection)
{
    uint64_t index = 0;
    for (const DisplayCard& card : readDisplayCards(machine.root))
        for (const std::string& connector : card.connectors) {
            const std::string folder = card.connectorFolder(connector);
            const std::string source = folder + "edid";
            const std::string block = machine.root.read(source, kEdidLimit).value_or("");
            if (block.empty())
                continue; // nothing is plugged in, or what is tells nothing
            RowBuilder row(GROUP_MONITOR);
            row.number(MONITOR_INDEX, ++index, source);
            row.text(MONITOR_BUS_ADDRESS, card.address(), folder);
            row.text(MONITOR_CONNECTOR, connector, folder);
            if (const std::optional<Edid> edid = parseEdid(block)) {
                row.text(MONITOR_ID, md5(block), source);
                addEdid(*edid, source, row);
            } else {
                collection.notes().note(source + ": no valid EDID block");
            }
            collection.add(std::move(row));
        }
}
} // namespace host
