#include "linux/StorageProbes.h"

unsigned int gatherIDEDriveInformation(int*)
{
    return 0;
}
