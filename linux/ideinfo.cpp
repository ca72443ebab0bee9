#include "linux/ideinfo.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <linux/hdreg.h>
#include <string_view>

#include "linux/DeviceNode.h"
#include "linux/IDEDevices.h"
#include "linux/text/TextParse.h"
#include "linux/text/TextStream.h"

namespace
{

// A path under /proc/ide with a file name behind it, or a node under /dev.
using PathBuffer = char[512];

TextStream openDeviceFile(const char* path, const char* name)
{
    PathBuffer file;
    snprintf(file, sizeof file, "%s/%s", path, name);
    return TextStream::openFile(file);
}

// The device's node: the last part of its path is the name. False for a path without "/".
bool makeNodePath(const char* path, PathBuffer& node)
{
    const char* name = strrchr(path, '/');
    if (name == nullptr)
        return false;
    snprintf(node, sizeof node, "/dev%s", name);
    return true;
}

void copyText(std::string_view text, char* out)
{
    out[text.copy(out, text.size())] = '\0';
}

} // namespace

ideinfo::ideinfo(const char* path) : path_(path)
{
    determineIDEtype(path);
    if (!isCdRom()) {
        determineIDEgeometry(path);
        determineIDEsize(path);
        determineIDEserialnumber(path);
        determineIDEhdsecurity(path);
    }
    determineIDEmodel(path);
}

int ideinfo::removable() const
{
    return strcmp(media_, "cdrom") == 0 ? 0 : 1;
}

bool ideinfo::isCdRom() const
{
    return contains(media_, "cdrom");
}

bool ideinfo::mediapresent() const
{
    if (!isCdRom())
        return geometry_.kilobytes != 0;
    PathBuffer node;
    if (!makeNodePath(path_.c_str(), node))
        return false;
    // A node that is opened to wait for the drive would have it draw its tray in.
    const DeviceNode drive(node, O_RDONLY | O_NONBLOCK);
    return drive.control(CDROM_DRIVE_STATUS, CDSL_CURRENT) == CDS_DISC_OK;
}

OwnedText ideinfo::nextIDEdisk() const
{
    char list[kIDEMaxDevices][kIDEPathSize];
    const int count = determineIDEfilelist(list);
    for (int i = 0; i + 1 < count; ++i)
        if (path_ == list[i])
            return OwnedText(strdup(list[i + 1]));
    return nullptr;
}

void ideinfo::determineIDEtype(const char* path)
{
    TextStream media = openDeviceFile(path, "media");
    if (!media)
        errorcode_ = errno;
    else if (!media.readLine(media_))
        media_[0] = '\0';
}

bool parseIDEgeometry(TextStream& text, uint32_t (&numbers)[3])
{
    uint64_t fields[3] = {};
    bool present[3] = {};
    size_t field = 0; // runs on over all lines
    char line[256];
    while (text.readLine(line)) {
        if (!contains(line, "logical"))
            continue;
        for (const char* c = line; *c != '\0'; ++c) {
            if (*c == '/') {
                ++field;
            } else if (*c >= '0' && *c <= '9' && field < 3) {
                const uint64_t value = fields[field] * 10 + static_cast<uint64_t>(*c - '0');
                fields[field] = value > INT32_MAX ? INT32_MAX : value; // as strtol saturates
                present[field] = true;
            }
        }
    }
    if (!present[0] || !present[1] || !present[2])
        return false;
    for (size_t i = 0; i < 3; ++i)
        numbers[i] = static_cast<uint32_t>(fields[i]);
    return true;
}

void ideinfo::determineIDEgeometry(const char* path)
{
    TextStream geometry = openDeviceFile(path, "geometry");
    if (!geometry)
        errorcode_ = errno;
    uint32_t numbers[3];
    if (!parseIDEgeometry(geometry, numbers)) {
        determineIDEgeometrySyscall(path);
        return;
    }
    // The kernel's line says cylinders/heads/sectors: heads and sectors are exchanged here, deliberately.
    geometry_.cylinders = numbers[0];
    geometry_.sectors = numbers[1];
    geometry_.heads = numbers[2];
}

