#pragma once

#include "com/VexGroup.h"

/// Collector of group "SMBIOS": BIOS, system, board and enclosure as the firmware names them.
class SMBIOSGroup final : public VexGroup
{
public:
    SMBIOSGroup();
    VexTable* getTable() override;
};
