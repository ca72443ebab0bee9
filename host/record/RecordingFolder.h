#pragma once

#include <string>
#include <string_view>

#include "host/Descriptor.h"

namespace host
{
/// The folder that a recording is written to: files (mode 0600), folders (0700) and links by the path that the recorded
/// machine has them under. A link that was written is never followed, so nothing is written outside. Bounded in bytes
/// and names. The first trouble ends the writing: everything after it is left undone.
class RecordingFolder
{
public:
    static constexpr size_t kMostBytes = size_t{512} << 20;
    static constexpr size_t kMostNames = 500'000;

    /// An empty folder, which isOpen() tells of.
    explicit RecordingFolder(const std::string& folder);
    bool isOpen() const { return folder_.isOpen(); }

    /// A file that is there already gets this content instead.
    void file(std::string_view path, std::string_view content);
    void folder(std::string_view path);
    void link(std::string_view path, const std::string& target);

    /// What went wrong first; empty when nothing did.
    const std::string& trouble() const { return trouble_; }

private:
    bool claim(size_t names, size_t bytes);
    Descriptor openParent(std::string_view path, std::string& name);
    void fail(std::string_view path, int error);

    Descriptor folder_;
    size_t bytes_ = 0;
    size_t names_ = 0;
    std::string trouble_;
};
} // namespace host
