#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/Fact.h"
#include "host/root/RootFolder.h"

namespace host
{
class Notes;
class RootWatcher;

/// Reads files, folders and links below a folder: "/" of the live machine, or a copy of one. Nothing outside of that
/// folder is ever reached, whatever links say; magic links are read and never followed. Only regular files and kernel
/// attributes are read, never blocking, never more than a limit. Paths are absolute as the machine sees them
/// ("/sys/block"). What is not there is an absent result; what is there and refused, too long or of a wrong kind is
/// absent (or cut) and noted. An attribute of the kernel that answers with an error which only says that there is
/// nothing to tell (EINVAL of a link without carrier) is absent without a note.
class Root
{
public:
    static constexpr size_t kFileLimit = size_t{4} * 1024 * 1024;
    static constexpr size_t kLineLimit = 4096;
    static constexpr size_t kNameLimit = 65536; // names of one folder

    /// Opens the folder; isOpen() tells whether that worked. Notes and watcher outlive the root; the watcher may be
    /// null.
    Root(const std::string& folder, Notes& notes, RootWatcher* watcher = nullptr);
    ~Root() = default;
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;
    bool isOpen() const { return folder_.isOpen(); }

    /// The whole content, at most limit bytes; of a longer file its first limit bytes, which is noted.
    std::optional<std::string> read(std::string_view path, size_t limit = kFileLimit) const;

    /// The first line without blanks at both ends; absent when it is empty. Attributes of /sys are such lines.
    std::optional<std::string> line(std::string_view path) const;

    /// line() with its path as the source.
    MaybeFact fact(std::string_view path) const;

    /// The lines of a text file of any size that a caller chooses, in file order: for name databases (pci.ids,
    /// usb.ids), which are read once for all names that are wanted. Of such a file a recording keeps the chosen lines
    /// alone, so a choice may depend on the lines that it chose before and on nothing else. Lines longer than
    /// kLineLimit are passed over.
    std::optional<std::vector<std::string>> lines(std::string_view path, const LineChoice& isWanted) const;

    /// The decimal number, or with 0x the hexadecimal one, that is the file's whole first line.
    std::optional<uint64_t> number(std::string_view path) const;

    /// The names in a folder, "." and ".." left out, in natural order (sda2 before sda10); empty when there is none.
    std::vector<std::string> list(std::string_view path) const;

    /// A link's target as it stands, absent when the path is no link; and the last name in it ("../../drivers/nvme" ->
    /// "nvme").
    std::optional<std::string> link(std::string_view path) const;
    std::optional<std::string> linkName(std::string_view path) const;

    /// The path with all links resolved, as the machine sees it ("/sys/class/net/eth0" -> "/sys/devices/.../net/eth0").
    std::optional<std::string> realPath(std::string_view path) const;

    /// True when anything has this name, a dangling link too.
    bool exists(std::string_view path) const;

private:
    template <class T>
    bool hasAnswer(const Answer<T>& answer, std::string_view path) const;

    RootFolder folder_;
    Notes& notes_;
    RootWatcher& watcher_;
};
} // namespace host
