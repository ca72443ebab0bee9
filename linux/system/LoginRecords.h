#pragma once

#include <cstdint>
#include <optional>

/// What the scan takes from a record of the login records (utmp).
struct LoginRecord {
    int32_t seconds; // since the epoch
    char line[33];   // the record's line field, terminated
};

/// The first record that the C library's getutid finds for a key of type RUN_LVL; it is written when the system reaches
/// its run level, a little after boot. Nothing when there is no such record or no login-records file.
std::optional<LoginRecord> findRunLevelRecord();
