#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "preload/Ioctls.h"
#include "preload/Text.h"

namespace fakemachine
{

/// The answer to one SCSI command.
struct ScsiReply {
    std::optional<std::string> data;
    std::string sense;
    int error = 0;     // errno of the ioctl, or of the write
    int readError = 0; // errno of the read
    int result = 0;    // result field of the reply's header
    unsigned hostStatus = 0, status = 0, driverStatus = 0;
    std::optional<size_t> readCount;  // bytes that the read gives, header included
    std::optional<size_t> writeCount; // bytes that the write takes
};

/// What a device node answers: a text of devices/<path> (see README.md).
class DeviceNode
{
public:
    DeviceNode(const std::string& text, const std::string& name);

    bool isBlock() const { return block_; }
    /// 0, or the errno with which open fails under these flags.
    int openError(int flags) const;
    /// Answers an ioctl; result and errno as of ioctl itself.
    int control(uint32_t request, void* argument) const;
    /// The SCSI generic byte stream: a request is written, its reply read. Results and errno as of write and read.
    ssize_t writeRequest(const void* data, size_t count);
    ssize_t readReply(void* data, size_t count);

private:
    using Replies = std::map<std::string, ScsiReply>; // by the command's bytes

    void parseLine(const std::vector<Word>& words, const LinePlace& place);
    void parseOpen(const std::vector<Word>& words, const LinePlace& place);
    void parseReply(Replies& replies, const std::vector<Word>& words, const LinePlace& place);
    void parseAnswer(IoctlAnswer& answer, const std::vector<Word>& words, const LinePlace& place);
    int scsiControl(void* argument) const;

    bool block_ = true;
    int openError_ = 0;
    int writeOpenError_ = 0;
    IoctlAnswers answers_;
    Replies ioctlReplies_;
    Replies streamReplies_;
    const ScsiReply* pending_ = nullptr; // the reply to the last request written
    std::string streamBuffer_;           // data of the reply before, which a refused command leaves alone
    bool unknownRequest_ = false;
};

} // namespace fakemachine
