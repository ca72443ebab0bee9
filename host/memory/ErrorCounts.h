#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host
{
class Root;

/// How often the kernel saw errors of a memory module (EDAC).
struct ErrorCounts {
    std::string label; // of its socket, as the kernel or who told it names it
    std::string folder;
    std::optional<uint64_t> corrected, uncorrected;
};

/// The counts of all modules that have a label of their own. Ranks of a module are counted together; a label that
/// several memory controllers have says nothing and is left out.
std::vector<ErrorCounts> readErrorCounts(const Root& root);

/// Where a module sits, as the firmware says it.
struct ModulePlace {
    std::string socket, bank;
};

/// The counts of each module, null where none are known to be its own: of those that the label names by socket, or by
/// both bank and socket, one alone.
std::vector<const ErrorCounts*> countsOfModules(std::span<const ErrorCounts> counts,
                                                std::span<const ModulePlace> modules);
} // namespace host
