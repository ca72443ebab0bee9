#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "report/PackageUrl.h"
#include "report/Reader.h"

// A report as a bill of materials, in the JSON form of CycloneDX 1.6: the machine, its parts as components of type
// device, firmware, device-driver and operating-system, its installed packages as libraries and applications with
// package URLs. All values of a part that do not change by themselves are its properties. What a report says of itself
// may stand anywhere in it, so that it is read two times: first into a BomHead, then into BomParts.

namespace report
{
/// What must be known before the first part is written.
class BomHead : public ReportSink
{
public:
    void header(const Header& header) override;
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;

    Distribution distribution() const;
    /// The version of a kernel module, empty where it tells none.
    std::string moduleVersion(const std::string& name) const;
    const Report& rows() const { return rows_; }

private:
    Report rows_; // the first one of some groups
    std::map<std::string, std::string, std::less<>> moduleVersions_;
};

/// Writes the parts as they come: components to one stream, which of them needs which to another. Nothing is owned.
class BomParts : public ReportSink
{
public:
    BomParts(const BomHead& head, std::ostream& components, std::ostream& dependencies)
        : head_(head), components_(components), dependencies_(dependencies), distribution_(head.distribution())
    {
    }
    void row(const GroupRows& group, Row& row, const RowLines& lines) override;
    /// Writes the drivers that the parts named.
    void end();

    /// A digest of all that was written: the same parts give the same.
    const std::string& digest() const { return digest_; }

private:
    void add(const std::string& component);
    void addDevice(const GroupRows& group, const Row& row, const struct PartGroup& part);
    void addPackage(const GroupRows& group, const Row& row);
    void addDependency(const std::string& reference, const std::string& on);
    std::string uniqueReference(const std::string& reference);

    const BomHead& head_;
    std::ostream& components_;
    std::ostream& dependencies_;
    Distribution distribution_;
    std::map<uint64_t, uint64_t> references_; // how often one of this digest was given
    std::set<std::string> drivers_;
    uint64_t written_ = 0;
    uint64_t dependents_ = 0;
    std::string digest_;
};

/// What stands before the components. The serial number follows from the parts: the same report has the same, whichever
/// form it was in.
void beginBom(const BomHead& head, const BomParts& parts, std::ostream& out);
/// What stands between components and dependencies, and behind them.
void middleOfBom(std::ostream& out);
void endBom(std::ostream& out);
} // namespace report
