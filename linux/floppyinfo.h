#pragma once

#include <cstdint>

class DeviceNode;
class TextStream;
struct floppy_struct;

/// The layout of a floppy disk.
struct FloppyGeometry {
    int32_t sectorSize = 0; // bytes
    int32_t kilobytes = 0;
    uint32_t heads = 0;
    uint32_t cylinders = 0;
    uint32_t sectors = 0; // per track
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
    int32_t totalsize() const { return geometry_.kilobytes; }
    uint32_t numheads() const { return geometry_.heads; }
    uint32_t numcylinders() const { return geometry_.cylinders; }
    uint32_t numsectors() const { return geometry_.sectors; }
    /// The driver's name for the type of drive, "1.44M".
    const char* model() const { return model_; }
    /// True when the driver knows the layout of a disk in the drive.
    bool mediapresent() const { return mediaPresent_; }

    /// 1 on an Itanium machine, else 0.
    static int itaniumIA64();

private:
    int determineFloppygeometry(const DeviceNode& drive);
    int determineFloppytype(const DeviceNode& drive);

    int32_t errorcode_ = 0;
    FloppyGeometry geometry_;
    char model_[255] = "";
    bool mediaPresent_ = false;
};
