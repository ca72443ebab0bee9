#include "linux/ProcessorGroup.h"

#include "com/VexDebug.h"
#include "com/VexTable.h"

ProcessorGroup::ProcessorGroup() : VexGroup(GROUP_PROCESSOR, 1) {}

VexTable* ProcessorGroup::getTable()
{
    const VexGroupFrame frame(DEBUG_PROCESSOR, "Processor");
    return nullptr;
}
