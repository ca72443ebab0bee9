#include "report/redact/Dictionary.h"

#include <algorithm>

#include "report/Text.h"
#include "report/redact/Pseudonyms.h"

namespace report
{
namespace
{
bool isWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c & 0x80) != 0;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// What stands between parts of paths, addresses and lists.
bool isSeparator(char c)
{
    return std::string_view("/:@,=;\n\"").find(c) != std::string_view::npos;
}

uint16_t hashOfStart(std::string_view text)
{
    uint32_t hash = 0;
    for (size_t i = 0; i < 3; ++i)
        hash = hash * 1597 + static_cast<unsigned char>(text[i]);
    return static_cast<uint16_t>(hash ^ (hash >> 16));
}

std::string withForm(std::string_view text, char character, std::string_view form)
{
    std::string result;
    for (const char c : text)
        result += c == character ? form : std::string_view(&c, 1);
    return result;
}

std::string withoutForm(std::string_view text, char character, std::string_view form)
{
    std::string result(text);
    for (size_t at = result.find(form); at != result.npos; at = result.find(form, at + 1))
        result.replace(at, form.size(), 1, character);
    return result;
}

// How names of files and units write characters that they do not like.
struct EscapeRow {
    char character;
    std::string_view form;
};
constexpr EscapeRow kEscapes[] = {{'-', "\\x2d"}, {' ', "\\x20"}, {' ', "_"}};

size_t charactersOf(std::string_view text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}
} // namespace

bool Dictionary::addPattern(Pattern pattern)
{
    if (pattern.text == pattern.replacement)
        return true;
    if (patterns_.size() >= kMostPatterns)
        return false;
    patterns_.push_back(std::move(pattern));
    return true;
}

bool Dictionary::add(std::string_view text, std::string_view replacement)
{
    constexpr size_t kShortestWord = 4, kShortestAnywhere = 8, kShortestNumber = 6, kShortestNumberAnywhere = 12;
    const size_t characters = charactersOf(text);
    if (text.size() > kLongestPattern || characters < kShortest)
        return true;
    const bool isNumber = std::all_of(text.begin(), text.end(), isDigit);
    if (isNumber && characters < kShortestNumber)
        return true;
    const size_t anywhere = isNumber ? kShortestNumberAnywhere : kShortestAnywhere;
    const Place place = characters >= anywhere ? ANYWHERE : characters >= kShortestWord ? WORD : PART;
    const std::string from = lower(text), to(replacement);
    bool isAdded = addPattern({from, to, place, 0, {}, kNone});
    for (const EscapeRow& row : kEscapes)
        if (from.find(row.character) != from.npos)
            isAdded = isAdded &&
                      addPattern({withForm(from, row.character, row.form), to, place, row.character, row.form, kNone});
    return isAdded;
}

bool Dictionary::addAddress(std::string_view text, std::string_view replacement)
{
    return text.size() < kShortest || addPattern({lower(text), std::string(replacement), ADDRESS, 0, {}, kNone});
}

void Dictionary::finish()
{
    std::stable_sort(patterns_.begin(), patterns_.end(),
                     [](const Pattern& a, const Pattern& b) { return a.text < b.text; });
    patterns_.erase(std::unique(patterns_.begin(), patterns_.end(),
                                [](const Pattern& a, const Pattern& b) { return a.text == b.text; }),
                    patterns_.end());
    for (uint32_t i = 0; i < patterns_.size(); ++i) {
        Pattern& pattern = patterns_[i];
        starts_.set(hashOfStart(pattern.text));
        // What the pattern begins with stands before it, as does all that begins with that.
        for (uint32_t shorter = i != 0 ? i - 1 : kNone; shorter != kNone; shorter = patterns_[shorter].shorter)
            if (pattern.text.starts_with(patterns_[shorter].text)) {
                pattern.shorter = shorter;
                break;
            }
    }
}

bool Dictionary::isAt(Place place, std::string_view text, size_t at, size_t length)
{
    const size_t end = at + length;
    const bool isFirst = at == 0, isLast = end == text.size();
    switch (place) {
    case ANYWHERE:
        return true;
    case PART:
        return (isFirst || isSeparator(text[at - 1])) && (isLast || isSeparator(text[end]));
    case ADDRESS: {
        const std::string_view own = text.substr(at, length);
        const char point = own.find(':') != own.npos ? ':' : '.';
        if (!isFirst && text[at - 1] == point)
            return false;
        if (!isLast && text[end] == point && end + 1 < text.size() && isWordCharacter(text[end + 1]))
            return false;
        break;
    }
    default:
        break;
    }
    return (isFirst || !isWordCharacter(text[at - 1])) && (isLast || !isWordCharacter(text[end]));
}

// The longest pattern that begins here and stands where it may.
const Dictionary::Pattern* Dictionary::find(std::string_view lowerText, size_t at) const
{
    const std::string_view rest = lowerText.substr(at, kLongestPattern * 4);
    const auto behind =
        std::upper_bound(patterns_.begin(), patterns_.end(), rest,
                         [](std::string_view text, const Pattern& pattern) { return text < pattern.text; });
    uint32_t i = behind != patterns_.begin() ? static_cast<uint32_t>(behind - patterns_.begin() - 1) : kNone;
    for (; i != kNone; i = patterns_[i].shorter)
        if (rest.starts_with(patterns_[i].text) && isAt(patterns_[i].place, lowerText, at, patterns_[i].text.size()))
            return &patterns_[i];
    return nullptr;
}

// In the case and in the form of what was found.
std::string Dictionary::replacementFor(const Pattern& pattern, std::string_view found)
{
    if (pattern.form.empty())
        return inCaseOf(found, pattern.replacement);
    const std::string plain = withoutForm(found, pattern.escaped, pattern.form);
    return withForm(inCaseOf(plain, pattern.replacement), pattern.escaped, pattern.form);
}

std::string Dictionary::replaced(std::string_view text) const
{
    const std::string lowerText = lower(text);
    std::string result;
    size_t copied = 0;
    for (size_t at = 0; at + kShortest <= text.size();) {
        const Pattern* pattern =
            starts_[hashOfStart(std::string_view(lowerText).substr(at))] ? find(lowerText, at) : nullptr;
        if (pattern == nullptr) {
            ++at;
            continue;
        }
        result += text.substr(copied, at - copied);
        result += replacementFor(*pattern, text.substr(at, pattern->text.size()));
        at += pattern->text.size();
        copied = at;
    }
    return copied == 0 ? std::string(text) : result + std::string(text.substr(copied));
}
} // namespace report
