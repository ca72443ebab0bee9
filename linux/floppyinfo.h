#pragma once

#include <cstdint>

#include "linux/DriveGeometry.h"

class TextStream;
struct floppy_struct;

/// The layout of a floppy disk. Its size has 32 bits; totalsize takes them for a signed number.
struct FloppyGeometry : DriveGeometry {
    int32_t sectorSize = 0; // bytes
};

/// The layout that the driver's record of a disk describes.
FloppyGeometry decodeFloppyGeometry(const floppy_struct& disk);

/// True when text, in the form of /proc/cpuinfo, describes an Itanium processor.
bool describesItanium(TextStream& text);

/// What the floppy driver says about one drive and the disk in it.
class floppyinfo
{
public:
    /// path is the drive's node, which is not opened on an Itanium machine.
    explicit floppyinfo(const char* path);

    /// 0, or the errno of an ioctl when the drive answered none, or 20 when the node was not opened.
    int32_t errorcode() const { return errorcode_; }
    int32_t sector_size() const { return geometry_.sectorSize; }
    int32_t totalsize() const { return static_cast<int32_t>(geometry_.kilobytes); }
    uint32_t numheads() const { return geometry_.heads; }
    uint32_t numcylinders() const { return geometry_.cylinders; }
    uint32_t numsectors() const { return geometry_.sectors; }
    const DriveGeometry& geometry() const { return geometry_; }
    /// The driver's name for the type of drive, "1.44M".
    const char* model() const { return model_; }
    /// True when the driver knows the layout of a disk in the drive.
    bool mediapresent() const { return mediaPresent_; }
    /// New texts, which the caller frees with free(): an empty one, for the driver tells no serial number, and
    /// "floppy".
    static char* serialnumber();
    static char* type();
    /// Always 1: the disk of a floppy drive can be taken out.
    static int removable() { return 1; }

    /// Asks the driver behind an open node for the layout of the disk in the drive: 0, or 10 with the error code set
    /// when it does not tell one.
    int determineFloppygeometry(int fd);
    /// Asks it for the name of the drive's type, which becomes the model: 0, or 10 when it has none, with the error
    /// code set when it does not answer.
    int determineFloppytype(int fd);
    // The driver tells none of these: they do nothing and return 0.
    static int determineFloppymanufacturer() { return 0; }
    static int determineFloppyserialnumber() { return 0; }
    static int determineFloppymodel() { return 0; }

    /// 1 on an Itanium machine, else 0.
    static int itaniumIA64();

private:
    int32_t errorcode_ = 0;
    FloppyGeometry geometry_;
    char model_[255] = "";
    bool mediaPresent_ = false;
};
