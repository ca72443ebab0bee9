#include "host/Frames.h"

#include <cstring>

#include "host/Workers.h"
#include "report/RowBytes.h"
#include "report/Utf8.h"

namespace host
{
using report::appendBytes;
using report::takeBytes;

namespace
{
enum FrameKind : uint8_t { ROW = 'R', AMENDMENT = 'A', OUTCOME = 'O' };

constexpr size_t kHeaderLength = 1 + sizeof(uint32_t);
constexpr uint32_t kMostPayload = 16U << 20;

std::string rowBytes(const report::Row& row)
{
    std::string bytes;
    for (const report::Value& value : row.values) {
        appendBytes(bytes, value.attribute->id);
        report::appendContent(bytes, value.content);
        report::appendText(bytes, value.source);
    }
    return bytes;
}

// Hands a value to the row's builder, which checks and cuts as for a collector.
void addContent(RowBuilder& row, uint32_t attribute, const report::Content& content, std::string_view source)
{
    if (const auto* text = std::get_if<std::string>(&content))
        row.text(attribute, *text, source);
    else if (const auto* number = std::get_if<uint64_t>(&content))
        row.number(attribute, *number, source);
    else if (const auto* real = std::get_if<double>(&content))
        row.real(attribute, *real, source);
    else
        row.dateTime(attribute, std::get<report::DateTime>(content), source);
}

bool takeValues(std::string_view bytes, RowBuilder& row)
{
    while (!bytes.empty()) {
        uint32_t attribute;
        report::Content content;
        std::string_view source;
        if (!takeBytes(bytes, attribute) || !report::takeContent(bytes, content) || !report::takeText(bytes, source))
            return false;
        addContent(row, attribute, content, source);
        if (!row.has(attribute))
            return false;
    }
    return true;
}
} // namespace

// A whole frame goes into the pipe at once, held ones in pieces that a pipe has room for.
void PipeCollection::write(std::string_view payload, uint8_t kind)
{
    constexpr size_t kMostHeld = 32768;
    appendBytes(held_, kind);
    appendBytes(held_, static_cast<uint32_t>(payload.size()));
    held_ += payload;
    if (isHolding_ && held_.size() < kMostHeld)
        return;
    writeAll(pipe_, held_);
    held_.clear();
}

void PipeCollection::release()
{
    isHolding_ = false;
    writeAll(pipe_, held_);
    held_.clear();
}

size_t PipeCollection::add(RowBuilder&& row)
{
    write(rowBytes(row.row()), ROW);
    return rows_++;
}

void PipeCollection::amend(size_t row, RowBuilder&& values)
{
    std::string payload;
    appendBytes(payload, static_cast<uint64_t>(row));
    write(payload + rowBytes(values.row()), AMENDMENT);
}

void PipeCollection::end()
{
    std::string payload;
    appendBytes(payload, static_cast<uint8_t>(notes().wasFound()));
    appendBytes(payload, static_cast<uint8_t>(notes().wasRefused()));
    write(payload + notes().text(), OUTCOME);
}

bool FrameReader::take(std::string_view bytes)
{
    bytes_ += bytes.size();
    if (bytes_ > kMostBytes || outcome_)
        return false;
    pending_ += bytes;
    std::string_view rest = pending_;
    while (!outcome_ && rest.size() >= kHeaderLength) {
        uint32_t length;
        memcpy(&length, rest.data() + 1, sizeof length);
        if (length > kMostPayload)
            return false;
        if (rest.size() - kHeaderLength < length)
            break;
        if (!takeFrame(static_cast<uint8_t>(rest[0]), rest.substr(kHeaderLength, length)))
            return false;
        rest.remove_prefix(kHeaderLength + length);
    }
    pending_.erase(0, pending_.size() - rest.size());
    return !outcome_ || pending_.empty(); // the outcome comes last
}

bool FrameReader::takeFrame(uint8_t kind, std::string_view payload)
{
    switch (kind) {
    case ROW:
        return takeRow(payload);
    case AMENDMENT:
        return takeAmendment(payload);
    case OUTCOME:
        return takeOutcome(payload);
    default:
        return false;
    }
}

bool FrameReader::takeRow(std::string_view payload)
{
    RowBuilder row(group_);
    if (rows_.size() == kMostRows || !takeValues(payload, row))
        return false;
    rows_.push_back(row.take());
    return true;
}

bool FrameReader::takeAmendment(std::string_view payload)
{
    uint64_t index;
    if (!takeBytes(payload, index) || index >= rows_.size())
        return false;
    RowBuilder row(group_, std::move(rows_[index]));
    const bool sensible = takeValues(payload, row);
    rows_[index] = row.take();
    return sensible;
}

bool FrameReader::takeOutcome(std::string_view payload)
{
    Outcome outcome;
    if (!report::takeFlag(payload, outcome.wasFound) || !report::takeFlag(payload, outcome.wasRefused))
        return false;
    outcome.notes = report::validUtf8(payload);
    outcome_ = std::move(outcome);
    return true;
}
} // namespace host
