// Machine Identity: the keys by which a report is joined to its machine, best first.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/firmware/FirmwareFacts.h"
#include "host/system/SystemFiles.h"
#include "host/system/Virtualization.h"
#include "report/Identity.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// Permanent addresses of the links that are devices.
std::vector<std::string> deviceAddresses(const Machine& machine)
{
    constexpr uint16_t kEthernet = 1; // ARPHRD_ETHER
    std::vector<std::string> addresses;
    for (const Link& link : machine.kernel.links()) {
        if (link.hardwareType != kEthernet || !machine.root.exists("/sys/class/net/" + link.name + "/device"))
            continue;
        addresses.push_back(link.permanentAddress.empty() ? link.address : link.permanentAddress);
    }
    return addresses;
}
} // namespace

void collectMachineIdentity(const Machine& machine, Collection& collection)
{
    constexpr size_t kSerialNumber = 7; // System Information (DSP0134, 7.2)
    const FirmwareFacts firmware(machine.root, collection.notes());
    report::IdentityFacts facts;
    facts.inContainer = containerOf(machine).has_value();
    if (const MaybeFact uuid = firmware.systemUuid())
        facts.systemUuid = uuid->value;
    if (const MaybeFact serial = firmware.text(SMBIOS_SYSTEM, kSerialNumber, "product_serial"))
        facts.serialNumber = serial->value;
    if (const MaybeFact id = machineId(machine.root))
        facts.machineId = id->value;
    facts.macAddresses = deviceAddresses(machine);
    for (const report::Identity& identity : report::identitiesOf(facts)) {
        RowBuilder row(GROUP_MACHINE_IDENTITY);
        row.text(MACHINE_IDENTITY_BASIS, identity.basis, "");
        row.text(MACHINE_IDENTITY_MACHINE_KEY, identity.key, "");
        collection.add(std::move(row));
    }
}
} // namespace host
