#include "host/block/FileSystemSizes.h"

#include <cstring>
#include <map>

#include "host/Workers.h"

namespace host
{
namespace
{
using Clock = std::chrono::steady_clock;

// So much of the time that is left is kept for what comes behind the questions.
constexpr std::chrono::milliseconds kReserve(300);
// Processes at once; the next ones begin when these have ended.
constexpr size_t kMostAtOnce = 64;

void writeSize(int pipe, const FileSystemSize& size)
{
    static_assert(std::is_trivially_copyable_v<FileSystemSize>);
    writeAll(pipe, std::string_view(reinterpret_cast<const char*>(&size), sizeof size));
}

void noteSilence(const std::string& mountPoint, Notes& notes)
{
    notes.note(mountPoint + ": does not answer");
}

// Asks some remote file systems side by side.
void askBatch(const Machine& machine, const std::vector<SizeQuestion>& questions, const std::vector<size_t>& batch,
              Deadline until, Notes& notes, const std::function<void(size_t, const FileSystemSize&)>& answer)
{
    Workers workers;
    std::map<size_t, std::string> answers;
    for (const size_t question : batch)
        workers.start([&](int pipe) {
            if (const auto size = machine.kernel.fileSystemSize(questions[question].mountPoint))
                writeSize(pipe, *size);
        });
    const auto onBytes = [&](size_t worker, std::string_view bytes) {
        answers[worker] += bytes;
        return answers[worker].size() <= sizeof(FileSystemSize);
    };
    const auto onEnd = [&](size_t worker, Workers::Result result) {
        const std::string& mountPoint = questions[batch[worker]].mountPoint;
        FileSystemSize size;
        if (answers[worker].size() == sizeof size) {
            memcpy(&size, answers[worker].data(), sizeof size);
            answer(batch[worker], size);
            machine.kernel.keepFileSystemSize(mountPoint, size);
        } else if (result.end != Workers::End::Exited) {
            noteSilence(mountPoint, notes);
            machine.kernel.keepFileSystemSize(mountPoint, std::nullopt);
        }
    };
    workers.serve(until, onBytes, onEnd);
}
} // namespace

void askSizes(const Machine& machine, const std::vector<SizeQuestion>& questions, Notes& notes,
              const std::function<void(size_t, const FileSystemSize&)>& answer)
{
    std::vector<size_t> remote;
    for (size_t i = 0; i < questions.size(); ++i) {
        const std::string& mountPoint = questions[i].mountPoint;
        if (questions[i].isRemote && machine.kernel.mayHang(mountPoint))
            remote.push_back(i);
        else if (const auto size = machine.kernel.fileSystemSize(mountPoint))
            answer(i, *size);
        else if (machine.kernel.isSilent(mountPoint))
            noteSilence(mountPoint, notes);
    }
    const Deadline until = machine.deadline - kReserve;
    for (size_t first = 0; first < remote.size(); first += kMostAtOnce) {
        const size_t count = std::min(kMostAtOnce, remote.size() - first);
        const auto begin = remote.begin() + static_cast<std::ptrdiff_t>(first);
        const std::vector<size_t> batch(begin, begin + static_cast<std::ptrdiff_t>(count));
        askBatch(machine, questions, batch, until, notes, answer);
    }
}
} // namespace host
