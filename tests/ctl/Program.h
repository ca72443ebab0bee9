#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

#include <nlohmann/json.hpp>

/// What came of a run of invhwctl.
struct ProgramResult {
    int status = -1; // of its exit; -1 when a signal ended it
    int signal = 0;
    bool timedOut = false;
    std::chrono::milliseconds took{};
    std::chrono::milliseconds cpu{}; // of it and of all that it waited for
    long peakKiB = 0;                // of its largest process that was waited for
    std::string output;
    std::string errors;

    /// The report that it wrote as JSON; a null value when it is none.
    nlohmann::json report() const { return nlohmann::json::parse(output, nullptr, false); }
};

/// One run of the built invhwctl as a process of its own, in an empty environment. Ended when the object goes.
class Program
{
public:
    explicit Program(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Another program than invhwctl, by its path.
    Program& path(std::string path);
    /// Runs in the new process as the last thing before it becomes the program: limits, filters, closed streams.
    Program& before(std::function<void()> action);
    /// A variable of its environment: "NAME=value".
    Program& environment(const std::string& variable);

    /// Starts it. Its streams go to files in memory.
    void start();
    pid_t process() const { return process_; }
    /// Waits for its end; kills it when it takes longer.
    ProgramResult finish(std::chrono::milliseconds allowed = std::chrono::seconds(60));
    ProgramResult run(std::chrono::milliseconds allowed = std::chrono::seconds(60));

private:
    [[noreturn]] void become() const;

    std::string path_;
    std::vector<std::string> arguments_;
    std::vector<std::string> environment_;
    std::function<void()> before_;
    pid_t process_ = -1;
    int output_ = -1;
    int errors_ = -1;
    std::chrono::steady_clock::time_point begin_;
};

/// True in builds with sanitizers, whose processes need more of everything.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif
