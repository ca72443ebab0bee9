#include "linux/IDEDrives.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

#include "com/VexDebug.h"
#include "linux/StorageProbes.h"
#include "linux/ideinfo.h"

static constexpr char kIDEDirectory[] = "/proc/ide";

namespace
{

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

} // namespace

static bool isDirectory(const char* path)
{
    struct stat status;
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

// Adds the devices of one controller behind the count entries of list; returns the new count.
static int listController(const char* controller, char list[][IDE_PATH_SIZE], int count)
{
    char path[sizeof kIDEDirectory + sizeof "/" + NAME_MAX + sizeof "/" + NAME_MAX];
    snprintf(path, sizeof path, "%s/%s", kIDEDirectory, controller);
    const Directory directory(opendir(path));
    if (directory == nullptr)
        return count;
    while (count < IDE_MAX_DEVICES) {
        const dirent* entry = readdir(directory.get());
        if (entry == nullptr)
            break;
        if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0)
            continue;
        snprintf(path, sizeof path, "%s/%s/%s", kIDEDirectory, controller, entry->d_name);
        if (isDirectory(path)) {
            const size_t length = std::string_view(path).copy(list[count], IDE_PATH_SIZE - 1);
            list[count++][length] = '\0';
        }
    }
    return count;
}

int determineIDEfilelist(char list[][IDE_PATH_SIZE])
{
    const Directory directory(opendir(kIDEDirectory));
    if (directory == nullptr)
        return 0;
    int count = 0;
    while (count < IDE_MAX_DEVICES) {
        const dirent* entry = readdir(directory.get());
        if (entry == nullptr)
            break;
        const char* controller = strstr(entry->d_name, "ide");
        if (controller != nullptr)
            count = listController(controller, list, count);
    }
    return count;
}

uint32_t resolveIDEtype(const char* media)
{
    if (strstr(media, "cdrom") != nullptr)
        return STORAGE_TYPE_CD_ROM;
    if (strstr(media, "disk") != nullptr)
        return STORAGE_TYPE_HARD_DISK;
    return STORAGE_TYPE_UNKNOWN;
}

// Only a hard disk has a security state to report.
static uint32_t resolveSecurity(uint32_t type, int32_t state)
{
    if (type != STORAGE_TYPE_HARD_DISK || state < 0)
        return STORAGE_SECURITY_UNSUPPORTED;
    return state == 1 ? STORAGE_SECURITY_YES : STORAGE_SECURITY_NO;
}

static void addIDEDrive(int* counter, const char* path)
{
    const ideinfo info(path);
    DriveRow drive;
    drive.cylinders = info.numcylinders();
    drive.sectors = info.numsectors();
    drive.heads = info.numheads();
    drive.manufacturer = info.manufacturer();
    drive.model = info.model();
    drive.serialNumber = info.serialnumber();
    drive.type = resolveIDEtype(info.type());
    drive.security = resolveSecurity(drive.type, info.security_enabled());
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nSecurity setting:%d", static_cast<int>(drive.security));
    const OwnedText id = digestGeometry(drive.cylinders, drive.sectors, drive.heads, info.totalsize());
    drive.id = id.get();
    drive.megabytes = info.totalsize() >> 10;
    addDriveRow(counter, drive);
}

unsigned int gatherIDEDriveInformation(int* counter)
{
    char list[IDE_MAX_DEVICES][IDE_PATH_SIZE];
    const int count = determineIDEfilelist(list);
    for (int i = 0; i < count; ++i)
        addIDEDrive(counter, list[i]);
    return 0;
}
