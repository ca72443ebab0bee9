#include "host/Scan.h"

#include <chrono>
#include <cstring>
#include <memory>

#include "host/Collectors.h"
#include "host/Frames.h"
#include "host/Machine.h"
#include "host/Workers.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
const char* const kProgram = "invhwctl 5.0.0";
const uint32_t kMajorVersion = 5;
const uint32_t kMinorVersion = 0;

namespace
{
using Clock = std::chrono::steady_clock;

// One group on its way from its collector to the report.
struct Task {
    const Collector* collector;
    FrameReader frames;
    Clock::time_point start;
    Clock::duration took{};
    Workers::Result end;

    explicit Task(const Collector& c) : collector(&c), frames(c.group) {}
};

std::vector<Task> tasksOf(const ScanOptions& options)
{
    std::vector<Task> tasks;
    for (const Collector* collector : wantedCollectors(options.groups))
        tasks.emplace_back(*collector);
    return tasks;
}

// What runs in a worker: the machine is opened there, so that nothing that hangs is shared.
void collect(const MachineSource& source, const Collector& collector, Deadline deadline, int pipe)
{
    PipeCollection collection(pipe);
    const std::unique_ptr<OpenMachine> machine = source.open(collection.notes(), deadline);
    collector.collect(machine->machine(), collection);
    collection.end();
}

// The reason of a worker's end that was not its own.
std::string reasonOf(const Task& task, double deadlineSeconds)
{
    switch (task.end.end) {
    case Workers::End::TimedOut: {
        char text[64];
        snprintf(text, sizeof text, "not ready after %g s", deadlineSeconds);
        return text;
    }
    case Workers::End::Crashed:
        return std::string("ended by signal ") + std::to_string(task.end.code);
    case Workers::End::NotStarted:
        return std::string("no process: ") + strerror(task.end.code);
    default:
        return "ended early";
    }
}

const char* resultOf(const Task& task)
{
    const std::optional<Outcome>& outcome = task.frames.outcome();
    if (!outcome)
        return task.end.end == Workers::End::TimedOut ? "Timed Out" : "Failed";
    if (!task.frames.rows().empty())
        return "Collected";
    if (outcome->wasRefused)
        return "Refused";
    return outcome->wasFound ? "Empty" : "No Source";
}

report::Row statusRow(const Task& task, const ScanOptions& options, bool isLive)
{
    const std::optional<Outcome>& outcome = task.frames.outcome();
    const std::string reason = outcome ? outcome->notes : reasonOf(task, options.deadlineSeconds);
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(task.took).count();
    RowBuilder row(GROUP_SCAN_STATUS);
    row.text(SCAN_STATUS_GROUP_NAME, report::findGroup(task.collector->group)->name, "");
    row.text(SCAN_STATUS_RESULT, resultOf(task), "");
    row.number(SCAN_STATUS_ROWS, task.frames.rows().size(), "");
    if (isLive)
        row.number(SCAN_STATUS_MILLISECONDS, static_cast<uint64_t>(milliseconds), "");
    row.text(SCAN_STATUS_REASON, reason, "");
    return row.take();
}

// Serves the workers, one a task in the same order.
void serve(Workers& workers, std::vector<Task>& tasks, Deadline deadline, const ScanOptions& options)
{
    constexpr int kProgressMilliseconds = 200;
    size_t ready = 0;
    const auto onBytes = [&](size_t worker, std::string_view bytes) { return tasks[worker].frames.take(bytes); };
    const auto onEnd = [&](size_t worker, Workers::Result result) {
        tasks[worker].end = result;
        tasks[worker].took = Clock::now() - tasks[worker].start;
        ++ready;
    };
    const auto onTick = [&] {
        if (options.onProgress)
            options.onProgress(ready, tasks.size());
    };
    workers.serve(deadline, onBytes, onEnd, kProgressMilliseconds, onTick);
}

// All at once. The catalog is made before: once, for all of them to share.
void runTasks(const MachineSource& source, std::vector<Task>& tasks, Deadline deadline, const ScanOptions& options)
{
    report::catalog();
    Workers workers;
    for (Task& task : tasks) {
        task.start = Clock::now();
        workers.start([&](int pipe) { collect(source, *task.collector, deadline, pipe); });
    }
    serve(workers, tasks, deadline, options);
}

report::GroupRows statusRows(const std::vector<Task>& tasks, const ScanOptions& options, bool isLive)
{
    report::GroupRows rows;
    rows.group = report::findGroup(GROUP_SCAN_STATUS);
    rows.version = rows.group->version;
    for (const Task& task : tasks)
        rows.rows.push_back(statusRow(task, options, isLive));
    return rows;
}

void moveRows(std::vector<Task>& tasks, report::Report& report)
{
    for (Task& task : tasks) {
        report::GroupRows group;
        group.group = report::findGroup(task.collector->group);
        group.version = group.group->version;
        group.rows = task.frames.takeRows();
        if (!group.rows.empty())
            report.groups.push_back(std::move(group));
    }
}
} // namespace

bool scan(const ScanOptions& options, report::Report& report, std::string& reason)
{
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                             std::chrono::duration<double>(options.deadlineSeconds));
    MachineSource source(options.root);
    if (!source.prepare(reason))
        return false;
    std::vector<Task> tasks = tasksOf(options);
    runTasks(source, tasks, deadline, options);
    report.program = kProgram;
    report.date = source.date();
    report::GroupRows status = statusRows(tasks, options, source.isLive());
    moveRows(tasks, report);
    report.groups.push_back(std::move(status));
    return true;
}
} // namespace host
