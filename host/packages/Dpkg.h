#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/packages/Package.h"

// dpkg's database, and apt's of what it installed by itself.

namespace host
{
/// A package of dpkg's, with what only dpkg needs to know of it.
struct DpkgPackage : Package {
    bool isMultiarch = false; // may be installed for several architectures: its files are named after them
};

/// The packages that a status file (/var/lib/dpkg/status) says are installed. Left out are those that are half
/// installed, not yet configured, or removed but for their configuration.
void parseDpkgStatus(std::string_view text, const std::function<void(const DpkgPackage& package)>& take);

/// What apt installed because other packages need it (/var/lib/apt/extended_states).
class AptStates
{
public:
    /// The text outlives this.
    explicit AptStates(std::string_view text);

    /// A package for all architectures stands there with the machine's own.
    bool isAutomatic(const Package& package) const;

private:
    struct Name {
        std::string_view name, architecture;
    };
    static bool isBefore(const Name& left, const Name& right);

    std::vector<Name> automatic_; // sorted
};
} // namespace host
