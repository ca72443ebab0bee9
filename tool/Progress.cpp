#include "tool/Progress.h"

#include <cstdio>
#include <unistd.h>

namespace tool
{
using Clock = std::chrono::steady_clock;

Progress::Progress(std::string_view what) : what_(what), start_(Clock::now()), isWatched_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress()
{
    if (isShown_)
        fputs("\r\033[K", stderr);
}

void Progress::show(size_t done, size_t all)
{
    constexpr std::chrono::milliseconds kUnnoticed(500);
    if (!isWatched_ || Clock::now() - start_ < kUnnoticed)
        return;
    isShown_ = true;
    fprintf(stderr, "\r%zu of %zu %.*s\033[K", done, all, static_cast<int>(what_.size()), what_.data());
    fflush(stderr);
}
} // namespace tool
