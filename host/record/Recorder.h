#pragma once

#include <map>
#include <set>

#include "host/RecordedKernel.h"
#include "host/record/RecordingFolder.h"

namespace host
{
/// Writes into a recording what a Root is asked and what its folder answers, and gives the recording's own answer: who
/// scans through a recorder sees what a scan of the recording will see. Of what is asked twice the first answer counts.
/// Names that were listed and not opened are empty files, folders or links; what cannot be had is in the recording's
/// errors, or missing. Lines of name databases are kept where they were chosen.
class Recorder : public RootWatcher
{
public:
    /// folder is the recording's, empty; recording gets the errors. Both outlive the recorder.
    Recorder(const std::string& folder, RecordingFolder& writer, KernelRecording& recording);

    Answer<std::string> read(const RootFolder& folder, std::string_view path, size_t limit) override;
    Answer<std::vector<std::string>> lines(const RootFolder& folder, std::string_view path, const LineChoice& isWanted,
                                           size_t lineLimit) override;
    Answer<std::vector<Entry>> list(const RootFolder& folder, std::string_view path, size_t limit) override;
    Answer<std::string> link(const RootFolder& folder, std::string_view path) override;
    Answer<std::string> realPath(const RootFolder& folder, std::string_view path) override;
    Answer<EntryKind> kind(const RootFolder& folder, std::string_view path) override;

private:
    // What the recording has at a path without links, or why it has nothing there.
    struct Known {
        int error = 0;
        EntryKind kind = EntryKind::File;
        std::string target; // of a link
    };
    // Where a path leads to.
    struct Place {
        int error = 0;
        std::string path; // without links
        EntryKind kind = EntryKind::Folder;
        bool is(EntryKind other) const { return error == 0 && kind == other; }
    };
    // A file's content as far as it is kept: limit is the largest that was asked for.
    struct Content {
        int error = 0;
        size_t limit = 0;
    };
    using NumberedLines = std::map<size_t, std::string>;

    Place find(const RootFolder& folder, std::string_view path, bool followLast);
    const Known& at(const RootFolder& folder, const std::string& path);
    Known ask(const RootFolder& folder, const std::string& path);
    Known keep(const RootFolder& folder, const std::string& path, EntryKind kind);
    int keepContent(const RootFolder& folder, std::string_view path, const std::string& real, size_t limit);
    int keepList(const RootFolder& folder, const std::string& real, size_t limit);
    void keepLines(const std::string& real);
    template <class T>
    Answer<T> settle(std::string_view path, int error, Answer<T> answer);

    RootFolder copy_; // the recording as a scan of it reads it
    RecordedErrors errors_;
    RecordingFolder& writer_;
    KernelRecording& recording_;
    std::map<std::string, Known, std::less<>> known_;
    std::map<std::string, Content, std::less<>> contents_;
    std::map<std::string, NumberedLines, std::less<>> lines_;
    std::map<std::string, int, std::less<>> lists_; // of folders that were listed: the error
    std::set<std::string, std::less<>> wholeLists_; // of those, what they do not list is not there
};
} // namespace host
