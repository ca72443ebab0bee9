#include "linux/IDEDevices.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>

namespace
{

constexpr char kIDEDirectory[] = "/proc/ide";

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

bool isDirectory(const char* path)
{
    struct stat status;
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

// Adds the devices of one controller behind the count entries of list; returns the new count.
int listController(const char* controller, char list[][kIDEPathSize], int count)
{
    char path[sizeof kIDEDirectory + sizeof "/" + NAME_MAX + sizeof "/" + NAME_MAX];
    snprintf(path, sizeof path, "%s/%s", kIDEDirectory, controller);
    const Directory directory(opendir(path));
    if (directory == nullptr)
        return count;
    while (count < kIDEMaxDevices) {
        const dirent* entry = readdir(directory.get());
        if (entry == nullptr)
            break;
        if (strcmp(entry->d_name, ".") == 0 || strcmp(entry->d_name, "..") == 0)
            continue;
        snprintf(path, sizeof path, "%s/%s/%s", kIDEDirectory, controller, entry->d_name);
        if (isDirectory(path)) {
            const size_t length = std::string_view(path).copy(list[count], kIDEPathSize - 1);
            list[count++][length] = '\0';
        }
    }
    return count;
}

} // namespace

int determineIDEfilelist(char list[][kIDEPathSize])
{
    const Directory directory(opendir(kIDEDirectory));
    if (directory == nullptr)
        return 0;
    int count = 0;
    while (count < kIDEMaxDevices) {
        const dirent* entry = readdir(directory.get());
        if (entry == nullptr)
            break;
        const char* controller = strstr(entry->d_name, "ide");
        if (controller != nullptr)
            count = listController(controller, list, count);
    }
    return count;
}
