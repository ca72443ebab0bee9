#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/Report.h"
#include "report/redact/Dictionary.h"
#include "report/redact/Pseudonyms.h"

// What identifies in a row: which values do, of what form each is, and what stands in its place.

namespace report
{
/// Gathers the identifying values of rows, then replaces them in rows. Values are replaced by what they are alone, so
/// that equal ones stay equal in all reports; what other texts hold is replaced when it was gathered before.
class IdentifyingValues
{
public:
    explicit IdentifyingValues(std::string key) : pseudonyms_(std::move(key)) {}

    /// Takes note of a row. False when there are more values than can be searched for.
    bool gather(const GroupRows& group, const Row& row);
    /// Ends gathering.
    void finish();
    /// The row with pseudonyms, its values' sources too.
    void replace(const GroupRows& group, Row& row) const;
    /// A text that is no value of a report.
    std::string replaced(std::string_view text) const { return dictionary_.replaced(text); }

    /// A host's or a domain's name, or an address; options joined by blanks or commas; the path of an account's folder;
    /// a URI.
    std::string host(std::string_view name) const;
    std::string list(std::string_view options) const;
    std::string home(std::string_view path) const;
    std::string uri(std::string_view uri) const;

    const Pseudonyms& pseudonyms() const { return pseudonyms_; }

private:
    void gatherValue(const GroupRows& group, const Row& row, const Value& value);
    void gatherText(std::string_view text, std::string_view pseudonym);
    void gatherHardwareAddress(std::string_view text);
    void gatherUuid(const std::string& digits);
    void gatherMount(std::string_view path);
    void gatherDestination(const Row& row, std::string_view text);
    void gatherIdentifier(std::string_view text);
    void gatherHost(std::string_view name, bool isDomain);
    void gatherIdentity(const char* basis, std::string_view text);
    void gatherIdentityOf(const GroupRows& group, const Value& value, std::string_view text);
    std::string machineKeyPseudonym(const std::string& key) const;
    std::string replacedValue(const GroupRows& group, const Row& row, const Value& value) const;

    Pseudonyms pseudonyms_;
    Dictionary dictionary_;
    bool isFull_ = false;
    std::vector<std::string> seenKeys_;                        // of machines
    std::unordered_map<std::string, std::string> machineKeys_; // by the original
};
} // namespace report
