#pragma once

#include <cstdint>
#include <string>

#include "linux/DeviceNode.h"
#include "linux/DriveGeometry.h"

/// One SCSI device, asked through the byte-stream interface of its generic node: a request header and a command are
/// written, a reply header and data are read. Everything is asked when the object is made.
class scsiinfo
{
public:
    /// Values of errorcode().
    enum Error { NONE = 0, NOT_OPEN = 10, BAD_SECTOR_SIZE = 70 };

    /// Opens the generic node.
    explicit scsiinfo(const char* path);
    /// Takes over an open generic node; a negative descriptor is one that could not be opened.
    explicit scsiinfo(int descriptor);

    int errorcode() const { return errorCode_; }
    uint32_t numheads() const { return geometry_.heads; }
    uint32_t numcylinders() const { return geometry_.cylinders; }
    uint32_t numsectors() const { return geometry_.sectors; } // per track
    uint32_t sector_size() const { return sectorSize_; }      // bytes
    uint32_t type() const { return type_; }                   // peripheral device type; 0 when the device does not tell
    /// Kilobytes.
    uint32_t totalsize() const { return static_cast<uint32_t>(geometry_.kilobytes); }
    const DriveGeometry& geometry() const { return geometry_; }
    const char* model() const { return model_.c_str(); }               // 8 characters
    const char* manufacturer() const { return manufacturer_.c_str(); } // 7 characters
    const char* serialnumber() const { return serialNumber_.c_str(); }
    bool removable() const { return removable_; }
    /// Asks whether a medium is loaded and ready.
    bool mediapresent();
    /// False for a sector size that is no multiple of 512 bytes.
    bool isdevicevalid() const;

    /// Sends one command. cmdBuf holds room for a header, cmdLen command bytes and inLen bytes of input; the header is
    /// filled in here. outBuf has room for a header and outLen bytes; it is all zero where no whole reply came, and the
    /// data is where the device refused the command (sense data with a key other than "no sense" and "recovered error",
    /// or no sense data and a status other than GOOD). Returns 0 on success; 30, 50 or 60 for a missing command, cmdBuf
    /// or outBuf; else the result of the write or read that went wrong, which for a refused command and one with a
    /// result other than 0 is the count that was read.
    int doSCSIcmd(unsigned cmdLen, unsigned inLen, char* cmdBuf, unsigned outLen, char* outBuf);

    /// The big-endian number of n bytes.
    static uint32_t getinteger(const char* bytes, int n);

private:
    void readIdentity();
    void readGeometry();
    void readSerialNumber();

    DeviceNode node_;
    int errorCode_ = NONE;
    DriveGeometry geometry_;
    std::string model_;
    std::string manufacturer_;
    std::string serialNumber_;
    uint32_t type_ = 0;
    uint32_t sectorSize_ = 0;
    bool removable_ = false;
};
