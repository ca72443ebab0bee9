#include "linux/storage/DriveNodes.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "com/VexDebug.h"

namespace
{

constexpr int kLastDriveLimit = 255;

// Number, or in letter mode character code, of the next node to try; 0 before an enumeration.
int32_t lastdrive = 0;

} // namespace

OwnedText getNextDrive(const char* prefix, bool letters)
{
    if (lastdrive == kLastDriveLimit) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n this is the pre-increment value  lastdrive  = %d ", lastdrive);
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n we have already processed a possibly valid dev/sg255");
        return nullptr;
    }
    char path[255];
    if (letters) {
        if (lastdrive == 0)
            lastdrive = 'a';
        snprintf(path, sizeof path, "%s%c", prefix, static_cast<char>(lastdrive));
    } else {
        snprintf(path, sizeof path, "%s%d", prefix, lastdrive);
    }
    ++lastdrive;
    struct stat status;
    if (stat(path, &status) != 0) {
        lastdrive = 0;
        return nullptr;
    }
    return OwnedText(strdup(path));
}
