#include "linux/StorageProbes.h"

unsigned int gatherFloppyDriveInformation(int*)
{
    return 0;
}
