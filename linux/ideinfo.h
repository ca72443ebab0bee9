#pragma once

#include <cstddef>
#include <cstdint>

class TextStream;

/// Bytes of the block with which an ATA drive identifies itself.
constexpr size_t IDENTIFY_SIZE = 512;

/// What the kernel and the drive itself say about one IDE device: the files of its directory under /proc/ide, the HDIO
/// ioctls of its node and its ATA IDENTIFY data. What cannot be read stays 0 or empty.
class ideinfo
{
public:
    /// path is the device's directory, "/proc/ide/ide0/hda"; the node is /dev/hda then.
    explicit ideinfo(const char* path);

    /// 0, or the errno of the last step that failed, or -1 for a path without a device name.
    int32_t errorcode() const { return errorcode_; }
    uint32_t totalsize() const { return totalsize_; } // kilobytes
    uint32_t numheads() const { return heads_; }
    uint32_t numcylinders() const { return cylinders_; }
    uint32_t numsectors() const { return sectors_; } // per track
    const char* manufacturer() const { return manufacturer_; }
    const char* model() const { return model_; }
    const char* serialnumber() const { return serialnumber_; }
    /// The first line of the media file, its newline included.
    const char* type() const { return media_; }
    /// 1 enabled, 0 supported but not enabled, -1 unsupported or unknown.
    int32_t security_enabled() const { return securityEnabled_; }
    /// 0 for the media text "cdrom" without a newline, else 1.
    int removable() const;

private:
    void determineIDEtype(const char* path);
    void determineIDEgeometry(const char* path);
    void determineIDEgeometrySyscall(const char* path);
    void determineIDEsize(const char* path);
    void determineIDEserialnumber(const char* path);
    void determineIDEhdsecurity(const char* path);
    void determineIDEmodel(const char* path);

    int32_t errorcode_ = 0;
    uint32_t totalsize_ = 0;
    uint32_t heads_ = 0;
    uint32_t cylinders_ = 0;
    uint32_t sectors_ = 0;
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
void decodeIDEserialnumber(const unsigned char (&identify)[IDENTIFY_SIZE], char (&serialNumber)[21]);

/// The security state in identify data, as security_enabled tells it.
int32_t decodeIDEsecurity(const unsigned char (&identify)[IDENTIFY_SIZE]);
