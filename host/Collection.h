#pragma once

#include <chrono>
#include <concepts>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "host/Fact.h"
#include "host/Notes.h"
#include "report/Report.h"

// What a collector writes to: rows of its group, built value by value.

namespace host
{
class Kernel;
class Root;
class TimeZone;

/// What a collector may ask of the machine.
struct Machine {
    const Root& root;
    const Kernel& kernel;
    const TimeZone& zone;
    std::chrono::steady_clock::time_point deadline; // of the whole scan
};

/// Builds one row of a group. Every function leaves the attribute out when the value is absent or an empty text, cuts
/// texts to the catalog's length and numbers of a VEX_ULONG to 32 bits (a larger one is 0xFFFFFFFF), and keeps the
/// catalog's order whatever the order of the calls. Texts may be any bytes: the row holds valid UTF-8. A second value
/// replaces the first.
class RowBuilder
{
public:
    /// group is the id of a group of the catalog.
    explicit RowBuilder(uint32_t group);
    /// Goes on with a row of that group.
    RowBuilder(uint32_t group, report::Row&& row);

    RowBuilder& text(uint32_t attribute, std::string_view value, std::string_view source);
    template <std::same_as<std::optional<std::string>> MaybeText>
    RowBuilder& text(uint32_t attribute, const MaybeText& value, std::string_view source)
    {
        return value ? text(attribute, std::string_view(*value), source) : *this;
    }
    RowBuilder& text(uint32_t attribute, const MaybeFact& fact);
    RowBuilder& number(uint32_t attribute, std::optional<uint64_t> value, std::string_view source);
    RowBuilder& yesNo(uint32_t attribute, std::optional<bool> value, std::string_view source);
    RowBuilder& real(uint32_t attribute, std::optional<double> value, std::string_view source);
    RowBuilder& dateTime(uint32_t attribute, const std::optional<report::DateTime>& value, std::string_view source);

    bool has(uint32_t attribute) const { return row_.find(attribute) != nullptr; }
    bool isEmpty() const { return row_.values.empty(); }
    const report::Row& row() const { return row_; }
    report::Row take() { return std::move(row_); }

private:
    void put(uint32_t attribute, report::Content content, std::string_view source);

    const report::Group& group_;
    report::Row row_;
};

/// Where a collector's rows go. Rows count when they are handed over, so that a collector that ends early keeps them.
class Collection
{
public:
    virtual ~Collection() = default;

    /// Hands a row over and returns its number from 0. An empty row is handed over too.
    virtual size_t add(RowBuilder&& row) = 0;

    /// Adds values to a row that was handed over before (what takes long is asked after all rows are safe).
    virtual void amend(size_t row, RowBuilder&& values) = 0;

    /// Between these calls rows may wait for others that come at once, and cost less so. To be used where nothing that
    /// takes long is asked between them.
    virtual void hold() {}
    virtual void release() {}

    Notes& notes() { return notes_; }

private:
    Notes notes_;
};

/// Holds a collection's rows together for as long as it lives.
class RowsTogether
{
public:
    explicit RowsTogether(Collection& collection) : collection_(collection) { collection_.hold(); }
    ~RowsTogether() { collection_.release(); }
    RowsTogether(const RowsTogether&) = delete;
    RowsTogether& operator=(const RowsTogether&) = delete;

private:
    Collection& collection_;
};

/// A collector adds the rows of its group; it returns early whenever there is nothing to tell.
using Collect = void (*)(const Machine&, Collection&);

/// One group and what collects it.
struct Collector {
    uint32_t group;
    Collect collect;
};
} // namespace host
