#include "linux/ScanInfoGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

ScanInfoGroup::ScanInfoGroup() : VexGroup(GROUP_SCAN_INFO, 1) {}

VexTable* ScanInfoGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_SCAN_INFO, "ScanInfo");
    return nullptr;
}
