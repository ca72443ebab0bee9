#include "tests/ctl/Program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

namespace
{
std::string textOf(int file)
{
    std::string text;
    char piece[65536];
    for (off_t at = 0;;) {
        const ssize_t got = pread(file, piece, sizeof piece, at);
        if (got <= 0)
            return text;
        text.append(piece, static_cast<size_t>(got));
        at += got;
    }
}

// As execve takes a list of texts.
std::vector<char*> pointersTo(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

milliseconds durationOf(const timeval& time)
{
    return std::chrono::duration_cast<milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                    std::chrono::microseconds(time.tv_usec));
}

void closeIfOpen(int& descriptor)
{
    if (descriptor != -1)
        close(descriptor);
    descriptor = -1;
}
} // namespace

Program::~Program()
{
    if (process_ != -1)
        finish(milliseconds(0));
}

Program& Program::path(std::string path)
{
    path_ = std::move(path);
    return *this;
}

Program& Program::before(std::function<void()> action)
{
    before_ = std::move(action);
    return *this;
}

Program& Program::environment(const std::string& variable)
{
    environment_.push_back(variable);
    return *this;
}

void Program::become() const
{
    constexpr int kNotStarted = 96;
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    dup2(output_, STDOUT_FILENO);
    dup2(errors_, STDERR_FILENO);
    std::vector<std::string> words{path_.empty() ? INVHWCTL_PROGRAM : path_};
    words.insert(words.end(), arguments_.begin(), arguments_.end());
    const std::vector<char*> arguments = pointersTo(words);
    const std::vector<char*> environment = pointersTo(environment_);
    if (before_)
        before_();
    execve(arguments[0], arguments.data(), environment.data());
    _exit(kNotStarted);
}

void Program::start()
{
    output_ = memfd_create("output", MFD_CLOEXEC);
    errors_ = memfd_create("errors", MFD_CLOEXEC);
    begin_ = Clock::now();
    process_ = fork();
    if (process_ == 0)
        become();
}

ProgramResult Program::finish(milliseconds allowed)
{
    ProgramResult result;
    if (process_ <= 0)
        return result;
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
    const auto left = std::chrono::duration_cast<milliseconds>(begin_ + allowed - Clock::now()).count();
    pollfd end{handle, POLLIN, 0};
    if (poll(&end, 1, static_cast<int>(std::max<decltype(left)>(left, 0))) != 1) {
        result.timedOut = true;
        kill(process_, SIGKILL);
    }
    int status = 0;
    rusage usage{};
    wait4(process_, &status, 0, &usage);
    process_ = -1;
    close(handle);
    result.took = std::chrono::duration_cast<milliseconds>(Clock::now() - begin_);
    result.cpu = durationOf(usage.ru_utime) + durationOf(usage.ru_stime);
    result.peakKiB = usage.ru_maxrss;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    result.output = textOf(output_);
    result.errors = textOf(errors_);
    closeIfOpen(output_);
    closeIfOpen(errors_);
    return result;
}

ProgramResult Program::run(milliseconds allowed)
{
    start();
    return finish(allowed);
}
