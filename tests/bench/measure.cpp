// measure FOLDER COMMAND [ARG...]: runs a command once in the folder, its streams on /dev/null, and prints wall
// milliseconds, CPU milliseconds with its children, CPU milliseconds of its own (0 where the kernel does not tell) and
// the peak KiB of its largest process. A small program of its own, because a process starts with the peak of the one
// that started it. $MEASURE_PRELOAD is preloaded into the command.
//
// measure FOLDER --commands FILE: runs each line of the file once through the shell, as a scan does, and prints the
// sums of their wall and CPU milliseconds.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
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

static int measureCommand(char** words)
{
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int null = open("/dev/null", O_RDWR);
        if (dup2(null, 0) < 0 || dup2(null, 1) < 0 || dup2(null, 2) < 0)
            _exit(126);
        if (const char* const library = getenv("MEASURE_PRELOAD"))
            setenv("LD_PRELOAD", library, 1);
        execvp(words[0], words);
        _exit(127);
    }
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
        fprintf(stderr, "usage: measure FOLDER COMMAND [ARG...] | measure FOLDER --commands FILE\n");
        return 2;
    }
    return argc == 4 && strcmp(argv[2], "--commands") == 0 ? measureList(argv[3]) : measureCommand(argv + 2);
}
