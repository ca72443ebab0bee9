#pragma once

#include "host/Kernel.h"
#include "host/RootWatcher.h"
#include "host/record/KernelRecording.h"

namespace host
{
/// The kernel of a recorded machine. Asks nothing of the live one.
class RecordedKernel : public Kernel
{
public:
    /// recording outlives the kernel; notes: see Kernel.
    explicit RecordedKernel(const KernelRecording& recording, Notes* notes = nullptr)
        : Kernel(notes), recording_(recording)
    {
    }

    bool isRecording() const override { return true; }

protected:
    nlohmann::json answer(std::string_view question, std::string_view argument) const override;

private:
    const KernelRecording& recording_;
};

/// Answers the errors that the plain files of a recording cannot give, and hides what is in its folder besides the
/// machine's files. The tree speaks for names and links that it has: the error of a path is that of reading it, of
/// listing it, and of looking for what the tree does not have.
class RecordedErrors : public RootWatcher
{
public:
    /// recording outlives the watcher.
    explicit RecordedErrors(const KernelRecording& recording) : recording_(recording) {}

    Answer<std::string> read(const RootFolder& folder, std::string_view path, size_t limit) override;
    Answer<std::vector<std::string>> lines(const RootFolder& folder, std::string_view path, const LineChoice& isWanted,
                                           size_t lineLimit) override;
    Answer<std::vector<Entry>> list(const RootFolder& folder, std::string_view path, size_t limit) override;
    Answer<std::string> link(const RootFolder& folder, std::string_view path) override;
    Answer<std::string> realPath(const RootFolder& folder, std::string_view path) override;
    Answer<EntryKind> kind(const RootFolder& folder, std::string_view path) override;

private:
    int errorOf(std::string_view path) const;

    const KernelRecording& recording_;
};

/// Reads invhw-kernel.json at the top of a copy of a machine; an empty recording when there is none. Returns false,
/// with the reason, when it cannot be read or is something else.
bool readKernelRecording(const std::string& folder, KernelRecording& recording, std::string& reason);
} // namespace host
