#include "preload/DeviceNode.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <scsi/sg.h>

#include "preload/Record.h"

namespace fakemachine
{

static constexpr uint32_t kScsiCommand = 0x2285; // the ioctl SG_IO
static constexpr size_t kRequestHeader = 36;     // of the SCSI generic byte stream
static constexpr size_t kStreamSense = 16;       // bytes at its end
static constexpr int kStreamError = 5;           // result of a command that the device does not know

DeviceNode::DeviceNode(const std::string& text, const std::string& name)
{
    LinePlace place{name, 0};
    for (const std::string& line : splitLines(text)) {
        ++place.number;
        const std::vector<Word> words = splitWords(line, place);
        if (!words.empty())
            parseLine(words, place);
    }
}

static const std::string& textAt(const std::vector<Word>& words, size_t index, const LinePlace& place)
{
    if (index >= words.size())
        fail(place, "word missing after " + words.back().text);
    return words[index].text;
}

void DeviceNode::parseLine(const std::vector<Word>& words, const LinePlace& place)
{
    const std::string& directive = words[0].text;
    if (directive == "kind")
        block_ = textAt(words, 1, place) == "block";
    else if (directive == "open")
        parseOpen(words, place);
    else if (directive == "SG_IO")
        parseReply(ioctlReplies_, words, place);
    else if (directive == "sg")
        parseReply(streamReplies_, words, place);
    else
        parseAnswer(answers_[directive], words, place);
}

void DeviceNode::parseOpen(const std::vector<Word>& words, const LinePlace& place)
{
    const std::string& rule = textAt(words, 1, place);
    if (rule == "read-only")
        writeOpenError_ = words.size() > 2 ? parseErrno(words[2].text, place) : EACCES;
    else
        openError_ = parseErrno(rule, place);
}

static bool isHexByte(const Word& word)
{
    return !word.quoted && word.text.size() == 2 && isxdigit(static_cast<unsigned char>(word.text[0])) != 0 &&
           isxdigit(static_cast<unsigned char>(word.text[1])) != 0;
}

static std::string hexBytes(const std::vector<Word>& words, size_t* at, const LinePlace& place)
{
    std::string bytes;
    for (; *at < words.size() && isHexByte(words[*at]); ++*at)
        bytes += parseBytes({words[*at]}, 0, place);
    return bytes;
}

void DeviceNode::parseReply(Replies& replies, const std::vector<Word>& words, const LinePlace& place)
{
    size_t at = 1;
    ScsiReply& reply = replies[hexBytes(words, &at, place)];
    while (at < words.size()) {
        const std::string& key = words[at++].text;
        if (key == "=") {
            reply.data = parseBytes(words, at, place);
            return;
        }
        if (key == "sense") {
            reply.sense = hexBytes(words, &at, place);
            continue;
        }
        const std::string& value = textAt(words, at++, place);
        if (key == "error")
            reply.error = parseErrno(value, place);
        else if (key == "read-error")
            reply.readError = parseErrno(value, place);
        else if (key == "result")
            reply.result = static_cast<int>(parseNumber(value, place));
        else if (key == "host-status")
            reply.hostStatus = static_cast<unsigned>(parseNumber(value, place));
        else if (key == "status")
            reply.status = static_cast<unsigned>(parseNumber(value, place));
        else if (key == "driver-status")
            reply.driverStatus = static_cast<unsigned>(parseNumber(value, place));
        else if (key == "read-count")
            reply.readCount = parseNumber(value, place);
        else if (key == "write-count")
            reply.writeCount = parseNumber(value, place);
        else
            fail(place, "unknown word " + key);
    }
}

void DeviceNode::parseAnswer(IoctlAnswer& answer, const std::vector<Word>& words, const LinePlace& place)
{
    if (!isIoctlName(words[0].text))
        fail(place, "unknown directive " + words[0].text);
    for (size_t i = 1; i < words.size();) {
        const std::string& key = words[i++].text;
        if (words[i - 1].quoted) {
            answer.text = key;
        } else if (isdigit(static_cast<unsigned char>(key[0])) != 0) {
            answer.value = parseNumber(key, place);
        } else if (key == "error") {
            answer.error = parseErrno(textAt(words, i++, place), place);
        } else if (key == "serial" || key == "model" || key == "firmware") {
            const size_t width = key == "serial" ? 20 : key == "model" ? 40 : 8;
            std::string text = textAt(words, i++, place);
            text.resize(width, ' ');
            answer.bytes[key == "serial" ? 20 : key == "model" ? 54 : 46] = text;
        } else if (key == "word") {
            const size_t index = parseNumber(textAt(words, i++, place), place);
            const uint64_t value = parseNumber(textAt(words, i++, place), place);
            answer.bytes[index * 2] = {static_cast<char>(value), static_cast<char>(value >> 8)};
        } else if (key == "bytes") {
            const size_t offset = parseNumber(textAt(words, i++, place), place);
            answer.bytes[offset] = parseBytes(words, i, place);
            return;
        } else {
            answer.numbers[key] = parseNumber(textAt(words, i++, place), place);
        }
    }
}

int DeviceNode::openError(int flags) const
{
    if (openError_ != 0)
        return openError_;
    return (flags & O_ACCMODE) == O_RDONLY ? 0 : writeOpenError_;
}

int DeviceNode::control(uint32_t request, void* argument) const
{
    return request == kScsiCommand ? scsiControl(argument) : answerIoctl(answers_, request, argument);
}

int DeviceNode::scsiControl(void* argument) const
{
    sg_io_hdr_t* const header = static_cast<sg_io_hdr_t*>(argument);
    const std::string command(reinterpret_cast<const char*>(header->cmdp), header->cmd_len);
    const auto found = ioctlReplies_.find(command);
    if (header->interface_id != 'S') {
        errno = ENOSYS;
        return -1;
    }
    if (found == ioctlReplies_.end() || found->second.error != 0) {
        errno = found == ioctlReplies_.end() ? EIO : found->second.error;
        return -1;
    }
    const ScsiReply& reply = found->second;
    const std::string data = reply.data.value_or("");
    const size_t count = std::min<size_t>(data.size(), header->dxfer_len);
    memset(header->dxferp, 0, header->dxfer_len);
    memcpy(header->dxferp, data.data(), count);
    const size_t senseCount = std::min<size_t>(reply.sense.size(), header->mx_sb_len);
    memcpy(header->sbp, reply.sense.data(), senseCount);
    header->status = static_cast<unsigned char>(reply.status);
    header->masked_status = static_cast<unsigned char>(reply.status >> 1);
    header->host_status = static_cast<unsigned short>(reply.hostStatus);
    header->driver_status = static_cast<unsigned short>(reply.driverStatus);
    header->sb_len_wr = static_cast<unsigned char>(senseCount);
    header->resid = static_cast<int>(header->dxfer_len - count);
    header->duration = 1;
    header->info = reply.status + reply.hostStatus + reply.driverStatus == 0 ? SG_INFO_OK : SG_INFO_CHECK;
    return 0;
}

ssize_t DeviceNode::writeRequest(const void* data, size_t count)
{
    if (count < kRequestHeader) {
        errno = EIO;
        return -1;
    }
    const std::string rest(static_cast<const char*>(data) + kRequestHeader, count - kRequestHeader);
    pending_ = nullptr;
    unknownRequest_ = true;
    for (const auto& [command, reply] : streamReplies_) {
        if (rest.compare(0, command.size(), command) != 0)
            continue;
        unknownRequest_ = false;
        if (reply.error != 0) {
            errno = reply.error;
            return -1;
        }
        pending_ = &reply;
    }
    return pending_ != nullptr ? static_cast<ssize_t>(pending_->writeCount.value_or(count))
                               : static_cast<ssize_t>(count);
}

// The reply header; its word of bit fields holds the status without the lowest bit, which is no part of it.
static std::string streamHeader(const ScsiReply& reply, size_t total)
{
    std::string bytes(kRequestHeader, '\0');
    const unsigned statuses = reply.status >> 1 << 1 | reply.hostStatus << 6 | reply.driverStatus << 14;
    Record(bytes.data())
        .add(total, 4)
        .add(total, 4)
        .add(0, 4)
        .add(static_cast<uint32_t>(reply.result), 4)
        .add(statuses, 4);
    const std::string sense = reply.sense.substr(0, kStreamSense);
    return bytes.replace(kRequestHeader - kStreamSense, sense.size(), sense);
}

ssize_t DeviceNode::readReply(void* data, size_t count)
{
    const ScsiReply* reply = pending_;
    static const ScsiReply kUnknown = [] {
        ScsiReply unknown;
        unknown.result = kStreamError;
        return unknown;
    }();
    if (reply == nullptr)
        reply = unknownRequest_ ? &kUnknown : nullptr;
    if (reply == nullptr || reply->readError != 0) {
        errno = reply == nullptr ? EAGAIN : reply->readError;
        return -1;
    }
    pending_ = nullptr;
    unknownRequest_ = false;
    if (reply->data || reply->status == 0)
        streamBuffer_ = reply->data.value_or("");
    std::string bytes = streamHeader(*reply, std::max(count, kRequestHeader)) + streamBuffer_;
    bytes.resize(count, '\0');
    memcpy(data, bytes.data(), count);
    return static_cast<ssize_t>(std::min(count, reply->readCount.value_or(count)));
}

} // namespace fakemachine
