#include "report/diff/Pairing.h"

#include <algorithm>
#include <tuple>

namespace report
{
namespace
{
// A row with what it is sorted by: equal ones of both reports stand together, each report's in their order.
struct Entry {
    uint64_t name = 0;
    uint64_t whole = 0;
    size_t row = 0;
    bool isNew = false;
};

bool isBefore(const Entry& a, const Entry& b)
{
    return std::tie(a.name, a.whole, a.isNew, a.row) < std::tie(b.name, b.whole, b.isNew, b.row);
}

bool isSameRun(const Entry& a, const Entry& b)
{
    return a.name == b.name && a.whole == b.whole;
}

// Entries of one name: those of the old report stand first.
struct Run {
    const Entry* begin;
    const Entry* middle;
    const Entry* end;
};

template <typename Take>
void forEachRun(std::vector<Entry>& entries, const Take& take)
{
    std::sort(entries.begin(), entries.end(), isBefore);
    const Entry* const last = entries.data() + entries.size();
    for (const Entry* begin = entries.data(); begin != last;) {
        const Entry* end = std::find_if(begin, last, [begin](const Entry& other) { return !isSameRun(*begin, other); });
        const Entry* middle = std::find_if(begin, end, [](const Entry& entry) { return entry.isNew; });
        take(Run{begin, middle, end});
        begin = end;
    }
}

class Pairer
{
public:
    Pairer(const RowMarks& old, const RowMarks& now, size_t firstKey)
        : marks_{&old, &now}, firstKey_(firstKey), partners_{std::vector<size_t>(old.rows(), NO_ROW),
                                                             std::vector<size_t>(now.rows(), NO_ROW)}
    {
    }
    std::vector<size_t> run();

private:
    size_t levels() const { return marks_[0]->names.size(); }
    void pairUnique(size_t level);
    void pairInOrder(size_t level, bool areWholesEqual);
    std::vector<Entry> entriesOf(size_t level, bool withWholes) const;
    uint64_t nameInOrder(bool isNew, size_t row, size_t level) const;
    void pair(size_t old, size_t now, size_t level);

    const RowMarks* marks_[2];
    size_t firstKey_;
    std::vector<size_t> partners_[2];
    std::vector<std::vector<bool>> unique_[2]; // by level, then by row: in both reports
};

// Rows of different names that are unique are different things.
void Pairer::pair(size_t old, size_t now, size_t level)
{
    if (partners_[0][old] != NO_ROW || partners_[1][now] != NO_ROW)
        return;
    for (size_t i = 0; i < std::min(level, unique_[0].size()); ++i)
        if (unique_[0][i][old] && unique_[1][i][now] && marks_[0]->names[i][old] != marks_[1]->names[i][now])
            return;
    partners_[0][old] = now;
    partners_[1][now] = old;
}

void Pairer::pairUnique(size_t level)
{
    std::vector<Entry> entries;
    for (const bool isNew : {false, true}) {
        const std::vector<uint64_t>& names = marks_[isNew]->names[level];
        for (size_t row = 0; row < names.size(); ++row)
            if (names[row] != 0)
                entries.push_back({names[row], 0, row, isNew});
        unique_[isNew].emplace_back(names.size(), false);
    }
    forEachRun(entries, [&](const Run& run) {
        if (run.middle - run.begin > 1 || run.end - run.middle > 1)
            return;
        for (const Entry* entry = run.begin; entry != run.end; ++entry)
            unique_[entry->isNew][level][entry->row] = true;
        if (run.end - run.begin == 2)
            pair(run.begin->row, run.middle->row, level);
    });
}

// What a row is called when it is paired in order: its key, behind the last key the number 1 for a row without any.
uint64_t Pairer::nameInOrder(bool isNew, size_t row, size_t level) const
{
    const auto& names = marks_[isNew]->names;
    if (level < levels())
        return names[level][row];
    for (size_t key = firstKey_; key < levels(); ++key)
        if (names[key][row] != 0)
            return 0;
    return 1;
}

std::vector<Entry> Pairer::entriesOf(size_t level, bool withWholes) const
{
    std::vector<Entry> entries;
    for (const bool isNew : {false, true})
        for (size_t row = 0; row < marks_[isNew]->rows(); ++row)
            if (const uint64_t name = nameInOrder(isNew, row, level); name != 0 && partners_[isNew][row] == NO_ROW)
                entries.push_back({name, withWholes ? marks_[isNew]->wholes[row] : 0, row, isNew});
    return entries;
}

void Pairer::pairInOrder(size_t level, bool areWholesEqual)
{
    std::vector<Entry> entries = entriesOf(level, areWholesEqual);
    forEachRun(entries, [&](const Run& run) {
        const auto pairs = std::min(run.middle - run.begin, run.end - run.middle);
        for (ptrdiff_t i = 0; i < pairs; ++i)
            pair(run.begin[i].row, run.middle[i].row, level);
    });
}

std::vector<size_t> Pairer::run()
{
    for (size_t level = 0; level < levels(); ++level)
        pairUnique(level);
    for (size_t level = firstKey_; level <= levels(); ++level)
        for (const bool areWholesEqual : {true, false})
            pairInOrder(level, areWholesEqual);
    return std::move(partners_[0]);
}
} // namespace

std::vector<size_t> pairRows(const RowMarks& old, const RowMarks& now, size_t firstKey)
{
    return Pairer(old, now, firstKey).run();
}

std::vector<bool> onlyOnes(const std::vector<uint64_t>& hashes)
{
    std::vector<uint64_t> sorted = hashes;
    std::sort(sorted.begin(), sorted.end());
    std::vector<bool> only;
    only.reserve(hashes.size());
    for (const uint64_t hash : hashes) {
        const auto [begin, end] = std::equal_range(sorted.begin(), sorted.end(), hash);
        only.push_back(hash != 0 && end - begin == 1);
    }
    return only;
}
} // namespace report
