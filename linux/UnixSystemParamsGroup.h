#pragma once

#include <cstdint>

#include "com/VexGroup.h"
#include "linux/text/TextStream.h"

/// Collector of group "UNIX System Params": boot time, run level and host name.
class UnixSystemParamsGroup final : public VexGroup
{
public:
    UnixSystemParamsGroup();
    /// Null when the login records hold no run level.
    VexTable* getTable() override;
};

/// The current run level of a "previous current" line ("N 5"): its third character counted from "0", whatever it is. 0
/// for a null or empty stream and for a shorter line.
int32_t readRunLevel(TextStream& stream);
