#include "report/read/RowMaker.h"

#include <libxml/tree.h>

#include "report/Utf8.h"

namespace report
{
namespace
{
// Whether both forms can have the name, which the catalog does not know.
bool isElementName(std::string_view name)
{
    const std::string text(name);
    return text.find('\0') == text.npos && xmlValidateName(reinterpret_cast<const xmlChar*>(text.c_str()), 0) == 0;
}

constexpr std::string_view kSources = "Sources"; // the JSON form's member
} // namespace

bool RowMaker::beginGroup(std::string_view element, uint32_t version, uint64_t line)
{
    if (hasGroup_ && group_.name() == element && group_.version == version)
        return true;
    const Group* group = findGroup(element);
    if (group == nullptr && !isElementName(element))
        return fail(line, "expected the name of a group, found " + shown(element));
    hasGroup_ = true;
    group_.group = group;
    group_.element = group_.group != nullptr ? "" : element;
    group_.version = version;
    rowsOfGroup_ = 0;
    sink_.group(group_, line);
    return true;
}

void RowMaker::beginRow(uint64_t line)
{
    isInRow_ = true;
    ++rowsOfGroup_;
    row_.values.clear();
    lines_.row = line;
    lines_.values.clear();
    rowBytes_ = 0;
    next_ = 0;
    seen_.assign(group_.group != nullptr ? group_.group->attributes.size() : 0, false);
    other_.clear();
}

bool RowMaker::isRepeated(const Value& value)
{
    if (value.attribute == nullptr)
        return !other_.insert(value.element).second;
    const size_t position = value.attribute->position;
    const bool isSeen = seen_[position];
    seen_[position] = true;
    return isSeen;
}

Value* RowMaker::addValue(std::string_view element, uint64_t line)
{
    if (row_.values.size() >= kMostRowValues) {
        fail(line, "more than " + std::to_string(kMostRowValues) + " attributes in a row", ProblemKind::SIZE);
        return nullptr;
    }
    Value value;
    if (const Group* group = group_.group) {
        const bool isNext = next_ < group->attributes.size() && group->attributes[next_].element == element;
        value.attribute = isNext ? &group->attributes[next_] : group->find(element);
    }
    if (value.attribute == nullptr && (!isElementName(element) || element == kSources)) {
        fail(line, "expected the name of an attribute, found " + shown(element));
        return nullptr;
    }
    if (value.attribute != nullptr)
        next_ = value.attribute->position + 1;
    else
        value.element = element;
    if (isRepeated(value)) {
        fail(line, "attribute " + shown(element) + " comes twice in its row", ProblemKind::REPEATED);
        return nullptr;
    }
    row_.values.push_back(std::move(value));
    lines_.values.push_back(line);
    return addBytes(element.size(), line) ? &row_.values.back() : nullptr;
}

bool RowMaker::addBytes(size_t bytes, uint64_t line)
{
    rowBytes_ += bytes;
    return rowBytes_ <= kMostRowBytes ||
           fail(line, "a row of more than " + std::to_string(kMostRowBytes) + " bytes", ProblemKind::SIZE);
}

void RowMaker::endRow()
{
    isInRow_ = false;
    sink_.row(group_, row_, lines_);
}

bool RowMaker::fail(uint64_t line, std::string message, ProblemKind kind)
{
    if (hasFailed())
        return false;
    problem_.kind = kind;
    problem_.line = line;
    problem_.message = std::move(message);
    if (!isInRow_)
        return false;
    problem_.group = group_.name();
    problem_.row = rowsOfGroup_;
    if (!row_.values.empty())
        problem_.attribute = row_.values.back().name();
    return false;
}

std::string shown(std::string_view text)
{
    constexpr size_t kMost = 80; // characters
    const std::string valid = validUtf8(text.substr(0, 4 * kMost));
    std::string line(firstCharacters(valid, kMost));
    for (char& c : line)
        if (c == '\n' || c == '\r' || c == '\t' || c == '\x7F')
            c = ' ';
    return line.size() == text.size() ? line : line + "...";
}
} // namespace report
