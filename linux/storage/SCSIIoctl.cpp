#include "linux/storage/SCSIIoctl.h"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/hdreg.h>
#include <memory>
#include <scsi/scsi.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>

#include "linux/DeviceNode.h"

namespace
{

constexpr unsigned kInquiryLength = 96;
constexpr unsigned kSenseLength = 32;
constexpr unsigned kTimeoutMilliseconds = 20000;

// The first of the two words with which SCSI_IOCTL_GET_IDLUN answers is the packed address.
struct IdLun {
    int32_t address;
    int32_t hostUniqueId;
};

std::string fieldText(const char* field, size_t length)
{
    return std::string(field, strnlen(field, length));
}

bool inquire(const DeviceNode& node, char (&data)[kInquiryLength])
{
    unsigned char command[] = {INQUIRY, 0, 0, 0, kInquiryLength, 0};
    unsigned char sense[kSenseLength] = {};
    sg_io_hdr request = {};
    request.interface_id = 'S';
    request.dxfer_direction = SG_DXFER_FROM_DEV;
    request.cmd_len = sizeof command;
    request.cmdp = command;
    request.mx_sb_len = sizeof sense;
    request.sbp = sense;
    request.dxfer_len = sizeof data;
    request.dxferp = data;
    request.timeout = kTimeoutMilliseconds;
    return node.control(SG_IO, &request) >= 0;
}

// Opens the generic node and closes it again before the other nodes are tried.
bool readIdentity(const char* path, SCSIIdentity* identity)
{
    const DeviceNode node(path, O_RDONLY);
    if (node.descriptor() < 0)
        return false;
    sg_scsi_id id = {};
    char data[kInquiryLength] = {};
    if (node.control(SG_GET_SCSI_ID, &id) < 0 || !inquire(node, data))
        return false;
    identity->vendor = fieldText(data + 8, 8);
    identity->product = fieldText(data + 16, 16);
    identity->host = id.host_no;
    identity->channel = id.channel;
    identity->target = id.scsi_id;
    identity->lun = id.lun;
    identity->type = id.scsi_type;
    return true;
}

int32_t packedAddress(const SCSIIdentity& identity)
{
    const auto address = static_cast<uint32_t>(identity.target) + static_cast<uint32_t>(identity.lun) * 0x100 +
                         static_cast<uint32_t>(identity.channel) * 0x10000 +
                         static_cast<uint32_t>(identity.host) * 0x1000000;
    return static_cast<int32_t>(address);
}

// Calls found(node) for each of the nodes prefix + "a" to "d" that belongs to the device.
template <typename Found>
void forEachNode(const char* prefix, const SCSIIdentity& identity, Found found)
{
    for (char letter = 'a'; letter <= 'd'; ++letter) {
        char path[16];
        snprintf(path, sizeof path, "%s%c", prefix, letter);
        const DeviceNode node(path, O_RDONLY);
        if (node.descriptor() < 0)
            continue;
        const int32_t address = get_scsi_idlun(node.descriptor());
        if (address >= 0 && address == packedAddress(identity))
            found(node);
    }
}

bool readGeometry(const DeviceNode& node, DriveGeometry* geometry)
{
    hd_geometry reply = {};
    if (node.control(HDIO_GETGEO, &reply) < 0)
        return false;
    unsigned long long sectors = 0;
    disk_size(node.descriptor(), &sectors); // sectors stays 0 when the size is not told
    *geometry = {reply.heads, reply.cylinders, reply.sectors, uint64_t{get_megabytes(sectors)} << 10};
    return true;
}

// The last node that matches wins.
std::unique_ptr<SCSIInfo> findNode(const SCSIIdentity& identity)
{
    std::unique_ptr<SCSIInfo> info;
    switch (identity.type) {
    case TYPE_TAPE:
        // Letters, though the kernel numbers tape nodes.
        forEachNode("/dev/st", identity, [&](const DeviceNode&) { info = std::make_unique<SCSITapeInfo>(identity); });
        break;
    case TYPE_ROM:
        forEachNode("/dev/sr", identity,
                    [&](const DeviceNode&) { info = std::make_unique<SCSIRemovableInfo>(identity); });
        break;
    case TYPE_DISK:
        forEachNode("/dev/sd", identity, [&](const DeviceNode& node) {
            DriveGeometry geometry;
            if (readGeometry(node, &geometry))
                info = std::make_unique<SCSIDiskInfo>(identity, geometry);
        });
        break;
    default:
        info = std::make_unique<SCSIInfo>(identity);
    }
    return info;
}

} // namespace

int get_scsi_info(const char* path, SCSIInfo*& info)
{
    SCSIIdentity identity;
    if (!readIdentity(path, &identity))
        return 0;
    if (std::unique_ptr<SCSIInfo> found = findNode(identity))
        info = found.release();
    return 1;
}

int32_t get_scsi_idlun(int fd)
{
    IdLun idLun = {};
    return ioctl(fd, SCSI_IOCTL_GET_IDLUN, &idLun) < 0 ? -1 : idLun.address;
}

int disk_size(int fd, unsigned long long* sectors)
{
    unsigned long count = 0;
    const int result = ioctl(fd, BLKGETSIZE, &count);
    if (result < 0)
        return result;
    // A 32-bit process is refused a count that its long cannot hold; for a longer one the size in bytes is believed.
    const auto count32 = static_cast<unsigned long long>(static_cast<int32_t>(count));
    uint64_t bytes = 0;
    const bool hasBytes = ioctl(fd, BLKGETSIZE64, &bytes) >= 0 && bytes != 0 && bytes != count32;
    *sectors = hasBytes ? bytes >> 9 : count32;
    return 0;
}

uint32_t get_megabytes(unsigned long long sectors)
{
    return static_cast<uint32_t>(sectors * 512 / 1048576);
}
