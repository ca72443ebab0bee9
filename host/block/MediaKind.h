#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host
{
class Root;

/// What a drive is, as a code of Storage's Type: by its kernel name ("sda", "sr0", "st0", "fd0", "mmcblk0"), of optical
/// drives by what they can read and write, of tapes by their model.
uint32_t mediaKind(const Root& root, const std::string& name, std::string_view model);

/// The best medium that a drive of /proc/sys/dev/cdrom/info takes, a code of Storage's Type; that of a CD-ROM where it
/// is not listed.
uint32_t opticalKind(std::string_view info, std::string_view drive);

/// The maker of an ATA disk, from letters that its models begin with, else the model's first word; empty for a model of
/// one word.
std::string makerOfModel(std::string_view model);

/// The maker of an SD or MMC card by its number ("0x000003"); empty when it is not known.
std::string makerOfCard(std::string_view number);
} // namespace host
