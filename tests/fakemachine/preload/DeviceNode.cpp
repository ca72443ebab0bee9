#include "preload/DeviceNode.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <scsi/sg.h>

namespace fakemachine
{

// Ioctl numbers, those whose number holds the size of a long or of a record with a pointer in both forms.
static constexpr uint32_t kGetGeometry = 0x301;
static constexpr uint32_t kGetIdentity = 0x30D;
static constexpr uint32_t kDriveCommand = 0x31F;
static constexpr uint32_t kFloppyParameters32 = 0x801C0204;
static constexpr uint32_t kFloppyParameters64 = 0x80200204;
static constexpr uint32_t kFloppyType = 0x8010020F;
static constexpr uint32_t kGetSize = 0x1260;
static constexpr uint32_t kGetSize64Long32 = 0x80041272;
static constexpr uint32_t kGetSize64Long64 = 0x80081272;
static constexpr uint32_t kGetIdLun = 0x5382;
static constexpr uint32_t kGetScsiId = 0x2276;
static constexpr uint32_t kScsiCommand = 0x2285;

static constexpr size_t kIdentitySize = 512;
static constexpr size_t kRequestHeader = 36; // of the SCSI generic byte stream
static constexpr int kStreamError = 5;       // result of a command that the device does not know

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

void DeviceNode::parseReply(Replies& replies, const std::vector<Word>& words, const LinePlace& place)
{
    std::string command;
    size_t at = 1;
    for (; at < words.size() && isHexByte(words[at]); ++at)
        command += parseBytes({words[at]}, 0, place);
    ScsiReply& reply = replies[command];
    while (at < words.size()) {
        const std::string& key = words[at++].text;
        if (key == "=") {
            reply.data = parseBytes(words, at, place);
            return;
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

void DeviceNode::parseAnswer(Answer& answer, const std::vector<Word>& words, const LinePlace& place)
{
    static const char* const kNames[] = {"HDIO_GETGEO",  "HDIO_GET_IDENTITY",    "HDIO_DRIVE_CMD",
                                         "FDGETPRM",     "FDGETDRVTYP",          "BLKGETSIZE",
                                         "BLKGETSIZE64", "SCSI_IOCTL_GET_IDLUN", "SG_GET_SCSI_ID"};
    if (std::find(std::begin(kNames), std::end(kNames), words[0].text) == std::end(kNames))
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

const DeviceNode::Answer* DeviceNode::find(const char* name) const
{
    const auto found = answers_.find(name);
    if (found == answers_.end()) {
        errno = ENOTTY;
        return nullptr;
    }
    if (found->second.error != 0) {
        errno = found->second.error;
        return nullptr;
    }
    return &found->second;
}

std::string DeviceNode::identity(const Answer& answer)
{
    std::string block(kIdentitySize, '\0');
    for (const auto& [offset, bytes] : answer.bytes)
        if (offset < kIdentitySize)
            block.replace(offset, std::min(bytes.size(), kIdentitySize - offset), bytes, 0,
                          std::min(bytes.size(), kIdentitySize - offset));
    return block;
}

// Writes numbers one after the other, each little-endian in its own width, as the kernel lays out its records.
class Record
{
public:
    explicit Record(void* out) : out_(static_cast<unsigned char*>(out)) {}
    Record& add(uint64_t value, size_t width)
    {
        for (size_t i = 0; i < width; ++i)
            *out_++ = static_cast<unsigned char>(value >> (8 * i));
        return *this;
    }

private:
    unsigned char* out_;
};

static uint64_t numberOf(const std::map<std::string, uint64_t>& numbers, const char* name)
{
    const auto found = numbers.find(name);
    return found == numbers.end() ? 0 : found->second;
}

int DeviceNode::control(uint32_t request, void* argument) const
{
    const auto number = [](const Answer* answer, const char* name) { return numberOf(answer->numbers, name); };
    const Answer* answer = nullptr;
    switch (request) {
    case kGetGeometry:
        if ((answer = find("HDIO_GETGEO")) == nullptr)
            return -1;
        Record(argument)
            .add(number(answer, "heads"), 1)
            .add(number(answer, "sectors"), 1)
            .add(number(answer, "cylinders"), 2)
            .add(0, sizeof(long) - 4)
            .add(number(answer, "start"), sizeof(long));
        return 0;
    case kGetIdentity:
        if ((answer = find("HDIO_GET_IDENTITY")) == nullptr)
            return -1;
        memcpy(argument, identity(*answer).data(), kIdentitySize);
        return 0;
    case kDriveCommand:
        if ((answer = find("HDIO_DRIVE_CMD")) == nullptr)
            return -1;
        // The fourth byte says how many sectors the caller has room for.
        memcpy(static_cast<char*>(argument) + 4, identity(*answer).data(),
               static_cast<unsigned char*>(argument)[3] == 0 ? 0 : kIdentitySize);
        Record(argument).add(0x50, 1).add(0, 2); // status: ready; no error, no sectors left
        return 0;
    case kFloppyParameters32:
    case kFloppyParameters64:
        if ((answer = find("FDGETPRM")) == nullptr)
            return -1;
        Record(argument)
            .add(number(answer, "size"), 4)
            .add(number(answer, "sect"), 4)
            .add(number(answer, "head"), 4)
            .add(number(answer, "track"), 4)
            .add(number(answer, "stretch"), 4)
            .add(number(answer, "gap"), 1)
            .add(number(answer, "rate"), 1)
            .add(number(answer, "spec1"), 1)
            .add(number(answer, "fmt_gap"), 1)
            .add(0, request == kFloppyParameters32 ? 4 : 8);
        return 0;
    case kFloppyType:
        if ((answer = find("FDGETDRVTYP")) == nullptr)
            return -1;
        strncpy(static_cast<char*>(argument), answer->text.c_str(), 16);
        return 0;
    case kGetSize:
        if ((answer = find("BLKGETSIZE")) == nullptr)
            return -1;
        if (sizeof(long) == 4 && answer->value > UINT32_MAX) {
            errno = EFBIG;
            return -1;
        }
        Record(argument).add(answer->value, sizeof(long));
        return 0;
    case kGetSize64Long32:
    case kGetSize64Long64:
        if ((answer = find("BLKGETSIZE64")) == nullptr)
            return -1;
        Record(argument).add(answer->value, 8);
        return 0;
    case kGetIdLun:
        if ((answer = find("SCSI_IOCTL_GET_IDLUN")) == nullptr)
            return -1;
        Record(argument)
            .add(number(answer, "id") | number(answer, "lun") << 8 | number(answer, "channel") << 16 |
                     number(answer, "host") << 24,
                 4)
            .add(number(answer, "unique"), 4);
        return 0;
    case kGetScsiId:
        if ((answer = find("SG_GET_SCSI_ID")) == nullptr)
            return -1;
        Record(argument)
            .add(number(answer, "host"), 4)
            .add(number(answer, "channel"), 4)
            .add(number(answer, "id"), 4)
            .add(number(answer, "lun"), 4)
            .add(number(answer, "type"), 4)
            .add(1, 2)
            .add(1, 2)
            .add(0, 8);
        return 0;
    case kScsiCommand:
        return scsiControl(argument);
    default:
        errno = ENOTTY;
        return -1;
    }
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
    const size_t count = std::min<size_t>(reply.data.size(), header->dxfer_len);
    memset(header->dxferp, 0, header->dxfer_len);
    memcpy(header->dxferp, reply.data.data(), count);
    header->status = static_cast<unsigned char>(reply.status);
    header->masked_status = static_cast<unsigned char>(reply.status >> 1);
    header->host_status = static_cast<unsigned short>(reply.hostStatus);
    header->driver_status = static_cast<unsigned short>(reply.driverStatus);
    header->sb_len_wr = 0;
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
    std::string bytes(kRequestHeader, '\0');
    const size_t total = std::max(count, kRequestHeader);
    Record(bytes.data()).add(total, 4).add(total, 4).add(0, 4).add(static_cast<uint32_t>(reply->result), 4);
    bytes += reply->data;
    bytes.resize(count, '\0');
    memcpy(data, bytes.data(), count);
    return static_cast<ssize_t>(std::min(count, reply->readCount.value_or(count)));
}

} // namespace fakemachine
