#include "linux/storage/SCSIDevice.h"

#include <cstring>

char* SCSIInfo::getTypeLabel() const
{
    return strdup("Generic");
}

SCSIDiskInfo::SCSIDiskInfo(const SCSIIdentity& identity, const DriveGeometry& geometry)
    : SCSIInfo(identity), geometry_(geometry)
{
    disk_ = true;
}

char* SCSIDiskInfo::getTypeLabel() const
{
    return strdup("Hard Disk");
}

SCSIRemovableInfo::SCSIRemovableInfo(const SCSIIdentity& identity) : SCSIInfo(identity)
{
    removable_ = true;
}

char* SCSIRemovableInfo::getTypeLabel() const
{
    return strdup("CD-ROM");
}

SCSITapeInfo::SCSITapeInfo(const SCSIIdentity& identity) : SCSIInfo(identity)
{
    tape_ = true;
}

char* SCSITapeInfo::getTypeLabel() const
{
    return strdup("Tape");
}
