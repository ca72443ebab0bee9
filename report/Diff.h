#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/Reader.h"

// What has changed from one report to another, row by row.
//
// Rows are paired by what names a thing whatever its place in the report: by the attributes that the catalog lists for
// its group, then by the group's keys, then by their order. Two rows are a pair by the first of these that both have
// and that is unique in both reports: a disk that was replaced is another disk, though it has the name of the old one.
// Index counts rows, and is neither compared nor paired by. Reports of the two programs can be compared: then groups
// and attributes that only one of them has are no change.

namespace report
{
class RowStore;

/// A report on its way to diff(). Rows wait in a temporary file when there are many of them: memory holds some numbers
/// of each.
class DiffSide : public ReportSink
{
public:
    DiffSide();
    ~DiffSide() override;
    DiffSide(const DiffSide&) = delete;
    DiffSide& operator=(const DiffSide&) = delete;

    void group(const GroupRows& group, uint64_t line) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    /// Why not all of the report is there: too many rows, no room for them. Empty when it is.
    std::string failure() const;

    /// One group's rows. For diff() alone.
    struct Rows {
        const Group* group = nullptr; // null when the catalog does not know it
        std::string element;          // of one that it does not know
        uint32_t version = 0;
        bool isFirstVersion = false;
        std::vector<uint64_t> places; // in the store
        std::vector<bool> occurring;  // attributes of the catalog that occur, by position
    };
    const std::map<std::string, Rows, std::less<>>& groups() const { return groups_; }
    RowStore& store() const { return *store_; }

private:
    std::unique_ptr<RowStore> store_;
    std::map<std::string, Rows, std::less<>> groups_; // by their elements
    Rows* current_ = nullptr;
    uint64_t rows_ = 0;
    std::string failure_;
};

/// One attribute of a change: what it was and what it is; absent where the row does not have it.
struct ValueChange {
    std::optional<Value> old, now;
    std::string_view name() const { return old ? old->name() : now->name(); }
};

/// One row that is not what it was.
struct Change {
    enum Kind : uint8_t { ADDED, REMOVED, CHANGED };
    Kind kind = CHANGED;
    std::string group; // element
    /// Attributes that name the row, of one that has changed as they were: its keys, else what it was paired by.
    std::vector<Value> key;
    /// The row's number (from 1) in its group of either report, 0 where it is not; both are 0 when the key names no
    /// other row.
    uint64_t oldRow = 0, newRow = 0;
    /// In the catalog's order: of a row that was added or removed all that are compared.
    std::vector<ValueChange> values;
};

/// Tells what has changed, always in the same order: groups in the catalog's order, in them the old report's rows in
/// theirs, then those that were added. Volatile attributes are left out unless all are asked for. False when the rows
/// could not be read back: failure() of a side tells why.
bool diff(const DiffSide& old, const DiffSide& now, bool withVolatile, const std::function<void(const Change&)>& found);

/// One line a change, a row's changed attributes one line each:
///     ~ Storage[DeviceName=/dev/sda] FirmwareRevision: "1.0" -> "1.1"
///     + USBDevice[BusPath=1-2]
/// Values are quoted, and in them quotes, backslashes and all that a terminal does not show as a character are escaped.
std::string changeText(const Change& change);

/// One object: {"group": ..., "change": "changed", "key": {"DeviceName": "/dev/sda"}, "attributes":
/// {"FirmwareRevision": ["1.0", "1.1"]}}; null stands for what is not there. Row numbers are the key's member "$row".
std::string changeJson(const Change& change);
} // namespace report
