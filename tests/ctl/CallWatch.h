#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "tests/ctl/Program.h"

/// A system call that a watched process is about to make.
struct WatchedCall {
    pid_t process = 0;
    int number = 0; // SYS_*
    uint64_t arguments[6] = {};

    /// The text that an argument points to, up to 4 KiB of it; absent when it cannot be read.
    std::optional<std::string> text(size_t argument) const;
};

/// What becomes of a call.
struct Verdict {
    enum class Kind {
        Allow,
        Fail,   // with the error that value is
        Answer, // with value, without being made
        Hang,   // the caller waits until a signal ends it
        Kill,   // the caller is killed
    };
    Kind kind = Kind::Allow;
    int64_t value = 0;
};

/// "openat2"; a number's text for a call that no test names.
std::string callName(int number);
/// The number of a call by its name; -1 when no test names it or this processor family has none.
int callNumber(const std::string& name);

/// Runs a program under a seccomp filter that asks this process before calls are made: of it and of every process that
/// it starts.
class CallWatch
{
public:
    using Decide = std::function<Verdict(const WatchedCall&)>;

    /// Asks about these calls or, when isListAllowed, about all but these.
    CallWatch(std::vector<int> calls, bool isListAllowed, Decide decide);
    /// Calls that still hang fail then.
    ~CallWatch();
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

    /// True when kernel and surroundings let a process be watched; else a test skips.
    static bool isPossible();

    /// Runs the program to its end, once; before is what Program::before is.
    ProgramResult run(Program& program, const std::function<void()>& before = {},
                      std::chrono::milliseconds allowed = std::chrono::seconds(60));

private:
    void serve(pid_t process, std::chrono::milliseconds allowed);
    void answerOne();

    std::vector<int> calls_;
    bool isListAllowed_;
    Decide decide_;
    int listener_ = -1;
};
