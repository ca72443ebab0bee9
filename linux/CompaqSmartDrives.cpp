#include "linux/StorageProbes.h"

unsigned int gatherCompaqSmartRAIDDriveInformation(int*)
{
    return 0;
}
