// measure FOLDER COMMAND [ARG...]: runs a command once in the folder, its streams on /dev/null, and prints wall
// milliseconds, CPU milliseconds with its children, CPU milliseconds of its own (0 where the kernel does not tell) and
// the peak KiB of its largest process. A small program of its own, because a process starts with the peak of the one
// that started it. $MEASURE_PRELOAD is preloaded into the command.
//
// measure FOLDER --own-peak COMMAND [ARG...]: runs a command likewise and prints the peak KiB of its own process alone.
// The kernel's account of a process that has ended counts the children that it waited for, so it is asked at its end.
//
// measure FOLDER --commands FILE: runs each line of the file once through the shell, as a scan does, and prints the
// sums of their wall and CPU milliseconds.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static double milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

static double cpuMilliseconds(const rusage& usage)
{
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

static double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The time that the process itself has run, while it can still be asked: before it is waited for.
static double ownMilliseconds(pid_t process)
{
    unsigned long long nanoseconds = 0;
    if (FILE* const file = fopen(("/proc/" + std::to_string(process) + "/schedstat").c_str(), "r")) {
        if (fscanf(file, "%llu", &nanoseconds) != 1)
            nanoseconds = 0;
        fclose(file);
    }
    return static_cast<double>(nanoseconds) / 1e6;
}

// In the child: becomes the command.
[[noreturn]] static void become(char** words)
{
    const int null = open("/dev/null", O_RDWR);
    if (dup2(null, 0) < 0 || dup2(null, 1) < 0 || dup2(null, 2) < 0)
        _exit(126);
    if (const char* const library = getenv("MEASURE_PRELOAD"))
        setenv("LD_PRELOAD", library, 1);
    execvp(words[0], words);
    _exit(127);
}

static int measureCommand(char** words)
{
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0)
        become(words);
    siginfo_t ended;
    if (child < 0 || waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT) != 0)
        return 2;
    const double wall = millisecondsSince(start);
    const double own = ownMilliseconds(child);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child)
        return 2;
    printf("%.3f %.3f %.3f %ld\n", wall, cpuMilliseconds(usage), own, usage.ru_maxrss);
    return WIFEXITED(status) && WEXITSTATUS(status) < 126 ? 0 : 1;
}

// The most memory that a process has had resident, in KiB; 0 when it cannot be asked.
static long peakOf(pid_t process)
{
    long peak = 0;
    if (FILE* const file = fopen(("/proc/" + std::to_string(process) + "/status").c_str(), "r")) {
        char line[256];
        while (fgets(line, sizeof line, file) != nullptr)
            sscanf(line, "VmHWM: %ld", &peak);
        fclose(file);
    }
    return peak;
}

static int measureOwnPeak(char** words)
{
    constexpr int kAtItsEnd = SIGTRAP | PTRACE_EVENT_EXIT << 8;
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        become(words);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status) || // where it becomes the command
        ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL) != 0)
        return 2;
    long peak = 0;
    long signal = 0; // what stopped it, and is passed on
    while (ptrace(PTRACE_CONT, child, nullptr, signal) == 0 && waitpid(child, &status, 0) == child &&
           WIFSTOPPED(status)) {
        const bool ends = status >> 8 == kAtItsEnd;
        if (ends)
            peak = peakOf(child);
        signal = ends ? 0 : WSTOPSIG(status);
    }
    printf("%ld\n", peak);
    return peak != 0 && WIFEXITED(status) && WEXITSTATUS(status) < 126 ? 0 : 1;
}

static int measureList(const char* name)
{
    FILE* const list = fopen(name, "r");
    if (list == nullptr)
        return 2;
    double wall = 0;
    char command[4096];
    while (fgets(command, sizeof command, list) != nullptr) {
        command[strcspn(command, "\n")] = '\0';
        const auto start = std::chrono::steady_clock::now();
        FILE* const output = popen(command, "r");
        char data[4096];
        while (output != nullptr && fread(data, 1, sizeof data, output) > 0) {
        }
        if (output != nullptr)
            pclose(output);
        wall += millisecondsSince(start);
    }
    fclose(list);
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    printf("%.3f %.3f\n", wall, cpuMilliseconds(usage));
    return 0;
}

int main(int argc, char** argv)
{
    if (argc < 3 || chdir(argv[1]) != 0) {
        fprintf(stderr, "usage: measure FOLDER [--own-peak] COMMAND [ARG...] | measure FOLDER --commands FILE\n");
        return 2;
    }
    if (argc > 3 && strcmp(argv[2], "--own-peak") == 0)
        return measureOwnPeak(argv + 3);
    return argc == 4 && strcmp(argv[2], "--commands") == 0 ? measureList(argv[3]) : measureCommand(argv + 2);
}
