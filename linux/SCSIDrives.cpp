#include "linux/StorageProbes.h"

unsigned int gatherSCSIDriveInformation(int*)
{
    return 0;
}
