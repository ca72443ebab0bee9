#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "preload/Text.h"

namespace fakemachine
{

/// The answer to one SCSI command.
struct ScsiReply {
    std::string data;
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
    // What is known about one ioctl: an errno, numbers by name, bytes by offset.
    struct Answer {
        int error = 0;
        std::map<std::string, uint64_t> numbers;
        std::map<size_t, std::string> bytes;
        std::string text;
        uint64_t value = 0;
    };
    using Replies = std::map<std::string, ScsiReply>; // by the command's bytes

    void parseLine(const std::vector<Word>& words, const LinePlace& place);
    void parseOpen(const std::vector<Word>& words, const LinePlace& place);
    void parseReply(Replies& replies, const std::vector<Word>& words, const LinePlace& place);
    void parseAnswer(Answer& answer, const std::vector<Word>& words, const LinePlace& place);
    const Answer* find(const char* name) const;
    static std::string identity(const Answer& answer);
    int scsiControl(void* argument) const;

    bool block_ = true;
    int openError_ = 0;
    int writeOpenError_ = 0;
    std::map<std::string, Answer> answers_; // by the ioctl's name
    Replies ioctlReplies_;
    Replies streamReplies_;
    const ScsiReply* pending_ = nullptr; // the reply to the last request written
    bool unknownRequest_ = false;
};

} // namespace fakemachine
