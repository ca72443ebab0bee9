// What the storage classes and look-ups that programs may call tell of a machine: "action argument" pairs, one line
// each.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "com/Owned.h"
#include "linux/floppyinfo.h"
#include "linux/ideinfo.h"
#include "linux/storage/CompaqSmartDrives.h"
#include "linux/storage/FdiskGeometry.h"

static void showIDE(const char* path)
{
    const ideinfo drive(path);
    const OwnedText next = drive.nextIDEdisk();
    printf("sector %u, medium %d, next %s\n", drive.sector_size(), drive.mediapresent(), next ? next.get() : "none");
}

static void showFloppy(const char* path)
{
    const floppyinfo drive(path);
    const OwnedText serialNumber(floppyinfo::serialnumber());
    const OwnedText type(floppyinfo::type());
    printf("serial \"%s\", type \"%s\", removable %d, medium %d\n", serialNumber.get(), type.get(),
           floppyinfo::removable(), drive.mediapresent());
}

// Asks the node again through an object of another drive, which has nothing but its errors.
static void askFloppy(const char* path)
{
    floppyinfo drive("/nowhere");
    const int node = open(path, O_RDONLY | O_NONBLOCK);
    const int geometry = drive.determineFloppygeometry(node);
    const int geometryError = drive.errorcode();
    const int type = drive.determineFloppytype(node);
    printf("geometry %d %s, type %d %s: %u/%u/%u \"%s\" medium %d\n", geometry, strerrorname_np(geometryError), type,
           strerrorname_np(drive.errorcode()), drive.numcylinders(), drive.numheads(), drive.numsectors(),
           drive.model(), drive.mediapresent());
    if (node >= 0)
        close(node);
}

static void showSmartDisks(const char* last)
{
    printf("%d disks:", getCompaqSmartDiskNum());
    for (int n = -1; n <= atoi(last); ++n)
        printf(" %u", getCompaqSmartDiskSize(n));
    putchar('\n');
}

using GeometryLookup = int (*)(const char*, unsigned long*, unsigned long*, unsigned long*, unsigned long*);

static void showGeometry(GeometryLookup look, const char* device)
{
    unsigned long heads = 1;
    unsigned long cylinders = 2;
    unsigned long sectors = 3;
    unsigned long kilobytes = 4;
    const int found = look(device, &heads, &cylinders, &sectors, &kilobytes);
    printf("%d: %lu heads, %lu cylinders, %lu sectors, %lu kB\n", found, heads, cylinders, sectors, kilobytes);
}

int main(int count, char** arguments)
{
    for (int i = 1; i + 1 < count; i += 2) {
        const char* const argument = arguments[i + 1];
        if (strcmp(arguments[i], "ide") == 0)
            showIDE(argument);
        else if (strcmp(arguments[i], "floppy") == 0)
            showFloppy(argument);
        else if (strcmp(arguments[i], "floppy-node") == 0)
            askFloppy(argument);
        else if (strcmp(arguments[i], "smart") == 0)
            showSmartDisks(argument);
        else if (strcmp(arguments[i], "fdisk") == 0)
            showGeometry(getFromFdisk, argument);
        else if (strcmp(arguments[i], "fdisk-mount") == 0)
            showGeometry(getFromFdiskMount, argument);
        else
            return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
