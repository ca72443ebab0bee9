// Any answers of a SCSI device: no crash, and every text stays within its field. The input is a list of replies: a byte
// of flags, a length byte and so many data bytes for each.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <scsi/sg.h>
#include <sys/socket.h>
#include <unistd.h>

#include "linux/scsiinfo.h"

static constexpr size_t kReplyLength = 255;
static constexpr uint8_t kFailed = 1;  // the header's result is not 0
static constexpr uint8_t kShort = 2;   // the reply ends behind the given data
static constexpr uint8_t kSense = 4;   // the header holds sense data, its key in the upper four bits of the flags
static constexpr uint8_t kStatus = 8;  // the target's status is not GOOD
static constexpr int kMostReplies = 6; // more than are ever asked for

// Queues the reply that data begins with; returns how many bytes it took.
static size_t queueReply(int device, const uint8_t* data, size_t size)
{
    std::array<uint8_t, sizeof(sg_header) + kReplyLength> reply = {};
    sg_header header = {};
    header.result = data[0] & kFailed;
    header.target_status = (data[0] & kStatus) != 0;
    if ((data[0] & kSense) != 0) {
        header.sense_buffer[0] = 0x70;
        header.sense_buffer[2] = data[0] >> 4;
    }
    memcpy(reply.data(), &header, sizeof header);
    const size_t length = std::min<size_t>({data[1], kReplyLength, size - 2});
    memcpy(reply.data() + sizeof header, data + 2, length);
    const size_t replySize = (data[0] & kShort) != 0 ? sizeof header + length : reply.size();
    if (write(device, reply.data(), replySize) < 0)
        abort();
    return length + 2;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0)
        abort();
    for (int i = 0; i < kMostReplies && size >= 2; ++i) {
        const size_t taken = queueReply(ends[1], data, size);
        data += taken;
        size -= taken;
    }
    shutdown(ends[1], SHUT_WR);
    const scsiinfo info(ends[0]);
    close(ends[1]);
    if (strlen(info.manufacturer()) > 7 || strlen(info.model()) > 8 || strlen(info.serialnumber()) > kReplyLength - 4)
        abort();
    if (info.type() > 31 || (info.errorcode() == scsiinfo::NONE) != (info.sector_size() % 512 == 0))
        abort();
    return 0;
}
