#include "tests/ctl/CallWatch.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

namespace
{
struct NamedCall {
    const char* name;
    int number;
};

#define CALL(name)                                                                                                     \
    {                                                                                                                  \
#name, SYS_##name                                                                                              \
    }
constexpr NamedCall kCalls[] = {
    CALL(brk),
    CALL(clock_gettime),
    CALL(clone),
    CALL(close),
    CALL(close_range),
    CALL(dup),
    CALL(dup3),
    CALL(execve),
    CALL(execveat),
    CALL(exit),
    CALL(exit_group),
    CALL(fcntl),
    CALL(fstat),
    CALL(fstatfs),
    CALL(fsync),
    CALL(futex),
    CALL(getcwd),
    CALL(getdents64),
    CALL(getegid),
    CALL(geteuid),
    CALL(getgid),
    CALL(getpeername),
    CALL(getpid),
    CALL(getppid),
    CALL(getrandom),
    CALL(getsockname),
    CALL(gettid),
    CALL(getuid),
    CALL(ioctl),
    CALL(kill),
    CALL(lseek),
    CALL(madvise),
    CALL(mmap),
    CALL(mprotect),
    CALL(mremap),
    CALL(munmap),
    CALL(newfstatat),
    CALL(openat),
    CALL(openat2),
    CALL(pipe2),
    CALL(ppoll),
    CALL(prctl),
    CALL(pread64),
    CALL(prlimit64),
    CALL(read),
    CALL(readlinkat),
    CALL(recvfrom),
    CALL(recvmsg),
    CALL(renameat),
    CALL(rseq),
    CALL(rt_sigaction),
    CALL(rt_sigprocmask),
    CALL(rt_sigreturn),
    CALL(bind),
    CALL(sched_getaffinity),
    CALL(sched_yield),
    CALL(sendmsg),
    CALL(sendto),
    CALL(set_robust_list),
    CALL(set_tid_address),
    CALL(setsockopt),
    CALL(sigaltstack),
    CALL(socket),
    CALL(statfs),
    CALL(statx),
    CALL(sysinfo),
    CALL(tgkill),
    CALL(uname),
    CALL(unlinkat),
    CALL(wait4),
    CALL(write),
#ifdef __x86_64__
    CALL(access),
    CALL(arch_prctl),
    CALL(dup2),
    CALL(fork),
    CALL(open),
    CALL(poll),
    CALL(readlink),
    CALL(rename),
    CALL(stat),
    CALL(unlink),
    CALL(vfork),
#endif
};
#undef CALL

// What parent and child share until the watch stands.
struct Handshake {
    std::atomic<int> listener{-1}; // the child's descriptor
    std::atomic<bool> isTaken{false};
};

// The kernel asks about the calls of the list, or about all others. A call of another processor family's numbers is
// ended: nothing here makes any.
std::vector<sock_filter> filterOf(const std::vector<int>& calls, bool isListAllowed)
{
#if defined(__x86_64__)
    constexpr unsigned kFamily = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
    constexpr unsigned kFamily = AUDIT_ARCH_AARCH64;
#else
    constexpr unsigned kFamily = 0;
#endif
    const unsigned listed = isListAllowed ? SECCOMP_RET_ALLOW : SECCOMP_RET_USER_NOTIF;
    const unsigned others = isListAllowed ? SECCOMP_RET_USER_NOTIF : SECCOMP_RET_ALLOW;
    std::vector<sock_filter> program{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kFamily, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
    };
    for (const int call : calls) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, listed));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, others));
    return program;
}

// In the child: from here on it is watched. It waits until its parent has the listener, with no call that is asked
// about.
void beginWatch(std::vector<sock_filter>& program, Handshake& handshake)
{
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const long listener = syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter);
    if (listener < 0)
        _exit(95);
    handshake.listener = static_cast<int>(listener);
    while (!handshake.isTaken) {
    }
}

// In the parent: the child's listener, or -1 when the child could make none.
int takeListener(pid_t process, Handshake& handshake)
{
    const int child = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    pollfd end{child, POLLIN, 0};
    int listener = -1;
    while (handshake.listener == -1 && poll(&end, 1, 1) == 0) {
    }
    if (handshake.listener != -1)
        listener = static_cast<int>(syscall(SYS_pidfd_getfd, child, handshake.listener.load(), 0));
    handshake.isTaken = true;
    close(child);
    return listener;
}
} // namespace

