#include "report/catalog/Groups.h"
#include "report/catalog/SharedTexts.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
constexpr const char* kFormFactors[] = {"Desktop",         "Laptop",    "Server", "Tablet",
                                        "Virtual Machine", "Container", "Other",  nullptr};

// clang-format off
constexpr AttributeDef kAttributes[] = {
    known(COMPONENTID_MANUFACTURER, PLAIN, "", "structure type 1, manufacturer; else `/sys/class/dmi/id/sys_vendor`; else the vendor of `/sys/firmware/devicetree/base/compatible`"),
    known(COMPONENTID_PRODUCT, PLAIN, "", "Manufacturer, a blank and the product of structure type 1; else of `/sys/class/dmi/id/product_name`; else `/sys/firmware/devicetree/base/model`"),
    known(COMPONENTID_VERSION, PLAIN, "", "structure type 1, version; else `/sys/class/dmi/id/product_version`"),
    known(COMPONENTID_SERIAL_NUMBER, IDENTIFYING, "", "structure type 1, serial number; else `/sys/class/dmi/id/product_serial`; else `/sys/firmware/devicetree/base/serial-number`"),
    known(COMPONENTID_INSTALLATION, PLAIN, "", "not produced by invhwctl"),
    known(COMPONENTID_VERIFY, PLAIN, "", "not produced by invhwctl"),
    known(COMPONENTID_TYPE, PLAIN, "", "as Version"),
    text(COMPONENTID_SYSTEM_UUID, "System UUID", 36, IDENTIFYING, "structure type 1, UUID as RFC 4122 text in lower case; else `/sys/class/dmi/id/product_uuid`"),
    text(COMPONENTID_SKU_NUMBER, "SKU Number", 255, PLAIN, "structure type 1, SKU number; else `/sys/class/dmi/id/product_sku`"),
    text(COMPONENTID_FAMILY, "Family", 255, PLAIN, "structure type 1, family; else `/sys/class/dmi/id/product_family`"),
    enumeration(COMPONENTID_CHASSIS_TYPE, "Chassis Type", CHASSIS_TYPE_ENUM_DEF, PLAIN, "structure type 3, type without its lock bit; else `/sys/class/dmi/id/chassis_type`"),
    word(COMPONENTID_FORM_FACTOR, "Form Factor", 32, kFormFactors, PLAIN, "from Container and Virtualization of Operating System, else from Chassis Type"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "ComponentID: bad row");
} // namespace

constexpr GroupDef COMPONENTID_GROUP = {
    .id = GROUP_COMPONENTID,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "structure types 1 and 3; else `/sys/class/dmi/id`; else the device tree",
};
} // namespace report
