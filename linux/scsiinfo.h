#pragma once

#include <cstdint>
#include <string>

#include "linux/DeviceNode.h"

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
    uint32_t numheads() const { return heads_; }
    uint32_t numcylinders() const { return cylinders_; }
    uint32_t numsectors() const { return sectors_; }     // per track
    uint32_t sector_size() const { return sectorSize_; } // bytes
    uint32_t type() const { return type_; }              // peripheral device type; 0 when the device does not tell
    uint32_t totalsize() const { return totalSize_; }    // kilobytes
    const char* model() const { return model_.c_str(); } // 8 characters
    const char* manufacturer() const { return manufacturer_.c_str(); } // 7 characters
    const char* serialnumber() const { return serialNumber_.c_str(); }
    bool removable() const { return removable_; }
    /// Asks whether a medium is loaded and ready.
    bool mediapresent();
    /// False for a sector size that is no multiple of 512 bytes.
    bool isdevicevalid() const;

    /// Sends one command. cmdBuf holds room for a header, cmdLen command bytes and inLen bytes of input; the header is
    /// filled in here. outBuf has room for a header and outLen bytes and is all zero where no whole, good reply came.
    /// Returns 0 on success; 30, 50 or 60 for a missing command, cmdBuf or outBuf; else the result of the write or read
    /// that went wrong.
    int doSCSIcmd(unsigned cmdLen, unsigned inLen, char* cmdBuf, unsigned outLen, char* outBuf);

    /// The big-endian number of n bytes.
    static uint32_t getinteger(const char* bytes, int n);

private:
    void readIdentity();
    void readGeometry();
    void readSerialNumber();

    DeviceNode node_;
    int errorCode_ = NONE;
    uint32_t heads_ = 0;
    uint32_t cylinders_ = 0;
    uint32_t sectors_ = 0;
    uint32_t totalSize_ = 0;
    std::string model_;
    std::string manufacturer_;
    std::string serialNumber_;
    uint32_t type_ = 0;
    uint32_t sectorSize_ = 0;
    bool removable_ = false;
};
