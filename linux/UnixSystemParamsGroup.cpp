#include "linux/UnixSystemParamsGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

UnixSystemParamsGroup::UnixSystemParamsGroup() : VexGroup(GROUP_UNIX_SYSTEM_PARAMS, 1) {}

VexTable* UnixSystemParamsGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_GENERAL, "UnixSystemParams");
    return nullptr;
}
