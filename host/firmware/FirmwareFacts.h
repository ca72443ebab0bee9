#pragma once

#include "host/Collection.h"
#include "host/Fact.h"
#include "host/firmware/StructureTable.h"

namespace host
{
/// What the firmware says of the machine: the kernel's copy of its structure table where that may be read, else what
/// the kernel shows of it to every user (/sys/class/dmi/id).
class FirmwareFacts
{
public:
    /// A table that ends within a structure is noted.
    FirmwareFacts(const Root& root, Notes& notes);

    const StructureTable& table() const { return table_; }

    /// The path of the table, as the source of what is read from it.
    static constexpr std::string_view kTablePath = "/sys/firmware/dmi/tables/DMI";

    /// A string of the first structure of a type; else the kernel's file of that name below /sys/class/dmi/id, where
    /// name is not null.
    MaybeFact text(StructureType type, size_t offset, const char* name) const;

    /// The release date of the firmware as YYYY-MM-DD.
    MaybeFact releaseDate() const;

    /// Chassis type without its lock bit (DSP0134, 7.4.1).
    std::optional<uint8_t> chassisType(std::string& source) const;

    /// The system's UUID as the 32 upper-case hexadecimal digits of its bytes in the table; absent as systemUuid() is.
    MaybeFact rawUuid() const;

    /// The system's UUID as RFC 4122 text in lower case; absent where the firmware has none (all zeros or ones).
    MaybeFact systemUuid() const;

private:
    const Root& root_;
    StructureTable table_;
};

/// A date of the firmware ("mm/dd/yyyy", or with a year of two digits, of 19yy) as YYYY-MM-DD; empty when it is none.
std::string isoDate(std::string_view date);
} // namespace host
