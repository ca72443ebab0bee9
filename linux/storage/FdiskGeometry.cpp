#include "linux/storage/FdiskGeometry.h"

#include <cstdio>
#include <cstring>

#include "com/VexDebug.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

constexpr char kDelimiters[] = " \n";

// The words of a line, cut out of it one by one.
class Tokens
{
public:
    explicit Tokens(char* line) : rest_(line) {}
    const char* next() { return strtok_r(rest_, kDelimiters, &rest_); }

private:
    char* rest_;
};

// Each figure is logged as soon as it is read; false when the line has ended before it.
bool readFigure(const char* token, const char* name, uint32_t* figure)
{
    if (token == nullptr)
        return false;
    *figure = static_cast<uint32_t>(parseLong(token));
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ntmp%s=%u", name, *figure);
    return true;
}

// "63 sectors, 1024 cylinders": the figures behind the word that ends the heads.
bool readSectorsAndCylinders(Tokens& tokens, DriveGeometry* figures)
{
    if (!readFigure(tokens.next(), "sectors", &figures->sectors))
        return false;
    tokens.next();
    return readFigure(tokens.next(), "cylinders", &figures->cylinders);
}

// "Disk /dev/sda: 255 heads, 63 sectors, 1024 cylinders"
bool readListedLine(char* line, DriveGeometry* figures)
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
bool readMountedLine(char* line, DriveGeometry* figures)
{
    Tokens tokens(line);
    const char* before = nullptr;
    for (bool first = true;; first = !first) {
        const char* token = tokens.next();
        if (token == nullptr)
            return false;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n%s token=%s", first ? "First" : "Second", token);
        if (contains(token, "heads"))
            return readFigure(before, "heads", &figures->heads) && readSectorsAndCylinders(tokens, figures);
        before = token;
    }
}

// A disk without one of the three has no geometry.
int storeGeometry(const DriveGeometry& figures, DriveGeometry* geometry)
{
    if (figures.sectors == 0 || figures.cylinders == 0 || figures.heads == 0)
        return 0;
    *geometry = figures;
    // In bytes first (512 a sector): what lies above 32 bits, 4 GB, is lost, deliberately.
    geometry->kilobytes = (figures.sectors * figures.cylinders * figures.heads) << 9 >> 10;
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ntotalsize=%u", static_cast<uint32_t>(geometry->kilobytes));
    return 1;
}

// The name that fdisk knows the device by.
void copyDiskName(const char* device, char (&disk)[256])
{
    constexpr size_t kKindLetter = 6; // of "/dev/sg", where the name begins with it
    snprintf(disk, sizeof disk, "%s", device);
    if (contains(disk, "/dev/sg"))
        disk[kKindLetter] = 'd';
}

// Logs the name; false without one.
bool logDeviceName(const char* device)
{
    if (device == nullptr) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nname=NULL\n");
        return false;
    }
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nname=%s\n", device);
    return true;
}

// Who mounts a file system may choose the name that it is listed under, and the command runs as root.
bool isPlainForShell(const char* name)
{
    static constexpr char kPlain[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-:+=@%, ";
    const size_t length = strspn(name, kPlain);
    return name[length] == '\0' || strcmp(name + length, "\n") == 0;
}

// The four outputs of a caller that keeps no record.
struct GeometryOutputs {
    unsigned long* heads;
    unsigned long* cylinders;
    unsigned long* sectors;
    unsigned long* kilobytes;

    int take(int found, const DriveGeometry& geometry) const
    {
        if (found == 0)
            return 0;
        *heads = geometry.heads;
        *cylinders = geometry.cylinders;
        *sectors = geometry.sectors;
        *kilobytes = static_cast<unsigned long>(geometry.kilobytes);
        return found;
    }
};

} // namespace

int findListedGeometry(TextStream& listing, const char* device, DriveGeometry* geometry)
{
    char line[256];
    while (listing.readLine(line)) {
        if (!contains(line, device))
            continue;
        DriveGeometry figures;
        return readListedLine(line, &figures) ? storeGeometry(figures, geometry) : 0;
    }
    return 0;
}

int findMountedGeometry(TextStream& listing, DriveGeometry* geometry)
{
    char line[256];
    while (listing.readLine(line)) {
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nline=%s ", line);
        if (!contains(line, "heads"))
            continue;
        VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ncciss line=%s ", line);
        DriveGeometry figures;
        return readMountedLine(line, &figures) ? storeGeometry(figures, geometry) : 0;
    }
    return 0;
}

int getFromFdisk(const char* device, DriveGeometry* geometry)
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

int getFromFdiskMount(const char* device, DriveGeometry* geometry)
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

int getFromFdisk(const char* device, unsigned long* heads, unsigned long* cylinders, unsigned long* sectors,
                 unsigned long* kilobytes)
{
    DriveGeometry geometry;
    const int found = getFromFdisk(device, &geometry);
    return GeometryOutputs{heads, cylinders, sectors, kilobytes}.take(found, geometry);
}

int getFromFdiskMount(const char* device, unsigned long* heads, unsigned long* cylinders, unsigned long* sectors,
                      unsigned long* kilobytes)
{
    DriveGeometry geometry;
    const int found = getFromFdiskMount(device, &geometry);
    return GeometryOutputs{heads, cylinders, sectors, kilobytes}.take(found, geometry);
}
