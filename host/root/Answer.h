#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
/// What a folder of files answered: a value, or the errno that told why not.
template <class T>
struct Answer {
    int error = 0;
    T value{};
    bool isCut = false; // there was more than the caller's limit

    static Answer failed(int error) { return {error, {}, false}; }
};

/// The errno of an answer for what is neither a regular file nor a folder (a FIFO, a socket, a device): it is never
/// read.
constexpr int kNoRegularFile = 124; // EMEDIUMTYPE, which no file system gives

enum class EntryKind { File, Folder, Link }; // File: anything that is neither

/// A name in a folder.
struct Entry {
    std::string name;
    EntryKind kind = EntryKind::File;
};

/// Chooses lines of a file: called with every line in file order, without its line end. What it decides may depend on
/// the lines that it chose before and on nothing else, so that it decides alike when only chosen lines are left.
using LineChoice = std::function<bool(std::string_view line)>;
} // namespace host
