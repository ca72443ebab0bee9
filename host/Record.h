#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace host
{
/// What of the live machine is recorded.
struct RecordOptions {
    std::vector<uint32_t> groups; // ids; all when empty
    double deadlineSeconds = 120; // for the whole recording

    std::string redactionKey; // of the pseudonyms of a redacted recording; empty for one of what is

    /// Called now and then with the number of groups that are ready, and of all.
    std::function<void(size_t ready, size_t all)> onProgress;
};

/// Writes a recording of this machine to a folder, which must not be there yet or be empty: what the collectors of the
/// groups ask and what they are answered. A scan of that folder gives, anywhere and for every user who may read it, the
/// report that such a scan gave here and now. The groups are collected one after another, in one process of its own,
/// so that all see one machine. The recording is whole or not there at all. Returns false, with the reason, when it
/// could not be made.
bool record(const RecordOptions& options, const std::string& folder, std::string& reason);
} // namespace host
