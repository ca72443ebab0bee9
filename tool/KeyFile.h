#pragma once

#include <string>

#include "tool/CommandLine.h"

namespace tool
{
/// The option of the commands that make pseudonyms.
constexpr OptionDef KEY_FILE_OPTION = {
    "--key-file", "-k", "FILE",
    "the key of the pseudonyms, 16 to 4096 bytes that only you may read; a new one is made where FILE is none"};

/// A key and the file that keeps it.
class KeyFile
{
public:
    explicit KeyFile(std::string path) : path_(std::move(path)) {}

    /// Reads the key, or makes a random one of 32 bytes when there is no file. Refused are keys that others may use,
    /// that are too short or too long, and what is no regular file. Returns false, with one line that names the file.
    bool read(std::string& reason);
    /// Writes a key that was made, mode 0600, before anything is written that needs it: a file that has come since is
    /// not touched. Of a key that was read nothing is done.
    bool keep(std::string& reason) const;

    const std::string& key() const { return key_; }

private:
    bool readFrom(int file, std::string& reason);

    std::string path_;
    std::string key_;
    bool isNew_ = false;
};
} // namespace tool
