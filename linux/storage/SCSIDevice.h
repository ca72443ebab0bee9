#pragma once

#include <cstdint>
#include <string>

#include "linux/DriveGeometry.h"

/// What a SCSI device tells of itself and where it is connected.
struct SCSIIdentity {
    std::string vendor;  // up to 8 characters
    std::string product; // up to 16 characters
    std::string serial;  // always empty: the generic interface does not tell it
    int32_t host = 0;
    int32_t channel = 0;
    int32_t target = 0;
    int32_t lun = 0;
    int32_t type = 0; // peripheral type
};

/// A SCSI device that the generic interface identified; the classes derived from it are those of devices whose disk,
/// CD-ROM or tape node was found, too.
class SCSIInfo
{
public:
    explicit SCSIInfo(const SCSIIdentity& identity) : identity_(identity) {}
    virtual ~SCSIInfo() = default;
    /// A name for the kind of device, which the caller frees with free().
    virtual char* getTypeLabel() const;

    const SCSIIdentity& identity() const { return identity_; }
    bool disk() const { return disk_; } // geometry is known, too: the object is a SCSIDiskInfo
    bool removable() const { return removable_; }
    bool tape() const { return tape_; }

protected:
    bool disk_ = false;
    bool removable_ = false;
    bool tape_ = false;

private:
    SCSIIdentity identity_;
};

class SCSIDiskInfo final : public SCSIInfo
{
public:
    SCSIDiskInfo(const SCSIIdentity& identity, const DriveGeometry& geometry);
    char* getTypeLabel() const override;
    const DriveGeometry& geometry() const { return geometry_; }

private:
    DriveGeometry geometry_;
};

class SCSIRemovableInfo final : public SCSIInfo
{
public:
    explicit SCSIRemovableInfo(const SCSIIdentity& identity);
    char* getTypeLabel() const override;
};

class SCSITapeInfo final : public SCSIInfo
{
public:
    explicit SCSITapeInfo(const SCSIIdentity& identity);
    char* getTypeLabel() const override;
};
