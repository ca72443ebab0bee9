#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The line-based text formats of a recorded machine: words, numbers, lists of bytes. A fault in such a file is a fault
// of the test and ends the process loudly.

namespace fakemachine
{

/// One word of a line; a quoted one may hold blanks and is never taken for a number or a directive.
struct Word {
    std::string text;
    bool quoted = false;
};

/// Where a line stands, for messages.
struct LinePlace {
    std::string file;
    unsigned number = 0;
};

/// Writes "fakemachine: FILE:LINE: message" to standard error and ends the process with status 125.
[[noreturn]] void fail(const LinePlace& place, const std::string& message);

/// Blank-separated words; "..." quotes (escapes \" \\ \n \t \r \0 \xHH); # at the start of a word begins a comment.
std::vector<Word> splitWords(std::string_view line, const LinePlace& place);

/// Decimal, 0x hexadecimal or 0 octal; ends the process when text is no number.
uint64_t parseNumber(const std::string& text, const LinePlace& place);
int64_t parseSigned(const std::string& text, const LinePlace& place);
/// The value of an errno name ("EACCES").
int parseErrno(const std::string& name, const LinePlace& place);
/// The value of an errno name, or nothing.
std::optional<int> errnoByName(const std::string& name);

/// Bytes from words[first] on: pairs of hexadecimal digits, quoted text, @N (zeros up to offset N), *N (the last byte N
/// more times).
std::string parseBytes(const std::vector<Word>& words, size_t first, const LinePlace& place);

/// The whole file, or nothing when it cannot be read. Reads the real computer's file.
std::optional<std::string> readWhole(const std::string& path);

/// The lines of text without their ends.
std::vector<std::string> splitLines(const std::string& text);

} // namespace fakemachine
