#pragma once

#include <memory>
#include <string>

#include "host/Collection.h"
#include "host/Workers.h"
#include "host/record/KernelRecording.h"
#include "report/Report.h"

namespace host
{
/// A machine as one worker has it open: its files, its kernel, its time zone.
class OpenMachine
{
public:
    virtual ~OpenMachine() = default;
    virtual const Machine& machine() const = 0;
};

/// Where a scan's facts come from: the live machine or a copy of one.
class MachineSource
{
public:
    /// root is "/" or the folder of a copy.
    explicit MachineSource(std::string root) : root_(std::move(root)) {}

    bool isLive() const { return root_ == "/"; }

    /// Checks the folder. Returns false, with the reason, when it cannot be used.
    bool prepare(std::string& reason);

    /// Opens the machine for one worker.
    std::unique_ptr<OpenMachine> open(Notes& notes, Deadline deadline) const;

    /// When the scan is, in the machine's own zone.
    report::DateTime date() const;

private:
    std::string root_;
    KernelRecording recording_; // of a copy
};
} // namespace host
