#include "host/Workers.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host
{
namespace
{
using Clock = std::chrono::steady_clock;

// How long killed workers are waited for: they end at once unless the kernel holds them.
constexpr std::chrono::milliseconds kGrace(300);
// Milliseconds between two looks at workers that are about to end.
constexpr int kReapWait = 1;
// Reads of 64 KiB from the pipe of a killed worker; a pipe holds 1 MiB at most.
constexpr int kMostDrained = 32;
// Descriptors above the standard streams that a worker begins with: its pipe.
constexpr int kPipe = 3;

// Kernels before 5.9 have no call for it, and there a limit tells how high descriptors can stand.
void closeAllAbovePipe()
{
    constexpr rlim_t kMostClosed = 65536;
    if (close_range(kPipe + 1, ~0U, 0) == 0)
        return;
    rlimit limit{kMostClosed, kMostClosed};
    getrlimit(RLIMIT_NOFILE, &limit);
    const int end = static_cast<int>(std::min(limit.rlim_cur, kMostClosed));
    for (int descriptor = kPipe + 1; descriptor < end; ++descriptor)
        close(descriptor);
}

// Leaves a worker its pipe, as descriptor 3, and /dev/null for the standard streams (libraries write there).
void leaveOnlyPipe(int pipe)
{
    if (pipe != kPipe)
        dup2(pipe, kPipe);
    closeAllAbovePipe();
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        close(stream);
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (open("/dev/null", O_RDWR) != stream)
            break; // closed streams do as well: nobody reads them
}

// A worker dies with the program that asked it, and leaves no core file of what it has read.
void restrictWorker(pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    signal(SIGPIPE, SIG_IGN);
}

Workers::Result resultOf(int status)
{
    if (WIFEXITED(status))
        return {Workers::End::Exited, WEXITSTATUS(status)};
    return {Workers::End::Crashed, WTERMSIG(status)};
}

// Whoever started this program may have had it ignore the ends of its children; then nobody could ask how they ended.
void wantEnds()
{
    struct sigaction action {
    };
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        signal(SIGCHLD, SIG_DFL);
}

void killProcess(pid_t process)
{
    if (process > 0)
        kill(process, SIGKILL);
}

int millisecondsUntil(Deadline deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, 3'600'000));
}
} // namespace

Workers::~Workers()
{
    for (const Worker& worker : workers_) {
        if (worker.pipe != -1)
            close(worker.pipe);
        killProcess(worker.process);
    }
}

size_t Workers::start(const std::function<void(int pipe)>& task)
{
    wantEnds();
    Worker worker;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) == -1) {
        worker.error = errno;
        workers_.push_back(worker);
        return workers_.size() - 1;
    }
    const pid_t parent = getpid();
    worker.process = fork();
    if (worker.process == 0) {
        leaveOnlyPipe(ends[1]);
        restrictWorker(parent);
        task(kPipe);
        _exit(0);
    }
    worker.error = errno;
    close(ends[1]);
    if (worker.process == -1) {
        close(ends[0]);
    } else {
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        worker.pipe = ends[0];
    }
    workers_.push_back(worker);
    return workers_.size() - 1;
}

bool Workers::runs() const
{
    return std::any_of(workers_.begin(), workers_.end(), [](const Worker& worker) { return !worker.ended; });
}

// Takes what a worker has written. False at the end of its pipe, or when its bytes were not wanted.
bool Workers::readSome(size_t index, const OnBytes& onBytes)
{
    char bytes[65536];
    const ssize_t count = read(workers_[index].pipe, bytes, sizeof bytes);
    if (count == -1 && (errno == EAGAIN || errno == EINTR))
        return true;
    if (count <= 0)
        return false;
    if (onBytes(index, std::string_view(bytes, static_cast<size_t>(count))))
        return true;
    killProcess(workers_[index].process);
    return false;
}

