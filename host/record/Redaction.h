#pragma once

#include <string>

#include "report/redact/Values.h"

namespace host
{
/// Writes a redacted copy of a recording to an empty folder: a scan of it gives the redacted report of the recording.
/// What identifies is learnt from a scan of the recording. Then texts, names of files and links, targets of links, the
/// kernel's answers and the firmware's table are rewritten, with all their lengths; what only the recording has, such
/// as addresses of routes that no report tells and secrets of command lines, too. Returns false, with the reason.
bool redactRecording(const std::string& recording, const std::string& target, const std::string& key,
                     std::string& reason);

/// The firmware's table of structures with pseudonyms of the same length in place of serial numbers, asset tags and the
/// UUID; in its other strings what values know is replaced.
std::string redactedStructureTable(std::string table, const report::IdentifyingValues& values);

/// The words of an ATA drive's IDENTIFY block (ACS-4, 7.12.7), as libata writes them in hexadecimal: serial number and
/// world wide name are replaced, the checksum made anew.
std::string redactedIdentify(std::string words, const report::IdentifyingValues& values);

/// A monitor's EDID block: the serial number's text and number are replaced, the checksum made anew where it was right.
std::string redactedEdid(std::string block, const report::IdentifyingValues& values);
} // namespace host
