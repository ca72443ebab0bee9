#pragma once

#include <string>
#include <vector>

#include "tests/ctl/CallWatch.h"

/// One system call of a scan that does not succeed.
struct CallFault {
    size_t process = 0; // in the order in which they make their first call: 0 is the program, others are its workers
    size_t call = 0;    // of this process
    int number = 0;     // SYS_*
    const char* error = nullptr; // "EIO", "EOF": that it returns 0
    Verdict verdict;

    std::string text() const;
};

/// A scan of one group, of which every call can fail.
class FaultyScan
{
public:
    /// root is empty for the live machine; group is a catalog name.
    FaultyScan(std::string root, std::string group) : root_(std::move(root)), group_(std::move(group)) {}

    /// Every fault that is plausible for a call that a scan makes.
    std::vector<CallFault> plan();

    /// Scans with one fault. What is wrong with how it ended or with what it wrote; empty when nothing is: it ended by
    /// itself and in time, with a whole report that has the group's status, or, where the program's own calls failed,
    /// with one line of trouble.
    std::string attempt(const CallFault& fault) const;

private:
    std::vector<std::string> arguments() const;
    std::string complaintOf(const ProgramResult& result, const CallFault& fault) const;

    std::string root_;
    std::string group_;
    nlohmann::json whole_; // the groups of the scan without a fault
};

/// The catalog names of the groups that a scan of this root gives a status of.
std::vector<std::string> groupsOfScan(const std::string& root);
