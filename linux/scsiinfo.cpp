#include "linux/scsiinfo.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <scsi/scsi.h>
#include <scsi/sg.h>
#include <unistd.h>

namespace
{

constexpr unsigned kHeaderSize = 36;
static_assert(sizeof(sg_header) == kHeaderSize);

constexpr unsigned kReplyLength = 255;
constexpr unsigned kLongestCommand = 12;
constexpr unsigned kCommandLength = 6;
using Command = unsigned char[kCommandLength];

// The last byte but one of each is the length of the reply.
constexpr Command kTestUnitReady = {TEST_UNIT_READY, 0, 0, 0, 0, 0};
constexpr Command kInquiry = {INQUIRY, 0, 0, 0, kReplyLength, 0};
constexpr Command kSerialNumberPage = {INQUIRY, 1, 0x80, 0, kReplyLength, 0};
constexpr Command kFormatDevicePage = {MODE_SENSE, 0, 3, 0, kReplyLength, 0};
constexpr Command kRigidDiskPage = {MODE_SENSE, 0, 4, 0, kReplyLength, 0};

constexpr unsigned kPeripheralTypeMask = 0x1F;
constexpr unsigned kRemovableBit = 0x80;

// Sense data (SCSI Primary Commands, "Sense data"): its response code tells its form, which tells where the sense key
// is.
constexpr unsigned kResponseCodeMask = 0x7F;
constexpr unsigned kFirstFixed = 0x70;
constexpr unsigned kFirstDescriptors = 0x72;
constexpr unsigned kLastDescriptors = 0x73;
constexpr unsigned kFixedKeyOffset = 2;
constexpr unsigned kDescriptorsKeyOffset = 1;
constexpr unsigned kSenseKeyMask = 0x0F;

// True when the device refused the command. The kernel then tells result 0 and the whole length all the same, and hands
// out what an earlier command has left in its buffer.
bool isRefused(const sg_header& reply)
{
    const unsigned code = reply.sense_buffer[0] & kResponseCodeMask;
    if (code < kFirstFixed || code > kLastDescriptors)
        return reply.target_status != GOOD;
    const unsigned offset = code < kFirstDescriptors ? kFixedKeyOffset : kDescriptorsKeyOffset;
    const unsigned key = reply.sense_buffer[offset] & kSenseKeyMask;
    return key != NO_SENSE && key != RECOVERED_ERROR;
}

// Every request of the process is built here.
char request[kHeaderSize + kLongestCommand];

struct Reply {
    char bytes[kHeaderSize + kReplyLength] = {};

    const char* data() const { return bytes + kHeaderSize; }
    unsigned byte(unsigned offset) const { return static_cast<unsigned char>(data()[offset]); }
    // A text of a fixed field, which a NUL ends early.
    std::string text(unsigned offset, unsigned length) const
    {
        return std::string(data() + offset, strnlen(data() + offset, length));
    }
};

// True when the device gave a whole, good answer. A part of one and the data of a refused command are zeroed; a whole
// one with a bad result stays.
bool ask(scsiinfo* device, const Command& command, Reply* reply, unsigned replyLength = kReplyLength)
{
    memcpy(request + kHeaderSize, command, kCommandLength);
    return device->doSCSIcmd(kCommandLength, 0, request, replyLength, reply->bytes) == 0;
}

} // namespace

scsiinfo::scsiinfo(const char* path) : scsiinfo(open(path, O_RDWR)) {}

scsiinfo::scsiinfo(int descriptor) : node_(descriptor)
{
    if (node_.descriptor() < 0) {
        errorCode_ = NOT_OPEN;
        return;
    }
    readIdentity();
    if (type_ == TYPE_ROM)
        return;
    readGeometry();
    readSerialNumber();
    if (!isdevicevalid())
        errorCode_ = BAD_SECTOR_SIZE;
}

bool scsiinfo::mediapresent()
{
    Reply reply;
    return ask(this, kTestUnitReady, &reply, 0);
}

bool scsiinfo::isdevicevalid() const
{
    return sectorSize_ % 512 == 0;
}

int scsiinfo::doSCSIcmd(unsigned cmdLen, unsigned inLen, char* cmdBuf, unsigned outLen, char* outBuf)
{
    if (cmdLen == 0)
        return 30;
    if (cmdBuf == nullptr)
        return 50;
    if (outBuf == nullptr)
        return 60;
    const size_t requestSize = size_t{kHeaderSize} + cmdLen + inLen;
    const size_t replySize = size_t{kHeaderSize} + outLen;
    memset(outBuf, 0, replySize);
    sg_header header = {};
    header.reply_len = static_cast<int>(replySize);
    header.twelve_byte = cmdLen == 12 ? 1 : 0;
    memcpy(cmdBuf, &header, sizeof header);
    const ssize_t written = write(node_.descriptor(), cmdBuf, requestSize);
    if (written < 0 || static_cast<size_t>(written) < requestSize)
        return static_cast<int>(written);
    const ssize_t count = read(node_.descriptor(), outBuf, replySize);
    if (count < 0)
        perror("");
    if (count != static_cast<ssize_t>(replySize)) {
        memset(outBuf, 0, replySize); // a part of an answer is none
        return static_cast<int>(count);
    }
    memcpy(&header, outBuf, sizeof header);
    if (isRefused(header)) {
        memset(outBuf + kHeaderSize, 0, outLen);
        return static_cast<int>(count);
    }
    return header.result == 0 ? 0 : static_cast<int>(count);
}

uint32_t scsiinfo::getinteger(const char* bytes, int n)
{
    uint32_t value = 0;
    for (int i = 0; i < n; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

void scsiinfo::readIdentity()
{
    Reply reply;
    if (!ask(this, kInquiry, &reply))
        return;
    manufacturer_ = reply.text(8, 7); // the field holds 8 characters; the last one is left out
    model_ = reply.text(16, 8);
    type_ = reply.byte(0) & kPeripheralTypeMask;
    removable_ = (reply.byte(1) & kRemovableBit) != 0;
}

// The offsets are those behind a mode header of 4 bytes and one block descriptor of 8. A device that does not answer
// has a geometry of 0.
void scsiinfo::readGeometry()
{
    Reply reply;
    ask(this, kRigidDiskPage, &reply);
    geometry_.heads = reply.byte(17);
    geometry_.cylinders = getinteger(reply.data() + 14, 3);
    ask(this, kFormatDevicePage, &reply);
    geometry_.sectors = getinteger(reply.data() + 22, 2);
    sectorSize_ = getinteger(reply.data() + 24, 2);
    // Grouped so that the 32-bit products overflow as late as possible.
    const uint32_t sectorsPerHead = geometry_.sectors * geometry_.cylinders;
    const uint32_t bytesAcrossHeads = sectorSize_ * geometry_.heads;
    geometry_.kilobytes =
        sectorsPerHead / 2 * (bytesAcrossHeads / 512) + sectorsPerHead % 2 * (bytesAcrossHeads / 1024);
}

void scsiinfo::readSerialNumber()
{
    Reply reply;
    // Asked twice: the first answer is dropped.
    if (!ask(this, kSerialNumberPage, &reply) || !ask(this, kSerialNumberPage, &reply))
        return;
    constexpr unsigned kFirstCharacter = 4;
    serialNumber_ = reply.text(kFirstCharacter, std::min(reply.byte(3), kReplyLength - kFirstCharacter));
}
