#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/Descriptor.h"
#include "host/root/Answer.h"

namespace host
{
/// Files, folders and links below a folder, of which no path leads out. Paths are absolute as the machine sees them.
/// Answers are errno values and bytes; what they mean is Root's to say.
class RootFolder
{
public:
    static constexpr size_t kNamesRead = size_t{1024} * 1024;          // names looked at in one folder
    static constexpr size_t kDatabaseLimit = size_t{64} * 1024 * 1024; // bytes looked at by lines()
    static constexpr size_t kChosenLimit = size_t{4} * 1024 * 1024;    // bytes kept by lines()

    /// isOpen() tells whether the folder could be opened, and errno why not.
    explicit RootFolder(const std::string& folder);
    bool isOpen() const { return folder_.isOpen(); }

    /// The content of a regular file, its first limit bytes when there is more. EISDIR: it is a folder.
    /// kNoRegularFile: it is something that may block.
    Answer<std::string> read(std::string_view path, size_t limit) const;

    /// The lines of a regular file that a caller chooses. Lines longer than lineLimit are passed over.
    Answer<std::vector<std::string>> lines(std::string_view path, const LineChoice& isWanted, size_t lineLimit) const;

    /// What is in a folder, in natural order; of more than limit entries the first ones.
    Answer<std::vector<Entry>> list(std::string_view path, size_t limit) const;

    /// The text of a link; EINVAL: it is none.
    Answer<std::string> link(std::string_view path) const;

    /// The path with all links resolved.
    Answer<std::string> realPath(std::string_view path) const;

    /// What has this name, a link not followed.
    Answer<EntryKind> kind(std::string_view path) const;

private:
    // Openat2: the kernel keeps paths inside. Plain: an older kernel, and the folder is "/", which has no outside.
    // Walk: an older kernel and another folder.
    enum class Way { Openat2, Plain, Walk };

    Way bestWay() const;
    Descriptor open(std::string_view path, int flags) const;
    Descriptor openRegular(std::string_view path) const;

    Descriptor folder_;
    Way way_ = Way::Walk;
};
} // namespace host
