#include "report/Diff.h"

#include <algorithm>
#include <cstring>

#include "report/diff/Compare.h"
#include "report/diff/Pairing.h"
#include "report/diff/RowStore.h"

namespace report
{
namespace
{
constexpr uint64_t kMostRows = 10'000'000;
constexpr size_t kMostGroups = 10'000;

// Which program's reports have such groups; a report with groups of both or of neither could be either's.
enum class Program : uint8_t { UNKNOWN, FIRST, SECOND };

Program programOf(const DiffSide& side)
{
    bool isFirst = false, isSecond = false;
    for (const auto& [name, rows] : side.groups())
        (rows.isFirstVersion ? isFirst : isSecond) |= rows.group != nullptr;
    return isFirst == isSecond ? Program::UNKNOWN : isFirst ? Program::FIRST : Program::SECOND;
}

using Found = std::function<void(const Change&)>;

// One group of two reports.
class GroupDiff
{
public:
    GroupDiff(const DiffSide& old, const DiffSide& now, const Comparison& comparison)
        : comparison_(comparison), sides_{{old.store(), comparison.old, {}, {}, {}},
                                          {now.store(), comparison.now, {}, {}, {}}}
    {
    }
    void run(const Found& found);

private:
    struct Side {
        RowStore& store;
        const DiffSide::Rows* rows;
        RowMarks marks;
        std::vector<std::vector<uint64_t>> shown;     // hashes of the names that a person is told, by name and row
        std::vector<std::vector<bool>> isShownUnique; // the same
        size_t count() const { return rows != nullptr ? rows->places.size() : 0; }
        Row row(size_t i) const { return store.row(rows->places[i], rows->group); }
    };

    void mark(Side& side, const std::vector<Name>& pairing);
    Change changeOf(Change::Kind kind, const Side& side, size_t row, const Row& values) const;
    Change changeOf(size_t old, size_t now, const Row& before) const;
    size_t shownName(const Side& side, size_t row) const;
    void tellOld(size_t old, size_t now, const Found& found) const;
    void tellNew(size_t now, const Found& found) const;

