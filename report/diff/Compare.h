#pragma once

#include <vector>

#include "report/Diff.h"

namespace report
{
/// What of a group's rows a diff looks at.
struct Comparison {
    /// Rows are null of a report that does not have the group.
    Comparison(const DiffSide::Rows* oldRows, const DiffSide::Rows* newRows, bool isWithVolatile,
               bool isAcrossPrograms);

    const DiffSide::Rows* old;
    const DiffSide::Rows* now;
    bool withVolatile;
    bool acrossPrograms;      // only what both tell is compared
    const Attribute* dynamic; // Yes in rows some of whose attributes are volatile; null where no row has such

    const Group* group() const { return old != nullptr ? old->group : now->group; }
};

/// Attributes that name a row together.
struct Name {
    std::vector<const Attribute*> attributes;
    bool isMarked = false;   // of a group that the catalog does not know: what the row itself marks as keys
    bool isIdentity = false; // placeholders are no name
};

/// Names by which rows of the two reports are paired, in their order; keys from firstKey on. Index and what is always
/// volatile names nothing.
std::vector<Name> pairingNames(const Comparison& comparison, size_t& firstKey);

/// Names that a person is told, the keys first.
std::vector<Name> shownNames(const Comparison& comparison);

/// The values of a name; empty when the row has not all of them.
std::vector<Value> valuesOf(const Comparison& comparison, const Name& name, const Row& row);

/// A hash of these values, 0 of none.
uint64_t hashOf(const Comparison& comparison, const std::vector<Value>& values);

/// A hash of all that is compared of a row.
uint64_t hashOf(const Comparison& comparison, Row row);

/// All that is compared of a row that was added or removed, and what differs between two rows, in the catalog's order.
std::vector<ValueChange> valuesAdded(const Comparison& comparison, Row row);
std::vector<ValueChange> valuesRemoved(const Comparison& comparison, Row row);
std::vector<ValueChange> valuesChanged(const Comparison& comparison, Row old, Row now);
} // namespace report
