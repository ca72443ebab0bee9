#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(USB_DEVICE_INDEX, PLAIN, "", "row number from 1"),
    known(USB_DEVICE_ID, IDENTIFYING, "", "MD5 digest of vendor, product, serial number and Bus Path"),
    known(USB_DEVICE_HOST_CONTROLLER, PLAIN, "", "PCI address of the bus's controller; else `product` of its root hub"),
    known(USB_DEVICE_USB_VERSION, PLAIN, "", "`version`"),
    known(USB_DEVICE_DEVICE_CLASS, PLAIN, "", "`bDeviceClass`; where that is 0 `bInterfaceClass` of the first interface"),
    known(USB_DEVICE_DEVICE_SUBCLASS, PLAIN, "", "`bDeviceSubClass`; where the class is 0 `bInterfaceSubClass` of the first interface"),
    known(USB_DEVICE_DEVICE_ADDRESS, VOLATILE, "", "`devnum`"),
    known(USB_DEVICE_PORT_NUMBER, PLAIN, "", "`devpath`, its last number"),
    known(USB_DEVICE_NUMBER_OF_PORTS, PLAIN, "", "`maxchild`"),
    known(USB_DEVICE_IS_HUB, PLAIN, "", "`bDeviceClass` is 9"),
    known(USB_DEVICE_PARENT_ADDRESS, VOLATILE, "", "`devnum` of the hub above it"),
    known(USB_DEVICE_VENDOR_ID, PLAIN, "", "`idVendor`"),
    known(USB_DEVICE_PRODUCT_ID, PLAIN, "", "`idProduct`"),
    known(USB_DEVICE_MANUFACTURER, PLAIN, "", "`manufacturer`; else usb.ids"),
    known(USB_DEVICE_PRODUCT, PLAIN, "", "`product`; else usb.ids"),
    known(USB_DEVICE_SERIAL_NUMBER, IDENTIFYING, "", "`serial`"),
    text(USB_DEVICE_BUS_PATH, "Bus Path", 64, PLAIN, "name of the folder in `/sys/bus/usb/devices`"),
    real(USB_DEVICE_SPEED, "Speed", "Mbit/s", PLAIN, "`speed`: 1.5 for a low-speed device"),
    text(USB_DEVICE_DRIVER, "Driver", 64, PLAIN, "link `driver` of the first interface; else of the device"),
    text(USB_DEVICE_VENDOR_NAME, "Vendor Name", 255, PLAIN, "usb.ids"),
};
// clang-format on

constexpr uint32_t kKeys[] = {USB_DEVICE_BUS_PATH};
constexpr PairingDef kPairing[] = {{{USB_DEVICE_SERIAL_NUMBER, USB_DEVICE_VENDOR_ID, USB_DEVICE_PRODUCT_ID}},
                                   {{USB_DEVICE_BUS_PATH}}};

static_assert(isWellFormed(kAttributes), "USBDevice: bad row");
static_assert(areIdsOf(kKeys, kAttributes), "USBDevice: key without attribute");
static_assert(arePairingsOf(kPairing, kAttributes), "USBDevice: pairing without attribute");
} // namespace

constexpr GroupDef USB_DEVICE_GROUP = {
    .id = GROUP_USB_DEVICE,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = kKeys,
    .pairing = kPairing,
    .version = 2,
    .source = "`/sys/bus/usb/devices`, names of usb.ids: a row a device",
};
} // namespace report
