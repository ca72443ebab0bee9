#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace host
{
using Deadline = std::chrono::steady_clock::time_point;

/// Runs tasks in processes of their own, so that one that crashes, hangs in the kernel or runs wild harms no other. A
/// worker holds the write end of its pipe and nothing else of this process: no standard stream, no other descriptor, no
/// lock that anybody waits for. What it writes comes back as bytes, in order; nothing says that they make sense.
class Workers
{
public:
    /// How a worker ended.
    enum class End { Exited, Crashed, TimedOut, NotStarted };
    struct Result {
        End end = End::NotStarted;
        int code = 0; // exit status, number of the signal, or errno
    };

    /// A worker's bytes as they come; false ends the worker, which then counts as crashed by SIGKILL.
    using OnBytes = std::function<bool(size_t worker, std::string_view bytes)>;
    using OnEnd = std::function<void(size_t worker, Result result)>;

    Workers() = default;
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Starts a worker that runs task with the descriptor to write to and exits. Its number counts from 0.
    size_t start(const std::function<void(int pipe)>& task);

    /// Serves all workers until each has ended or the deadline has come; then those that still run are killed, and one
    /// that cannot be killed is left behind. Returns false when it was the deadline that ended it. wake is the longest
    /// time, in milliseconds, between two calls of onTick, which may be empty.
    bool serve(Deadline deadline, const OnBytes& onBytes, const OnEnd& onEnd, int wake = -1,
               const std::function<void()>& onTick = {});

private:
    struct Worker {
        pid_t process = -1;  // -1 when it could not be started or is reaped
        int pipe = -1;       // -1 when its end has come
        int error = 0;       // why it could not be started
        bool ended = false;  // onEnd was told
        bool isLate = false; // it was killed because its time was over
        Deadline giveUp;     // without a pipe: until when it is waited for
    };

    bool readSome(size_t index, const OnBytes& onBytes);
    void drain(size_t index, const OnBytes& onBytes);
    void closePipe(size_t index);
    void tell(size_t index, Result result, const OnEnd& onEnd);
    void reap(size_t index, const OnEnd& onEnd);
    void killLate(size_t index);
    bool reapClosed(const OnEnd& onEnd);
    bool endAll(const OnBytes& onBytes, const OnEnd& onEnd);
    bool runs() const;
    void pollOnce(int milliseconds, const OnBytes& onBytes, const OnEnd& onEnd);

    std::vector<Worker> workers_;
};

/// Writes all bytes to a pipe; false when nobody reads any more.
bool writeAll(int descriptor, std::string_view bytes);
} // namespace host
