#include "host/memory/ErrorCounts.h"

#include <algorithm>

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
constexpr const char* kControllers = "/sys/devices/system/edac/mc/";

// "dimm0"; "rank0" below controllers that count by them.
bool isNumbered(std::string_view name, std::string_view prefix)
{
    return name.starts_with(prefix) && report::parseNumber(name.substr(prefix.size()));
}

void addTo(std::optional<uint64_t>& sum, std::optional<uint64_t> count)
{
    if (count)
        sum = sum.value_or(0) + *count;
}

// Of one controller, a label once.
std::vector<ErrorCounts> countsBelow(const Root& root, const std::string& controller)
{
    std::vector<ErrorCounts> counts;
    for (const std::string& name : root.list(controller)) {
        if (!isNumbered(name, "dimm") && !isNumbered(name, "rank"))
            continue;
        const std::string folder = controller + name + '/';
        const std::string label = root.line(folder + "dimm_label").value_or("");
        auto found =
            std::find_if(counts.begin(), counts.end(), [&](const ErrorCounts& known) { return known.label == label; });
        if (found == counts.end())
            found = counts.insert(found, {label, folder, {}, {}});
        addTo(found->corrected, root.number(folder + "dimm_ce_count"));
        addTo(found->uncorrected, root.number(folder + "dimm_ue_count"));
    }
    return counts;
}

bool names(const std::string& label, const ModulePlace& module)
{
    if (module.socket.empty())
        return false;
    return label == module.socket || (!module.bank.empty() && (label == module.bank + ' ' + module.socket ||
                                                               label == module.socket + ' ' + module.bank));
}
} // namespace

std::vector<ErrorCounts> readErrorCounts(const Root& root)
{
    std::vector<ErrorCounts> counts;
    for (const std::string& name : root.list(kControllers))
        if (isNumbered(name, "mc"))
            for (ErrorCounts& one : countsBelow(root, kControllers + name + '/'))
                counts.push_back(std::move(one));
    std::stable_sort(counts.begin(), counts.end(),
                     [](const ErrorCounts& left, const ErrorCounts& right) { return left.label < right.label; });
    std::vector<ErrorCounts> own;
    for (size_t i = 0; i < counts.size(); ++i) {
        const bool isShared = (i > 0 && counts[i - 1].label == counts[i].label) ||
                              (i + 1 < counts.size() && counts[i + 1].label == counts[i].label);
        if (!counts[i].label.empty() && !isShared)
            own.push_back(counts[i]);
    }
    return own;
}

std::vector<const ErrorCounts*> countsOfModules(std::span<const ErrorCounts> counts,
                                                std::span<const ModulePlace> modules)
{
    std::vector<const ErrorCounts*> chosen(modules.size());
    std::vector<size_t> claims(modules.size());
    for (const ErrorCounts& one : counts) {
        std::vector<size_t> named;
        for (size_t i = 0; i < modules.size(); ++i)
            if (names(one.label, modules[i]))
                named.push_back(i);
        for (const size_t i : named) {
            ++claims[i];
            chosen[i] = named.size() == 1 && claims[i] == 1 ? &one : nullptr;
        }
    }
    return chosen;
}
} // namespace host
