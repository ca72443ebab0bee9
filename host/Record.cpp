#include "host/Record.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

#include "host/Collectors.h"
#include "host/LiveKernel.h"
#include "host/RecordingKernel.h"
#include "host/Root.h"
#include "host/TimeZone.h"
#include "host/Workers.h"
#include "host/record/Recorder.h"
#include "host/record/Redaction.h"

namespace host
{
namespace
{
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// What the recording process writes into its pipe: a byte for every group that is ready, at its end one that tells how
// it went, and the reason behind it when it went wrong.
constexpr char kReady = '.', kDone = '=', kFailed = '!';

// How long a group may wait for network file systems.
constexpr std::chrono::seconds kGroupTime(5);

// Takes rows that nobody wants: what matters is what their collector asked.
class DroppedRows : public Collection
{
public:
    size_t add(RowBuilder&&) override { return rows_++; }
    void amend(size_t, RowBuilder&&) override {}

private:
    size_t rows_ = 0;
};

// Collects groups of the live machine through a recorder.
class Recording
{
public:
    explicit Recording(const std::string& folder)
        : writer_(folder), recorder_(folder, writer_, recording_), kernel_(live_, recording_)
    {
        kernel_.clock(); // the report's date, which no collector asks for
        Notes notes;
        zone_ = TimeZone::of(Root("/", notes, &recorder_));
    }

    void collect(const Collector& collector)
    {
        DroppedRows rows;
        const Root root("/", rows.notes(), &recorder_);
        collector.collect({root, kernel_, zone_, Clock::now() + kGroupTime}, rows);
    }

    // Writes what is no file of the machine; returns what went wrong, an empty text when nothing did.
    std::string finish()
    {
        const std::string text = printKernelRecording(recording_);
        if (text.size() > kKernelFileLimit)
            return std::string(kKernelFile) + ": too long";
        writer_.file(kKernelFile, text);
        return writer_.trouble();
    }

private:
    KernelRecording recording_;
    RecordingFolder writer_;
    Recorder recorder_;
    LiveKernel live_;
    RecordingKernel kernel_;
    TimeZone zone_;
};

// What runs in the recording process.
void recordGroups(const std::vector<const Collector*>& groups, const std::string& folder, int pipe)
{
    Recording recording(folder);
    for (const Collector* group : groups) {
        recording.collect(*group);
        writeAll(pipe, std::string_view(&kReady, 1));
    }
    const std::string trouble = recording.finish();
    writeAll(pipe, trouble.empty() ? std::string(1, kDone) : kFailed + trouble);
}

// The group that a recording process was at when it ended before its time.
std::string reasonOf(const std::vector<const Collector*>& groups, size_t ready, const Workers::Result& end)
{
    const std::string group =
        ready < groups.size() ? std::string(report::findGroup(groups[ready]->group)->name) + ": " : "";
    switch (end.end) {
    case Workers::End::TimedOut:
        return group + "not ready in time";
    case Workers::End::Crashed:
        return group + "ended by signal " + std::to_string(end.code);
    case Workers::End::NotStarted:
        return std::string("no process: ") + strerror(end.code);
    default:
        return group + "ended early";
    }
}

// Runs the recording process; returns what went wrong, an empty text when nothing did.
std::string runRecording(const RecordOptions& options, const std::string& folder)
{
    constexpr size_t kMostBytes = 65536;
    constexpr int kProgressMilliseconds = 200;
    const std::vector<const Collector*> groups = wantedCollectors(options.groups);
    Workers workers;
    std::string told;
    Workers::Result end;
    workers.start([&](int pipe) { recordGroups(groups, folder, pipe); });
    const auto onBytes = [&](size_t, std::string_view bytes) {
        told += bytes;
        return told.size() <= kMostBytes;
    };
    const auto onTick = [&] {
        if (options.onProgress)
            options.onProgress(std::min(told.size(), groups.size()), groups.size());
    };
    const auto time = std::chrono::duration<double>(options.deadlineSeconds);
    workers.serve(
        Clock::now() + std::chrono::duration_cast<Clock::duration>(time), onBytes,
        [&](size_t, Workers::Result result) { end = result; }, kProgressMilliseconds, onTick);
    const size_t ready = std::min(told.find_first_not_of(kReady), told.size());
    if (ready < told.size() && told[ready] == kFailed)
        return told.substr(ready + 1);
    const bool isDone = ready < told.size() && told[ready] == kDone;
    return isDone ? "" : reasonOf(groups, ready, end);
}

// Puts a redacted copy in a recording's place; returns what went wrong, an empty text when nothing did.
std::string redact(const std::string& key, std::string& folder)
{
    std::string copy = folder + ".XXXXXX", trouble;
    if (mkdtemp(copy.data()) == nullptr)
        return strerror(errno);
    const bool isRedacted = redactRecording(folder, copy, key, trouble);
    std::error_code ignored;
    fs::remove_all(isRedacted ? folder : copy, ignored);
    if (isRedacted)
        folder = copy;
    return isRedacted || !trouble.empty() ? trouble : "not redacted";
}

// Makes the folder that a recording is written to before it gets its name: beside it, for this user alone.
bool makeFolder(const std::string& folder, std::string& temporary, std::string& reason)
{
    std::error_code error;
    const bool isThere = fs::exists(fs::symlink_status(folder, error));
    if (isThere && (!fs::is_directory(fs::symlink_status(folder, error)) || !fs::is_empty(folder, error))) {
        reason = folder + ": is there and no empty folder";
        return false;
    }
    temporary = folder.substr(0, folder.find_last_not_of('/') + 1) + ".XXXXXX";
    if (mkdtemp(temporary.data()) != nullptr)
        return true;
    reason = folder + ": " + strerror(errno);
    return false;
}
} // namespace

bool record(const RecordOptions& options, const std::string& folder, std::string& reason)
{
    std::string temporary;
    if (!makeFolder(folder, temporary, reason))
        return false;
    std::string trouble = runRecording(options, temporary);
    if (trouble.empty() && !options.redactionKey.empty())
        trouble = redact(options.redactionKey, temporary);
    if (trouble.empty() && rename(temporary.c_str(), folder.c_str()) != 0) // onto an empty folder is well
        trouble = strerror(errno);
    if (trouble.empty())
        return true;
    std::error_code ignored;
    fs::remove_all(temporary, ignored);
    reason = folder + ": " + trouble;
    return false;
}
} // namespace host