std::string callName(int number)
{
    const auto found = std::find_if(std::begin(kCalls), std::end(kCalls),
                                    [&](const NamedCall& call) { return call.number == number; });
    return found != std::end(kCalls) ? found->name : "call " + std::to_string(number);
}

int callNumber(const std::string& name)
{
    const auto found =
        std::find_if(std::begin(kCalls), std::end(kCalls), [&](const NamedCall& call) { return call.name == name; });
    return found != std::end(kCalls) ? found->number : -1;
}

std::optional<std::string> WatchedCall::text(size_t argument) const
{
    constexpr size_t kPage = 4096;
    std::string text(kPage, '\0');
    const uint64_t address = arguments[argument];
    // Up to the end of a page first: the next one need not be there.
    for (const size_t size : {kPage, static_cast<size_t>(kPage - address % kPage)}) {
        const iovec here{text.data(), size};
        const iovec there{reinterpret_cast<void*>(address), size};
        const ssize_t got = process_vm_readv(process, &here, 1, &there, 1, 0);
        if (got > 0)
            return text.substr(0, std::min(text.find('\0'), static_cast<size_t>(got)));
    }
    return std::nullopt;
}

CallWatch::CallWatch(std::vector<int> calls, bool isListAllowed, Decide decide)
    : calls_(std::move(calls)), isListAllowed_(isListAllowed), decide_(std::move(decide))
{
    std::erase(calls_, -1);
}

CallWatch::~CallWatch()
{
    if (listener_ != -1)
        close(listener_);
}

void CallWatch::answerOne()
{
    seccomp_notif question{};
    if (ioctl(listener_, SECCOMP_IOCTL_NOTIF_RECV, &question) != 0)
        return;
    WatchedCall call;
    call.process = static_cast<pid_t>(question.pid);
    call.number = question.data.nr;
    std::copy(std::begin(question.data.args), std::end(question.data.args), call.arguments);
    const Verdict verdict = decide_(call);
    seccomp_notif_resp answer{};
    answer.id = question.id;
    switch (verdict.kind) {
    case Verdict::Kind::Hang:
        return;
    case Verdict::Kind::Kill:
        kill(call.process, SIGKILL);
        return;
    case Verdict::Kind::Allow:
        answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
        break;
    case Verdict::Kind::Fail:
        answer.error = -static_cast<int>(verdict.value);
        break;
    case Verdict::Kind::Answer:
        answer.val = verdict.value;
        break;
    }
    ioctl(listener_, SECCOMP_IOCTL_NOTIF_SEND, &answer);
}

void CallWatch::serve(pid_t process, milliseconds allowed)
{
    const Clock::time_point until = Clock::now() + allowed;
    const int main = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    pollfd polled[] = {{listener_, POLLIN, 0}, {main, POLLIN, 0}};
    while (Clock::now() < until && (polled[1].revents & POLLIN) == 0) {
        if (poll(polled, std::size(polled), 100) <= 0)
            continue;
        if ((polled[0].revents & POLLIN) != 0)
            answerOne();
        else if ((polled[0].revents & (POLLHUP | POLLERR)) != 0)
            break; // all watched processes have ended
    }
    close(main);
}

ProgramResult CallWatch::run(Program& program, const std::function<void()>& before, milliseconds allowed)
{
    void* const shared = mmap(nullptr, sizeof(Handshake), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto* const handshake = new (shared) Handshake;
    std::vector<sock_filter> filter = filterOf(calls_, isListAllowed_);
    program.before([&] {
        if (before)
            before();
        beginWatch(filter, *handshake);
    });
    program.start();
    listener_ = takeListener(program.process(), *handshake);
    munmap(shared, sizeof(Handshake));
    if (listener_ != -1)
        serve(program.process(), allowed);
    return program.finish(allowed);
}

bool CallWatch::isPossible()
{
    bool wasAsked = false;
    CallWatch watch({SYS_execve}, false, [&](const WatchedCall&) {
        wasAsked = true;
        return Verdict();
    });
    Program program({});
    program.path("/bin/true");
    watch.run(program);
    return wasAsked;
}
