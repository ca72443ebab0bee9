#include "linux/LParGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

LParGroup::LParGroup() : VexGroup(GROUP_LPAR, 1) {}

VexTable* LParGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_LPAR, "LPar");
    return nullptr;
}
