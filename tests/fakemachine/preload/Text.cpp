#include "preload/Text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "preload/Calls.h"

namespace fakemachine
{

void fail(const LinePlace& place, const std::string& message)
{
    static auto* const realWrite = realFunction<ssize_t(int, const void*, size_t)>("write");
    const std::string text = "fakemachine: " + place.file + ":" + std::to_string(place.number) + ": " + message + "\n";
    if (realWrite(STDERR_FILENO, text.data(), text.size()) < 0)
        _exit(126);
    _exit(125);
}

static int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Appends the character that an escape stands for; at is the position after the backslash and moves behind the escape.
static void appendEscape(std::string_view line, size_t& at, std::string& text, const LinePlace& place)
{
    static constexpr char kLetters[] = "ntr0";
    static constexpr char kValues[] = "\n\t\r"; // with the closing NUL for \0
    const char letter = at < line.size() ? line[at++] : '\0';
    const char* known = letter == '\0' ? nullptr : strchr(kLetters, letter);
    if (known != nullptr) {
        text += kValues[known - kLetters];
    } else if (letter == 'x' && at + 1 < line.size() && hexDigit(line[at]) >= 0 && hexDigit(line[at + 1]) >= 0) {
        text += static_cast<char>(hexDigit(line[at]) * 16 + hexDigit(line[at + 1]));
        at += 2;
    } else if (letter == '"' || letter == '\\') {
        text += letter;
    } else {
        fail(place, "bad escape in a quoted text");
    }
}

static Word quotedWord(std::string_view line, size_t& at, const LinePlace& place)
{
    Word word{"", true};
    while (at < line.size() && line[at] != '"') {
        const char c = line[at++];
        if (c == '\\')
            appendEscape(line, at, word.text, place);
        else
            word.text += c;
    }
    if (at == line.size())
        fail(place, "quoted text without its end");
    ++at;
    return word;
}

std::vector<Word> splitWords(std::string_view line, const LinePlace& place)
{
    std::vector<Word> words;
    size_t at = 0;
    while (true) {
        while (at < line.size() && (line[at] == ' ' || line[at] == '\t'))
            ++at;
        if (at == line.size() || line[at] == '#')
            return words;
        if (line[at] == '"') {
            words.push_back(quotedWord(line, ++at, place));
            continue;
        }
        const size_t end = std::min(line.find_first_of(" \t", at), line.size());
        words.push_back({std::string(line.substr(at, end - at)), false});
        at = end;
    }
}

uint64_t parseNumber(const std::string& text, const LinePlace& place)
{
    char* end = nullptr;
    const uint64_t value = strtoull(text.c_str(), &end, 0);
    if (text.empty() || *end != '\0')
        fail(place, "no number: " + text);
    return value;
}

int64_t parseSigned(const std::string& text, const LinePlace& place)
{
    return static_cast<int64_t>(parseNumber(text, place));
}

std::optional<int> errnoByName(const std::string& name)
{
    static constexpr int kLastErrno = 133;
    for (int value = 1; value <= kLastErrno; ++value) {
        const char* known = strerrorname_np(value);
        if (known != nullptr && name == known)
            return value;
    }
    return std::nullopt;
}

int parseErrno(const std::string& name, const LinePlace& place)
{
    const std::optional<int> value = errnoByName(name);
    if (!value)
        fail(place, "no errno name: " + name);
    return *value;
}

static void appendHex(const std::string& digits, std::string& bytes, const LinePlace& place)
{
    if (digits.size() % 2 != 0)
        fail(place, "odd number of hexadecimal digits: " + digits);
    for (size_t i = 0; i < digits.size(); i += 2) {
        const int high = hexDigit(digits[i]);
        const int low = hexDigit(digits[i + 1]);
        if (high < 0 || low < 0)
            fail(place, "no bytes: " + digits);
        bytes += static_cast<char>(high * 16 + low);
    }
}

std::string parseBytes(const std::vector<Word>& words, size_t first, const LinePlace& place)
{
    std::string bytes;
    for (size_t i = first; i < words.size(); ++i) {
        const std::string& text = words[i].text;
        if (words[i].quoted) {
            bytes += text;
        } else if (text[0] == '@') {
            const size_t offset = parseNumber(text.substr(1), place);
            if (offset < bytes.size())
                fail(place, "offset " + text + " lies before the bytes already given");
            bytes.resize(offset, '\0');
        } else if (text[0] == '*') {
            const char last = bytes.empty() ? '\0' : bytes.back();
            bytes.append(parseNumber(text.substr(1), place), last);
        } else {
            appendHex(text, bytes, place);
        }
    }
    return bytes;
}

std::optional<std::string> readWhole(const std::string& path)
{
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    static auto* const realRead = realFunction<ssize_t(int, void*, size_t)>("read");
    static auto* const realClose = realFunction<int(int)>("close");
    const int descriptor = realOpen(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::nullopt;
    std::string text;
    char buffer[16384];
    ssize_t count;
    while ((count = realRead(descriptor, buffer, sizeof buffer)) > 0)
        text.append(buffer, static_cast<size_t>(count));
    realClose(descriptor);
    if (count < 0)
        return std::nullopt;
    return text;
}

std::vector<std::string> splitLines(const std::string& text)
{
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

} // namespace fakemachine