void ideinfo::determineIDEgeometrySyscall(const char* path)
{
    geometry_.heads = geometry_.cylinders = geometry_.sectors = 0;
    PathBuffer node;
    if (!makeNodePath(path, node)) {
        errorcode_ = -1;
        return;
    }
    const DeviceNode drive(node, O_RDONLY | O_NONBLOCK);
    hd_geometry geometry = {};
    if (drive.descriptor() < 0 || drive.control(HDIO_GETGEO, &geometry) < 0) {
        errorcode_ = errno;
        return;
    }
    geometry_.heads = geometry.heads;
    geometry_.cylinders = geometry.cylinders;
    geometry_.sectors = geometry.sectors;
}

uint32_t parseIDEcapacity(const char* text)
{
    constexpr uint32_t kOverflow = 0x7FFFFFFF;
    const uint32_t kilobytes = parseULong(text) >> 1;
    return kilobytes == kOverflow ? 0 : kilobytes;
}

void ideinfo::determineIDEsize(const char* path)
{
    geometry_.kilobytes = 0;
    TextStream capacity = openDeviceFile(path, "capacity");
    char line[256];
    if (!capacity)
        errorcode_ = errno;
    else if (capacity.readLine(line))
        geometry_.kilobytes = parseIDEcapacity(line);
}

void decodeIDEserialnumber(const unsigned char (&identify)[kIdentifySize], char (&serialNumber)[21])
{
    constexpr size_t kSerialOffset = 20; // words 10 to 19
    constexpr size_t kSerialLength = sizeof serialNumber - 1;
    memcpy(serialNumber, identify + kSerialOffset, kSerialLength);
    serialNumber[kSerialLength] = '\0';
}

void ideinfo::determineIDEserialnumber(const char* path)
{
    PathBuffer node;
    if (!makeNodePath(path, node))
        return;
    const DeviceNode drive(node, O_RDONLY);
    unsigned char identify[kIdentifySize] = {};
    if (drive.control(HDIO_GET_IDENTITY, identify) >= 0)
        decodeIDEserialnumber(identify, serialnumber_);
}

int32_t decodeIDEsecurity(const unsigned char (&identify)[kIdentifySize])
{
    constexpr size_t kSecurityStatus = 256; // low byte of word 128
    constexpr unsigned kSupported = 0x1;
    constexpr unsigned kEnabled = 0x2;
    const unsigned status = identify[kSecurityStatus];
    if ((status & kSupported) == 0)
        return -1;
    return (status & kEnabled) != 0 ? 1 : 0;
}

void ideinfo::determineIDEhdsecurity(const char* path)
{
    // Command, sector number, feature and count of sectors; the kernel puts the sector behind them.
    struct DriveCommand {
        unsigned char registers[4];
        unsigned char data[kIdentifySize];
    };
    static_assert(sizeof(DriveCommand) == 516);
    securityEnabled_ = -1;
    PathBuffer node;
    if (!makeNodePath(path, node))
        return;
    const DeviceNode drive(node, O_RDONLY);
    DriveCommand identify = {{WIN_IDENTIFY, 0, 0, 1}, {}};
    if (drive.control(HDIO_DRIVE_CMD, &identify) >= 0)
        securityEnabled_ = decodeIDEsecurity(identify.data);
}

void splitIDEmodel(const char* line, char* manufacturer, char* model)
{
    std::string_view text(line);
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    const size_t blank = text.find(' ');
    const bool split = blank != std::string_view::npos;
    copyText(text.substr(0, split ? blank : 0), manufacturer);
    copyText(text.substr(split ? blank + 1 : 0), model);
}

void ideinfo::determineIDEmodel(const char* path)
{
    model_[0] = '\0';
    TextStream model = openDeviceFile(path, "model");
    char line[256];
    if (!model)
        errorcode_ = errno;
    else if (model.readLine(line))
        splitIDEmodel(line, manufacturer_, model_);
}
