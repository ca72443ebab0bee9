#include "report/diff/RowStore.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

#include "report/RowBytes.h"
#include "report/TemporaryFile.h"

namespace report
{
namespace
{
constexpr size_t kMostInMemory = size_t{1024} * 1024;
constexpr size_t kBlock = size_t{64} * 1024;
constexpr uint32_t kNoPosition = UINT32_MAX; // of an attribute that the catalog does not know: its name follows

std::string rowBytes(const Row& row)
{
    std::string bytes;
    for (const Value& value : row.values) {
        appendBytes(bytes, value.attribute != nullptr ? static_cast<uint32_t>(value.attribute->position) : kNoPosition);
        if (value.attribute == nullptr)
            appendText(bytes, value.element);
        appendBytes(bytes, static_cast<uint8_t>(value.markedKey));
        appendContent(bytes, value.content);
    }
    return bytes;
}

bool takeValue(std::string_view& bytes, const Group* group, Value& value)
{
    uint32_t position;
    std::string_view name;
    if (!takeBytes(bytes, position))
        return false;
    if (position != kNoPosition && (group == nullptr || position >= group->attributes.size()))
        return false;
    if (position != kNoPosition)
        value.attribute = &group->attributes[position];
    else if (takeText(bytes, name))
        value.element = name;
    return takeFlag(bytes, value.markedKey) && takeContent(bytes, value.content);
}
} // namespace

RowStore::~RowStore()
{
    if (descriptor_ != -1)
        close(descriptor_);
}

// Writes the tail to the file.
void RowStore::spill()
{
    if (descriptor_ == -1)
        descriptor_ = temporaryFile();
    std::string_view rest = tail_;
    while (descriptor_ != -1 && !rest.empty()) {
        const ssize_t written = write(descriptor_, rest.data(), rest.size());
        if (written < 0 && errno != EINTR)
            break;
        rest.remove_prefix(written < 0 ? 0 : static_cast<size_t>(written));
    }
    if (!rest.empty())
        error_ = errno;
    spilled_ += tail_.size();
    tail_.clear();
}

uint64_t RowStore::add(const Row& row)
{
    const uint64_t place = spilled_ + tail_.size();
    if (error_ != 0)
        return place;
    appendText(tail_, rowBytes(row));
    if (tail_.size() > kMostInMemory)
        spill();
    return place;
}

// Fills the block from the file, beginning at a place.
bool RowStore::readBlock(uint64_t place, size_t length)
{
    const uint64_t most = std::min<uint64_t>(std::max(length, kBlock), spilled_ - place);
    block_.resize(most);
    blockPlace_ = place;
    for (size_t filled = 0; filled < block_.size();) {
        const ssize_t got =
            pread(descriptor_, block_.data() + filled, block_.size() - filled, static_cast<off_t>(place + filled));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            error_ = got < 0 ? errno : EIO;
            block_.clear();
            return false;
        }
        filled += static_cast<size_t>(got);
    }
    return true;
}

// Rows stand in the file or in the tail as a whole, since the tail is spilled between two of them.
bool RowStore::read(uint64_t place, size_t length, std::string& bytes)
{
    const bool isInTail = place >= spilled_;
    const uint64_t end = spilled_ + (isInTail ? tail_.size() : 0);
    if (error_ != 0 || place > end || length > end - place)
        return false;
    if (isInTail) {
        bytes = tail_.substr(place - spilled_, length);
        return true;
    }
    const bool isInBlock =
        place >= blockPlace_ && place - blockPlace_ <= block_.size() && length <= block_.size() - (place - blockPlace_);
    if (!isInBlock && !readBlock(place, length))
        return false;
    bytes = block_.substr(place - blockPlace_, length);
    return true;
}

Row RowStore::row(uint64_t place, const Group* group)
{
    Row row;
    std::string bytes;
    uint32_t length = 0;
    if (!read(place, sizeof length, bytes))
        return row;
    memcpy(&length, bytes.data(), sizeof length);
    if (!read(place + sizeof length, length, bytes))
        return row;
    for (std::string_view rest = bytes; !rest.empty();) {
        Value value;
        if (!takeValue(rest, group, value)) {
            error_ = EIO;
            return {};
        }
        row.values.push_back(std::move(value));
    }
    return row;
}
} // namespace report
