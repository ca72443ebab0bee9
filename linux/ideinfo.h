#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "com/Owned.h"
#include "linux/DriveGeometry.h"

class TextStream;

/// Bytes of the block with which an ATA drive identifies itself.
constexpr size_t kIdentifySize = 512;

/// What the kernel and the drive itself say about one IDE device: the files of its directory under /proc/ide, the HDIO
/// ioctls of its node and its ATA IDENTIFY data. What cannot be read stays 0 or empty.
class ideinfo
{
public:
    /// path is the device's directory, "/proc/ide/ide0/hda"; the node is /dev/hda then.
    explicit ideinfo(const char* path);

    /// 0, or the errno of the last step that failed, or -1 for a path without a device name.
    int32_t errorcode() const { return errorcode_; }
    /// Kilobytes.
    uint32_t totalsize() const { return static_cast<uint32_t>(geometry_.kilobytes); }
    uint32_t numheads() const { return geometry_.heads; }
    uint32_t numcylinders() const { return geometry_.cylinders; }
    uint32_t numsectors() const { return geometry_.sectors; } // per track
    const DriveGeometry& geometry() const { return geometry_; }
    /// Bytes; always 0, since neither the kernel's files nor the ioctls tell it.
    uint32_t sector_size() const { return 0; }
    const char* manufacturer() const { return manufacturer_; }
    const char* model() const { return model_; }
    const char* serialnumber() const { return serialnumber_; }
    /// The first line of the media file, its newline included.
    const char* type() const { return media_; }
    /// 1 enabled, 0 supported but not enabled, -1 unsupported or unknown.
    int32_t security_enabled() const { return securityEnabled_; }
    /// 0 for the media text "cdrom" without a newline, else 1.
    int removable() const;
    /// True when there is a medium: for a CD-ROM what the drive says now (asked anew, without moving its tray), for any
    /// other device that the kernel told a size.
    bool mediapresent() const;
    /// The directory of the device that determineIDEfilelist lists behind this one, or null.
    OwnedText nextIDEdisk() const;

private:
    bool isCdRom() const;
    void determineIDEtype(const char* path);
    void determineIDEgeometry(const char* path);
    void determineIDEgeometrySyscall(const char* path);
    void determineIDEsize(const char* path);
    void determineIDEserialnumber(const char* path);
    void determineIDEhdsecurity(const char* path);
    void determineIDEmodel(const char* path);

    std::string path_;
    int32_t errorcode_ = 0;
    DriveGeometry geometry_;
    char manufacturer_[256] = "";
    char model_[256] = "";
    char serialnumber_[21] = "";
    char media_[256] = "";
    int32_t securityEnabled_ = -1;
};

/// The three numbers of the line "logical 1023/255/63", in the order in which they stand there. False, and numbers
/// left alone, when one of them has no digit.
bool parseIDEgeometry(TextStream& text, uint32_t (&numbers)[3]);

/// Kilobytes of a drive whose capacity file says text, a count of 512-byte sectors; 0 for a count that cannot be true.
uint32_t parseIDEcapacity(const char* text);

/// Splits "WDC WD400BB-00DEA0" at the first blank into manufacturer and model; a line without a blank is all model. The
/// outputs have room for the whole line.
void splitIDEmodel(const char* line, char* manufacturer, char* model);

/// The serial number in identify data: 20 characters as the kernel delivers them, blanks included.
void decodeIDEserialnumber(const unsigned char (&identify)[kIdentifySize], char (&serialNumber)[21]);

/// The security state in identify data, as security_enabled tells it.
int32_t decodeIDEsecurity(const unsigned char (&identify)[kIdentifySize]);
