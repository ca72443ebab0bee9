#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(VIDEO_INDEX, PLAIN, "", "row number from 1"),
    known(VIDEO_ID, PLAIN, "", "MD5 digest of Bus Address, Adapter Name and Chip Type"),
    known(VIDEO_ADAPTER_NAME, PLAIN, "", "pci.ids, vendor and device; else the driver"),
    known(VIDEO_ARCHITECTURE, PLAIN, "", "5 (VGA) for PCI class 0300"),
    known(VIDEO_COLORS, PLAIN, "", "`/sys/class/graphics/fb*/bits_per_pixel`: colours of that depth, 2^24 from 24 bits on"),
    known(VIDEO_HORIZONTAL, PLAIN, "pixels", "`/sys/class/graphics/fb*/virtual_size`; else the first mode of a connected connector"),
    known(VIDEO_VERTICAL, PLAIN, "pixels", "as Horizontal"),
    known(VIDEO_MEMORY, PLAIN, "kB", "`mem_info_vram_total` of the driver; else the first prefetchable range of the device's `resource`"),
    known(VIDEO_CHIP_TYPE, PLAIN, "", "pci.ids, device; else its ids"),
    known(VIDEO_DAC_TYPE, PLAIN, "", "not produced by invhwctl"),
    known(VIDEO_BIOS_VERSION, PLAIN, "", "`vbios_version` of the driver"),
    known(VIDEO_BIOS_RELEASE_DATE, PLAIN, "", "not produced by invhwctl"),
    text(VIDEO_BUS_ADDRESS, "Bus Address", 64, PLAIN, "name of the folder in `/sys/bus/pci/devices`; else of the device of `/sys/class/drm/card*`"),
    text(VIDEO_DRIVER, "Driver", 64, PLAIN, "link `driver`"),
    text(VIDEO_CONNECTORS, "Connectors", 255, PLAIN, "names of the folders `/sys/class/drm/card*-*`, behind the card's"),
};
// clang-format on

constexpr uint32_t kKeys[] = {VIDEO_BUS_ADDRESS};

static_assert(isWellFormed(kAttributes), "Video: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "Video: key without attribute");
} // namespace

constexpr GroupDef VIDEO_GROUP = {
    .id = GROUP_VIDEO,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = {},
    .version = 2,
    .source = "PCI class 03 and `/sys/class/drm`: a row a card",
};
} // namespace report
