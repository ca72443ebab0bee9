#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <unordered_set>

#include "report/Reader.h"

// Whether a report is what the catalog says of it.

namespace report
{
/// One thing that holds of every report. Names are for users and programs: they stay.
struct Rule {
    const char* name;
    const char* what; // one line
};

/// All rules, in the order of the form: file, groups, rows, values.
std::span<const Rule> checkRules();

/// A place where a rule does not hold.
struct Finding {
    const Rule* rule = nullptr;
    uint64_t line = 0;     // 0 where the whole file is meant
    std::string group;     // element; empty outside of groups
    uint64_t row = 0;      // from 1 within its group; 0 outside of rows
    std::string attribute; // element; empty where the whole row is meant
    std::string message;   // one line
};

/// Takes a report as it is read and hands over what is found, in the order of the lines. Memory holds one row, and of
/// every row with keys a number of 64 bits.
class Checker : public ReportSink
{
public:
    using Found = std::function<void(const Finding&)>;
    explicit Checker(Found found) : found_(std::move(found)) {}

    void group(const GroupRows& group, uint64_t line) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    /// What reading itself has shown, when it has ended: nothing of a report that was whole or unreadable.
    void end(ReadResult result, const ReadProblem& problem);

private:
    void checkOrder(const GroupRows& group, uint64_t line);
    void checkAttributeOrder(const GroupRows& group, const Row& row, const RowLines& lines);
    void checkKeys(const GroupRows& group, const Row& row, const RowLines& lines);
    void checkUnique(const GroupRows& group, const Row& row, const RowLines& lines);
    void checkValue(const GroupRows& group, const Value& value, uint64_t line);
    void checkMark(const GroupRows& group, const Value& value, uint64_t line);
    void tell(size_t rule, uint64_t line, std::string_view attribute, std::string message);

    Found found_;
    std::string group_;
    uint64_t row_ = 0;
    bool isBehindGroup_ = false; // a group of the catalog came before
    size_t lastPosition_ = 0;
    // Hashes of the keys of every group's rows, and how many rows it has.
    struct Seen {
        std::unordered_set<uint64_t> keys;
        uint64_t rows = 0;
    };
    std::map<std::string, Seen, std::less<>> groups_;
    Seen* seen_ = nullptr;
};
} // namespace report
