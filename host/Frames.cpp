#include "host/Frames.h"

#include <cstring>

#include "host/Workers.h"
#include "report/Utf8.h"

namespace host
{
namespace
{
enum FrameKind : uint8_t { ROW = 'R', AMENDMENT = 'A', OUTCOME = 'O' };
enum ContentKind : uint8_t { TEXT, NUMBER, REAL, DATE_TIME }; // in the order of report::Content

constexpr size_t kHeaderLength = 1 + sizeof(uint32_t);
constexpr uint32_t kMostPayload = 16U << 20;

template <typename T>
void append(std::string& bytes, T value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void appendText(std::string& bytes, std::string_view text)
{
    append(bytes, static_cast<uint32_t>(text.size()));
    bytes += text;
}

void appendDateTime(std::string& bytes, const report::DateTime& t)
{
    append(bytes, t.year);
    for (const uint8_t part : {t.month, t.day, t.hour, t.minute, t.second})
        append(bytes, part);
    append(bytes, static_cast<uint8_t>(t.offsetSeconds.has_value()));
    append(bytes, t.offsetSeconds.value_or(0));
}

void appendContent(std::string& bytes, const report::Content& content)
{
    append(bytes, static_cast<uint8_t>(content.index()));
    if (const auto* text = std::get_if<std::string>(&content))
        appendText(bytes, *text);
    else if (const auto* number = std::get_if<uint64_t>(&content))
        append(bytes, *number);
    else if (const auto* real = std::get_if<double>(&content))
        append(bytes, *real);
    else
        appendDateTime(bytes, std::get<report::DateTime>(content));
}

std::string rowBytes(const report::Row& row)
{
    std::string bytes;
    for (const report::Value& value : row.values) {
        append(bytes, value.attribute->id);
        appendContent(bytes, value.content);
        appendText(bytes, value.source);
    }
    return bytes;
}

// Takes a value from the front of the bytes; false, and nothing taken, when there are too few.
template <typename T>
bool take(std::string_view& bytes, T& value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    if (bytes.size() < sizeof value)
        return false;
    memcpy(&value, bytes.data(), sizeof value);
    bytes.remove_prefix(sizeof value);
    return true;
}

bool takeText(std::string_view& bytes, std::string_view& text)
{
    uint32_t length;
    if (!take(bytes, length) || bytes.size() < length)
        return false;
    text = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return true;
}

bool takeFlag(std::string_view& bytes, bool& flag)
{
    uint8_t byte;
    if (!take(bytes, byte) || byte > 1)
        return false;
    flag = byte != 0;
    return true;
}

// A time that a report can hold; offsets are those of the world's zones, with room to spare.
bool isDateTime(const report::DateTime& t)
{
    constexpr int32_t kMostOffset = 26 * 3600;
    return t.year >= 0 && t.year <= 9999 && t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31 &&
           t.hour <= 23 && t.minute <= 59 && t.second <= 60 &&
           (!t.offsetSeconds || (*t.offsetSeconds >= -kMostOffset && *t.offsetSeconds <= kMostOffset));
}

bool takeDateTime(std::string_view& bytes, report::DateTime& t)
{
    bool hasOffset;
    int32_t offset;
    if (!take(bytes, t.year) || !take(bytes, t.month) || !take(bytes, t.day) || !take(bytes, t.hour) ||
        !take(bytes, t.minute) || !take(bytes, t.second) || !takeFlag(bytes, hasOffset) || !take(bytes, offset))
        return false;
    if (hasOffset)
        t.offsetSeconds = offset;
    return isDateTime(t);
}

// Takes one value through the row's builder, which checks and cuts as for a collector; false when it makes no sense.
bool takeContent(std::string_view& bytes, uint32_t attribute, std::string_view& source, RowBuilder& row)
{
    uint8_t kind;
    std::string_view text;
    uint64_t number;
    double real;
    report::DateTime dateTime;
    if (!take(bytes, kind))
        return false;
    switch (kind) {
    case TEXT:
        return takeText(bytes, text) && takeText(bytes, source) && (row.text(attribute, text, source), true);
    case NUMBER:
        return take(bytes, number) && takeText(bytes, source) && (row.number(attribute, number, source), true);
    case REAL:
        return take(bytes, real) && takeText(bytes, source) && (row.real(attribute, real, source), true);
    case DATE_TIME:
        return takeDateTime(bytes, dateTime) && takeText(bytes, source) &&
               (row.dateTime(attribute, dateTime, source), true);
    default:
        return false;
    }
}

bool takeValues(std::string_view bytes, RowBuilder& row)
{
    while (!bytes.empty()) {
        uint32_t attribute;
        std::string_view source;
        if (!take(bytes, attribute) || !takeContent(bytes, attribute, source, row) || !row.has(attribute))
            return false;
    }
    return true;
}
} // namespace

// A whole frame goes into the pipe at once, held ones in pieces that a pipe has room for.
void PipeCollection::write(std::string_view payload, uint8_t kind)
{
    constexpr size_t kMostHeld = 32768;
    append(held_, kind);
    append(held_, static_cast<uint32_t>(payload.size()));
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
    append(payload, static_cast<uint64_t>(row));
    write(payload + rowBytes(values.row()), AMENDMENT);
}

void PipeCollection::end()
{
    std::string payload;
    append(payload, static_cast<uint8_t>(notes().wasFound()));
    append(payload, static_cast<uint8_t>(notes().wasRefused()));
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
    if (!host::take(payload, index) || index >= rows_.size())
        return false;
    RowBuilder row(group_, std::move(rows_[index]));
    const bool sensible = takeValues(payload, row);
    rows_[index] = row.take();
    return sensible;
}

bool FrameReader::takeOutcome(std::string_view payload)
{
    Outcome outcome;
    if (!takeFlag(payload, outcome.wasFound) || !takeFlag(payload, outcome.wasRefused))
        return false;
    outcome.notes = report::validUtf8(payload);
    outcome_ = std::move(outcome);
    return true;
}
} // namespace host
