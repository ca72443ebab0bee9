#include "com/VexGroup.h"

#include <cstdio>

#include "com/VexDebug.h"
#include "com/VexUtil.h"

VexGroup::VexGroup(unsigned long groupId, unsigned long version)
    : groupVersion_(static_cast<uint32_t>(version)), groupId_(static_cast<uint32_t>(groupId))
{
}

const char* VexGroup::getGroupName() const
{
    return getGroupNameFromId(groupId_);
}

VexTable* VexGroup::getTable()
{
    printf("\nVexGroup::getTable");
    return nullptr;
}

int VexOutput(const char* text)
{
    if (_vexLogToFile == 0)
        return 0;
    if (_vexFilePtr == nullptr)
        return 1;
    const bool failed = fputs(text, _vexFilePtr) == EOF;
    fflush(_vexFilePtr);
    return failed ? 1 : 0;
}
