#pragma once

#include <chrono>
#include <cstddef>
#include <string_view>

namespace tool
{
/// Progress of long work on standard error, for a person who watches: only when that is a terminal, and only from half
/// a second on. The line is wiped when the object goes.
class Progress
{
public:
    /// what is done, in the plural: "groups".
    explicit Progress(std::string_view what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(size_t done, size_t all);

private:
    std::string_view what_;
    std::chrono::steady_clock::time_point start_;
    bool isWatched_;
    bool isShown_ = false;
};
} // namespace tool