// Takes what still stands in a killed worker's pipe: at most what a pipe holds.
void Workers::drain(size_t index, const OnBytes& onBytes)
{
    pollfd polled{workers_[index].pipe, POLLIN, 0};
    for (int reads = 0; reads < kMostDrained; ++reads)
        if (polled.fd == -1 || poll(&polled, 1, 0) != 1 || !readSome(index, onBytes))
            return;
}

// Closes a worker's pipe; from now on it has a little time to end.
void Workers::closePipe(size_t index)
{
    Worker& worker = workers_[index];
    if (worker.pipe != -1)
        close(worker.pipe);
    worker.pipe = -1;
    worker.giveUp = Clock::now() + kGrace;
}

void Workers::tell(size_t index, Result result, const OnEnd& onEnd)
{
    workers_[index].process = -1;
    workers_[index].ended = true;
    onEnd(index, result);
}

// Looks whether a worker without a pipe has ended. One that takes too long is killed, and one that cannot be killed is
// left behind.
void Workers::reap(size_t index, const OnEnd& onEnd)
{
    Worker& worker = workers_[index];
    int status = 0;
    if (worker.process == -1)
        tell(index, {End::NotStarted, worker.error}, onEnd);
    else if (waitpid(worker.process, &status, WNOHANG) == worker.process)
        tell(index, worker.isLate ? Result{End::TimedOut, 0} : resultOf(status), onEnd);
    else if (Clock::now() < worker.giveUp)
        return;
    else if (worker.isLate)
        tell(index, {End::TimedOut, 0}, onEnd);
    else
        killLate(index);
}

void Workers::killLate(size_t index)
{
    killProcess(workers_[index].process);
    workers_[index].isLate = true;
    workers_[index].giveUp = Clock::now() + kGrace;
}

// Returns whether some are still to end.
bool Workers::reapClosed(const OnEnd& onEnd)
{
    bool isAwaited = false;
    for (size_t i = 0; i < workers_.size(); ++i) {
        if (!workers_[i].ended && workers_[i].pipe == -1)
            reap(i, onEnd);
        isAwaited = isAwaited || (!workers_[i].ended && workers_[i].pipe == -1);
    }
    return isAwaited;
}

void Workers::pollOnce(int milliseconds, const OnBytes& onBytes, const OnEnd& onEnd)
{
    const bool isAwaited = reapClosed(onEnd);
    std::vector<pollfd> polled;
    std::vector<size_t> indexes;
    for (size_t i = 0; i < workers_.size(); ++i) {
        if (workers_[i].pipe == -1)
            continue;
        polled.push_back({workers_[i].pipe, POLLIN, 0});
        indexes.push_back(i);
    }
    if (polled.empty() && !isAwaited)
        return;
    if (poll(polled.data(), polled.size(), isAwaited ? std::min(milliseconds, kReapWait) : milliseconds) <= 0)
        return;
    for (size_t i = 0; i < polled.size(); ++i)
        if (polled[i].revents != 0 && !readSome(indexes[i], onBytes))
            closePipe(indexes[i]);
}

bool Workers::serve(Deadline deadline, const OnBytes& onBytes, const OnEnd& onEnd, int wake,
                    const std::function<void()>& onTick)
{
    while (runs() && Clock::now() < deadline) {
        const int left = millisecondsUntil(deadline);
        pollOnce(wake >= 0 ? std::min(wake, left) : left, onBytes, onEnd);
        if (onTick)
            onTick();
    }
    return endAll(onBytes, onEnd);
}

// The deadline has come: whole rows that stand in a pipe still count. All are killed first, so that they end side by
// side.
bool Workers::endAll(const OnBytes& onBytes, const OnEnd& onEnd)
{
    if (!runs())
        return true;
    for (size_t i = 0; i < workers_.size(); ++i)
        if (!workers_[i].ended)
            killLate(i);
    for (size_t i = 0; i < workers_.size(); ++i) {
        drain(i, onBytes);
        closePipe(i);
    }
    while (reapClosed(onEnd))
        poll(nullptr, 0, kReapWait);
    return false;
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written == -1 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}
} // namespace host
