#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/root/RootFolder.h"

namespace host
{
/// Stands between a Root and its folder: a recording's errors are answered by one, a recording is made by another. Here
/// the folder answers.
class RootWatcher
{
public:
    virtual ~RootWatcher() = default;

    virtual Answer<std::string> read(const RootFolder& folder, std::string_view path, size_t limit)
    {
        return folder.read(path, limit);
    }
    virtual Answer<std::vector<std::string>> lines(const RootFolder& folder, std::string_view path,
                                                   const LineChoice& isWanted, size_t lineLimit)
    {
        return folder.lines(path, isWanted, lineLimit);
    }
    virtual Answer<std::vector<Entry>> list(const RootFolder& folder, std::string_view path, size_t limit)
    {
        return folder.list(path, limit);
    }
    virtual Answer<std::string> link(const RootFolder& folder, std::string_view path) { return folder.link(path); }
    virtual Answer<std::string> realPath(const RootFolder& folder, std::string_view path)
    {
        return folder.realPath(path);
    }
    virtual Answer<EntryKind> kind(const RootFolder& folder, std::string_view path) { return folder.kind(path); }
};
} // namespace host
