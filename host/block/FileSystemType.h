#pragma once

#include <cstdint>
#include <string_view>

namespace host
{
/// What a file system is, by the kernel's name of its type.
struct FileSystemType {
    std::string_view name;
    uint32_t code; // of Partition's FS Type
    bool isRemote; // its data is another machine's: it may never answer
};

/// The row of a type; of one that is not listed a row with the code of unknown ones.
FileSystemType fileSystemType(std::string_view name);

/// True for types that hold no files of anybody's: the kernel's own views, and what mounts others on demand.
bool isPseudo(std::string_view name);
} // namespace host
