// measure FOLDER COMMAND [ARG...]: runs a command once in the folder, its streams on /dev/null, and prints wall
// milliseconds, CPU milliseconds (its own and its children's) and the peak KiB of its largest process. A small program
// of its own, because a process starts with the peak of the one that started it.

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static double milliseconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

int main(int argc, char** argv)
{
    if (argc < 3) {
        fprintf(stderr, "usage: measure FOLDER COMMAND [ARG...]\n");
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int null = open("/dev/null", O_RDWR);
        if (chdir(argv[1]) != 0 || dup2(null, 0) < 0 || dup2(null, 1) < 0 || dup2(null, 2) < 0)
            _exit(126);
        execvp(argv[2], argv + 2);
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child)
        return 2;
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    printf("%.3f %.3f %ld\n", wall.count(), milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime),
           usage.ru_maxrss);
    return WIFEXITED(status) && WEXITSTATUS(status) < 126 ? 0 : 1;
}
