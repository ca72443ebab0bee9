#pragma once

#include <string>

#include "host/Scan.h"
#include "tool/CommandLine.h"

// What the subcommands share that write the report of a scan.

namespace tool
{
namespace scanoption
{
inline constexpr const char* kFormats[] = {"xml", "json"};

inline constexpr OptionDef kGroup = {
    "--group", "-g", "NAME", "only this group, by its name (\"IP Address\") or its element's (IPAddress); repeatable",
    true};
inline constexpr OptionDef kFormat = {"--format", "-f",    "FORM", "form of the report: xml (the default) or json",
                                      false,      kFormats};
inline constexpr OptionDef kOutput = {
    "--output", "-o", "FILE", "write the report to FILE, whole or not at all, mode 0600; \"-\" is standard output"};
inline constexpr OptionDef kSources = {"--sources", nullptr, nullptr,
                                       "say of every value which file or call it came from"};
} // namespace scanoption

/// The values of --deadline (seconds as they are without it) and --group. Returns false, with the reason, when they are
/// none.
bool readDeadline(const Arguments& arguments, double& seconds, std::string& reason);
bool readGroups(const Arguments& arguments, std::vector<uint32_t>& groups, std::string& reason);

/// Scans, and writes the report as --format and --sources say to a file or, "-", to standard output. Returns the exit
/// status.
int scanTo(const char* command, const std::string& path, const Arguments& arguments, host::ScanOptions& options);
} // namespace tool
