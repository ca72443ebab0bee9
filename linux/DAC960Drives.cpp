#include "linux/StorageProbes.h"

unsigned int gatherDAC960RAIDDriveInformation(int*)
{
    return 0;
}
