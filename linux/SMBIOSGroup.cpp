// Source: the firmware's BIOS, System, Base Board, Chassis and Hardware Security structures. The texts are what the
// vendor left there; placeholders such as "System Model" count as nothing.

#include "linux/SMBIOSGroup.h"

#include <cstdio>
#include <string>

#include "SMBIOS/SMBIOSTable.h"
#include "SMBIOS/SM_HWSecurity.h"
#include "com/Owned.h"
#include "com/VexDebug.h"
#include "com/VexEnumValues.h"
#include "com/VexTable.h"
#include "com/md5file.h"
#include "linux/firmware/BiosMif.h"
#include "linux/firmware/FirmwareText.h"

namespace
{

// The values' lines go with the Memory and Operating System groups, not with this one; readers of the log know it so.
constexpr uint32_t kValueMask = DEBUG_MEMORY | DEBUG_OPERATING_SYSTEM;

// The row under construction, the text that its ID is the digest of, and whether there is anything to identify.
struct Identification {
    VexTableRow* row;
    std::string identity;
    bool found = false;
};

// Adds a text of the firmware when it holds something. Returns what was added, empty for nothing.
std::string addText(Identification* id, unsigned long attrib, const char* firmwareText)
{
    VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "\n  [%2i] ", static_cast<int>(attrib));
    std::string text = validatedText(firmwareText);
    if (text.empty()) {
        VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "-none-");
        return text;
    }
    VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, ">%s<", text.c_str());
    id->row->addString(attrib, text.c_str());
    id->found = true;
    return text;
}

// The same for a text that identifies the machine: "|" stands for one that is not there.
void addIdentityText(Identification* id, unsigned long attrib, const char* firmwareText)
{
    const std::string text = addText(id, attrib, firmwareText);
    id->identity += text.empty() ? "|" : text;
}

void addBios(Identification* id, const SMBIOSTable0Data& bios)
{
    addIdentityText(id, SMBIOS_BIOS_VENDOR, bios.getVendor());
    addIdentityText(id, SMBIOS_BIOS_VERSION, bios.getVersion());
    addText(id, SMBIOS_BIOS_DATE, OwnedText(bios.getReleaseDateAsYYYYMMDD()).get());
    char size[16];
    snprintf(size, sizeof size, "%iK", bios.getROMSizeKB());
    addIdentityText(id, SMBIOS_BIOS_SIZE, size);
}

void addSystem(Identification* id, const SMBIOSTable1Data& system)
{
    addIdentityText(id, SMBIOS_SYSTEM_MANUFACTURER, system.getManufacturer());
    addIdentityText(id, SMBIOS_SYSTEM_PRODUCT_NAME, system.getProduct());
    addIdentityText(id, SMBIOS_SYSTEM_VERSION, system.getVersion());
    addText(id, SMBIOS_SYSTEM_SERIAL_NUMBER, system.getSerialNumber());
    addText(id, SMBIOS_SYSTEM_UUID, system.getUUIDAsString());
}

void addBoard(Identification* id, const SMBIOSTable2Data& board)
{
    addIdentityText(id, SMBIOS_BOARD_MANUFACTURER, board.getManufacturer());
    addIdentityText(id, SMBIOS_BOARD_PRODUCT, board.getProduct());
    addIdentityText(id, SMBIOS_BOARD_VERSION, board.getVersion());
    addText(id, SMBIOS_BOARD_SERIAL_NUMBER, board.getSerialNumber());
}

void addEnclosure(Identification* id, const SMBIOSTable3Data& enclosure)
{
    addIdentityText(id, SMBIOS_ENCLOSURE_MANUFACTURER, enclosure.getManufacturer());
    const uint32_t type = enclosure.getType() & 0x7FU; // the highest bit tells of a lock
    VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "\n  Chassis type: %i", static_cast<int>(type));
    if (type >= SMBIOS_ENCLOSURE_OTHER && type <= SMBIOS_ENCLOSURE_MULTI_SYSTEM) {
        id->row->addULong(SMBIOS_ENCLOSURE_TYPE, type);
        id->identity += std::to_string(type);
        id->found = true;
    }
    addIdentityText(id, SMBIOS_ENCLOSURE_VERSION, enclosure.getVersion());
    addText(id, SMBIOS_ENCLOSURE_SERIAL_NUMBER, enclosure.getSerialNumber());
    addText(id, SMBIOS_ENCLOSURE_ASSET_TAG, enclosure.getAssetTag());
}

void traceBlock(int number, bool available)
{
    if (available)
        VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "\nSMBIOS TABLE %d IS AVAILABLE!!", number);
}

void addDigest(Identification* id)
{
    if (!id->found)
        return;
    VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "\n  MD5 PK input len: %i", static_cast<int>(id->identity.size()));
    id->row->addString(SMBIOS_ID, OwnedText(md5_checksum(id->identity.c_str())).get());
}

void addPassword(VexTableRow* row)
{
    unsigned short powerOn, other;
    SM_HWSecurity(&powerOn, &other);
    uint32_t state = powerOn;
    if (state > SMBIOS_POWERON_PASSWORD_UNKNOWN)
        state = SMBIOS_POWERON_PASSWORD_UNSUPPORTED;
    VEX_LOG(kValueMask, VEX_LEVEL_DETAIL, "\n PowerOn PW: %d", static_cast<int>(state));
    row->addULong(SMBIOS_POWERON_PASSWORD, state);
}

VexTableRow* describeFirmware(const SMBIOSTable& firmware)
{
    traceBlock(0, firmware.getTable0() != nullptr);
    traceBlock(1, firmware.getTable1() != nullptr);
    traceBlock(2, firmware.getTable2() != nullptr);
    traceBlock(3, firmware.getTable3() != nullptr);
    Identification id{new VexTableRow, "", false};
    if (firmware.getTable0() != nullptr)
        addBios(&id, *firmware.getTable0());
    if (firmware.getTable1() != nullptr)
        addSystem(&id, *firmware.getTable1());
    if (firmware.getTable2() != nullptr)
        addBoard(&id, *firmware.getTable2());
    if (firmware.getTable3() != nullptr)
        addEnclosure(&id, *firmware.getTable3());
    addDigest(&id);
    addPassword(id.row);
    return id.row;
}

} // namespace

SMBIOSGroup::SMBIOSGroup() : VexGroup(GROUP_SMBIOS, 1) {}

VexTable* SMBIOSGroup::getTable()
{
    VexGroupFrame frame(DEBUG_SMBIOS, "!!!LEGSMBIOS");
    const SMBIOSTable* firmware = availableSMBIOSTable();
    if (firmware == nullptr) {
        frame.rename("SMBIOS");
        return nullptr;
    }
    auto* const table = new VexTable(getGroupId(), getGroupVersion());
    table->addRow(describeFirmware(*firmware));
    if (firmware->getTable0() != nullptr) {
        const OwnedText date(firmware->getTable0()->getReleaseDateAsYYYYMMDD());
        if (date != nullptr)
            hwxbios_mif_rewrite(date.get());
    }
    return table;
}
