#include "linux/FdiskGeometry.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "linux/TextParse.h"
#include "linux/TextStream.h"

static constexpr char kDelimiters[] = " \n";

namespace
{

// The words of a line, cut out of it one by one.
class Tokens
{
public:
    explicit Tokens(char* line) : rest_(line) {}
    const char* next() { return strtok_r(rest_, kDelimiters, &rest_); }

private:
    char* rest_;
};

} // namespace

// Each figure is logged as soon as it is read; false when the line has ended before it.
static bool readFigure(const char* token, const char* name, uint32_t* figure)
{
    if (token == nullptr)
        return false;
    *figure = static_cast<uint32_t>(parseLong(token));
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ntmp%s=%u", name, *figure);
    return true;
}

// "63 sectors, 1024 cylinders": the figures behind the word that ends the heads.
static bool readSectorsAndCylinders(Tokens& tokens, DiskGeometry* figures)
{
    if (!readFigure(tokens.next(), "sectors", &figures->sectors))
        return false;
    tokens.next();
    return readFigure(tokens.next(), "cylinders", &figures->cylinders);
}

// "Disk /dev/sda: 255 heads, 63 sectors, 1024 cylinders"
static bool readListedLine(char* line, DiskGeometry* figures)
{
    Tokens tokens(line);
    tokens.next();
    tokens.next();
    if (!readFigure(tokens.next(), "heads", &figures->heads))
        return false;
    tokens.next();
    return readSectorsAndCylinders(tokens, figures);
}

// "255 heads, 63 sectors/track, 8854 cylinders", whatever stands before it.
static bool readMountedLine(char* line, DiskGeometry* figures)
{
    Tokens tokens(line);
    const char* before = nullptr;
    for (bool first = true;; first = !first) {
        const char* token = tokens.next();
        if (token == nullptr)
            return false;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n%s token=%s", first ? "First" : "Second", token);
        if (strstr(token, "heads") != nullptr)
            return readFigure(before, "heads", &figures->heads) && readSectorsAndCylinders(tokens, figures);
        before = token;
    }
}

// A disk without one of the three has no geometry.
static int storeGeometry(const DiskGeometry& figures, DiskGeometry* geometry)
{
    if (figures.sectors == 0 || figures.cylinders == 0 || figures.heads == 0)
        return 0;
    *geometry = figures;
    // In bytes first (512 a sector): what lies above 32 bits, 4 GB, is lost, deliberately.
    geometry->kilobytes = (figures.sectors * figures.cylinders * figures.heads) << 9 >> 10;
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ntotalsize=%u", geometry->kilobytes);
    return 1;
}

int findListedGeometry(TextStream& listing, const char* device, DiskGeometry* geometry)
{
    char line[256];
    while (listing.readLine(line)) {
        if (strstr(line, device) == nullptr)
            continue;
        DiskGeometry figures;
        return readListedLine(line, &figures) ? storeGeometry(figures, geometry) : 0;
    }
    return 0;
}

int findMountedGeometry(TextStream& listing, DiskGeometry* geometry)
{
    char line[256];
    while (listing.readLine(line)) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nline=%s ", line);
        if (strstr(line, "heads") == nullptr)
            continue;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ncciss line=%s ", line);
        DiskGeometry figures;
        return readMountedLine(line, &figures) ? storeGeometry(figures, geometry) : 0;
    }
    return 0;
}

// The name that fdisk knows the device by.
static void copyDiskName(const char* device, char (&disk)[256])
{
    constexpr size_t kKindLetter = 6; // of "/dev/sg", where the name begins with it
    snprintf(disk, sizeof disk, "%s", device);
    if (strstr(disk, "/dev/sg") != nullptr)
        disk[kKindLetter] = 'd';
}

// Logs the name; false without one.
static bool logDeviceName(const char* device)
{
    if (device == nullptr) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nname=NULL\n");
        return false;
    }
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nname=%s\n", device);
    return true;
}

int getFromFdisk(const char* device, DiskGeometry* geometry)
{
    if (!logDeviceName(device))
        return 0;
    char disk[256];
    copyDiskName(device, disk);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ndevice=%s\n", disk);
    TextStream listing = TextStream::runCommand("/sbin/fdisk -l");
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nrunning /sbin/fdisk -l\n");
    return listing.atEnd() ? 0 : findListedGeometry(listing, disk, geometry);
}

// Who mounts a file system may choose the name that it is listed under, and the command runs as root.
static bool isPlainForShell(const char* name)
{
    static constexpr char kPlain[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-:+=@%, ";
    const size_t length = strspn(name, kPlain);
    return name[length] == '\0' || strcmp(name + length, "\n") == 0;
}

int getFromFdiskMount(const char* device, DiskGeometry* geometry)
{
    if (!logDeviceName(device))
        return 0;
    char disk[256];
    snprintf(disk, sizeof disk, "%s", device);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ndevice=%s\n", disk);
    char command[sizeof "/sbin/fdisk -l " + sizeof disk + sizeof " 2>/dev/null"];
    snprintf(command, sizeof command, "%s%s 2>/dev/null", "/sbin/fdisk -l ", disk);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nfdisk command =%s\n", command);
    TextStream listing = isPlainForShell(disk) ? TextStream::runCommand(command) : TextStream(nullptr);
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nrunning /sbin/fdisk -l /dev/...");
    return listing.atEnd() ? 0 : findMountedGeometry(listing, geometry);
}