    const Comparison& comparison_;
    Side sides_[2];
    std::vector<Name> shownNames_;
};

void GroupDiff::mark(Side& side, const std::vector<Name>& pairing)
{
    side.marks.names.resize(pairing.size());
    side.shown.resize(shownNames_.size());
    for (size_t i = 0; i < side.count(); ++i) {
        Row row = side.row(i);
        for (size_t level = 0; level < pairing.size(); ++level)
            side.marks.names[level].push_back(hashOf(comparison_, valuesOf(comparison_, pairing[level], row)));
        for (size_t level = 0; level < shownNames_.size(); ++level)
            side.shown[level].push_back(hashOf(comparison_, valuesOf(comparison_, shownNames_[level], row)));
        side.marks.wholes.push_back(hashOf(comparison_, std::move(row)));
    }
    for (const std::vector<uint64_t>& hashes : side.shown)
        side.isShownUnique.push_back(onlyOnes(hashes));
}

// The first name that a row has, or their number.
size_t GroupDiff::shownName(const Side& side, size_t row) const
{
    size_t name = 0;
    while (name < shownNames_.size() && side.shown[name][row] == 0)
        ++name;
    return name;
}

// A row that only one report has.
Change GroupDiff::changeOf(Change::Kind kind, const Side& side, size_t row, const Row& values) const
{
    Change change{
        kind, std::string(side.rows->group != nullptr ? side.rows->group->element : side.rows->element), {}, 0, 0, {}};
    const size_t name = shownName(side, row);
    if (name < shownNames_.size())
        change.key = valuesOf(comparison_, shownNames_[name], values);
    const bool isUnique = name < shownNames_.size() ? side.isShownUnique[name][row] : side.count() == 1;
    if (!isUnique)
        (kind == Change::ADDED ? change.newRow : change.oldRow) = row + 1;
    return change;
}

// A row that both have: the name that the old one has, when the new one has such a name too.
Change GroupDiff::changeOf(size_t old, size_t now, const Row& before) const
{
    Change change = changeOf(Change::CHANGED, sides_[0], old, before);
    const size_t name = shownName(sides_[0], old);
    const bool isNamed = name == shownName(sides_[1], now);
    if (!isNamed)
        change.key.clear();
    const bool isUnique =
        isNamed && (name < shownNames_.size() ? sides_[0].isShownUnique[name][old] && sides_[1].isShownUnique[name][now]
                                              : sides_[0].count() == 1 && sides_[1].count() == 1);
    change.oldRow = isUnique ? 0 : old + 1;
    change.newRow = isUnique ? 0 : now + 1;
    return change;
}

// A row of the old report and its partner in the new one, if it has one.
void GroupDiff::tellOld(size_t old, size_t now, const Found& found) const
{
    Row before = sides_[0].row(old);
    if (now == NO_ROW) {
        Change change = changeOf(Change::REMOVED, sides_[0], old, before);
        change.values = valuesRemoved(comparison_, std::move(before));
        found(change);
        return;
    }
    Change change = changeOf(old, now, before);
    change.values = valuesChanged(comparison_, std::move(before), sides_[1].row(now));
    if (!change.values.empty())
        found(change);
}

void GroupDiff::tellNew(size_t now, const Found& found) const
{
    Row row = sides_[1].row(now);
    Change change = changeOf(Change::ADDED, sides_[1], now, row);
    change.values = valuesAdded(comparison_, std::move(row));
    found(change);
}

void GroupDiff::run(const Found& found)
{
    size_t firstKey = 0;
    const std::vector<Name> pairing = pairingNames(comparison_, firstKey);
    shownNames_ = shownNames(comparison_);
    for (Side& side : sides_)
        mark(side, pairing);
    const std::vector<size_t> partners = pairRows(sides_[0].marks, sides_[1].marks, firstKey);
    std::vector<bool> isPaired(sides_[1].count(), false);
    for (size_t old = 0; old < partners.size(); ++old) {
        tellOld(old, partners[old], found);
        if (partners[old] != NO_ROW)
            isPaired[partners[old]] = true;
    }
    for (size_t now = 0; now < isPaired.size(); ++now)
        if (!isPaired[now])
            tellNew(now, found);
}

// Names of the groups of both reports: those of the catalog in its order, then the others.
std::vector<std::string> groupNames(const DiffSide& old, const DiffSide& now)
{
    std::vector<std::string> names, others;
    for (const Group& group : catalog())
        if (old.groups().contains(group.element) || now.groups().contains(group.element))
            names.push_back(group.element);
    for (const DiffSide* side : {&old, &now})
        for (const auto& [name, rows] : side->groups())
            if (rows.group == nullptr)
                others.push_back(name);
    std::sort(others.begin(), others.end());
    others.erase(std::unique(others.begin(), others.end()), others.end());
    names.insert(names.end(), others.begin(), others.end());
    return names;
}

const DiffSide::Rows* find(const DiffSide& side, const std::string& name)
{
    const auto found = side.groups().find(name);
    return found != side.groups().end() ? &found->second : nullptr;
}
} // namespace

DiffSide::DiffSide() : store_(std::make_unique<RowStore>()) {}
DiffSide::~DiffSide() = default;

void DiffSide::group(const GroupRows& group, uint64_t)
{
    auto found = groups_.find(group.name());
    if (found == groups_.end()) {
        if (groups_.size() >= kMostGroups) {
            failure_ = "more than " + std::to_string(kMostGroups) + " groups";
            current_ = nullptr;
            return;
        }
        found = groups_.emplace(group.name(), Rows()).first;
        found->second.group = group.group;
        found->second.element = group.element;
        found->second.isFirstVersion = report::isFirstVersion(group);
        found->second.occurring.resize(group.group != nullptr ? group.group->attributes.size() : 0);
    }
    current_ = &found->second;
}

void DiffSide::row(const GroupRows&, Row& row, const RowLines&)
{
    if (rows_ >= kMostRows && failure_.empty())
        failure_ = "more than " + std::to_string(kMostRows) + " rows";
    if (current_ == nullptr || !failure_.empty())
        return;
    ++rows_;
    for (const Value& value : row.values)
        if (value.attribute != nullptr)
            current_->occurring[value.attribute->position] = true;
    current_->places.push_back(store_->add(row));
}

std::string DiffSide::failure() const
{
    return store_->error() != 0 ? std::string("no room for its rows: ") + strerror(store_->error()) : failure_;
}

bool diff(const DiffSide& old, const DiffSide& now, bool withVolatile, const std::function<void(const Change&)>& found)
{
    const Program oldProgram = programOf(old), newProgram = programOf(now);
    const bool acrossPrograms =
        oldProgram != Program::UNKNOWN && newProgram != Program::UNKNOWN && oldProgram != newProgram;
    for (const std::string& name : groupNames(old, now)) {
        const DiffSide::Rows *oldRows = find(old, name), *newRows = find(now, name);
        const bool isInBoth = oldRows != nullptr && newRows != nullptr;
        const Comparison comparison(oldRows, newRows, withVolatile,
                                    isInBoth && oldRows->isFirstVersion != newRows->isFirstVersion);
        if (isInBoth || !acrossPrograms)
            GroupDiff(old, now, comparison).run(found);
    }
    return old.store().error() == 0 && now.store().error() == 0;
}
} // namespace report
