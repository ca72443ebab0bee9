#include "linux/StorageProbes.h"

unsigned int gatherCCISSDriveInformation(int*)
{
    return 0;
}
