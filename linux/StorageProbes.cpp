#include "linux/StorageProbes.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "com/VexDebug.h"
#include "com/md5file.h"

static constexpr int kLastDriveLimit = 255;

// Number, or in letter mode character code, of the next node to try; 0 before an enumeration.
static int32_t lastdrive = 0;

OwnedText digestGeometry(uint32_t cylinders, uint32_t sectors, uint32_t heads, uint32_t size)
{
    char text[255];
    snprintf(text, sizeof text, "%" PRIu32 "%" PRIu32 "%" PRIu32 "%" PRIu32, cylinders, sectors, heads, size);
    return OwnedText(md5_checksum(text));
}

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

// White space of the C locale, whatever the locale of the process.
static bool isWhite(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

void trim2(char* text)
{
    const char* start = text;
    while (isWhite(*start))
        ++start;
    size_t length = strlen(start);
    memmove(text, start, length + 1);
    while (length > 0 && isWhite(text[length - 1]))
        text[--length] = '\0';
}
