#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report/Reader.h"

namespace report
{
/// What a reader takes at most, so that memory stays bounded whatever a file holds.
constexpr size_t kMostTextBytes = size_t{1024} * 1024;     // of one text
constexpr size_t kMostRowBytes = size_t{16} * 1024 * 1024; // of all names, texts and sources of a row
constexpr size_t kMostRowValues = 4096;

/// Makes rows of the names and texts that a reader finds, for both forms. Functions that return false have told why.
class RowMaker
{
public:
    /// Nothing is owned.
    RowMaker(ReportSink& sink, ReadProblem& problem) : sink_(sink), problem_(problem) {}

    /// The group that the next rows are of.
    bool beginGroup(std::string_view element, uint32_t version, uint64_t line);
    void beginRow(uint64_t line);
    /// A further value without content; null when the row cannot have it.
    Value* addValue(std::string_view element, uint64_t line);
    /// Counts bytes that the row keeps.
    bool addBytes(size_t bytes, uint64_t line);
    void endRow();

    const GroupRows& group() const { return group_; }
    Row& row() { return row_; }

    /// Notes the first problem, with the place in the report; later ones are its consequence. Always false.
    bool fail(uint64_t line, std::string message, ProblemKind kind = ProblemKind::FORM);
    bool hasFailed() const { return !problem_.message.empty(); }

private:
    bool isRepeated(const Value& value);

    ReportSink& sink_;
    ReadProblem& problem_;
    GroupRows group_;
    bool hasGroup_ = false;
    size_t rowsOfGroup_ = 0;
    bool isInRow_ = false;
    Row row_;
    RowLines lines_;
    size_t rowBytes_ = 0;
    size_t next_ = 0;             // position of the attribute that most likely comes next
    std::vector<bool> seen_;      // attributes of the catalog, by position
    std::set<std::string> other_; // names that the catalog does not know
};

/// A text of a file for a message: one line of valid UTF-8, not long.
std::string shown(std::string_view text);
} // namespace report
