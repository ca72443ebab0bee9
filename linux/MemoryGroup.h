#pragma once

#include <cstdint>

#include "com/VexGroup.h"
#include "com/VexTableRow.h"
#include "linux/text/TextStream.h"

/// Collector of group "Memory": physical memory, swap space, pages and memory slots.
class MemoryGroup final : public VexGroup
{
public:
    MemoryGroup();
    VexTable* getTable() override;
};

/// Amounts in kilobytes; swap space alone, without physical memory.
struct MemoryAmounts {
    uint32_t total = 0;
    uint32_t free = 0;
    uint32_t swapTotal = 0;
    uint32_t swapFree = 0;
};

/// What the firmware says about the board's memory slots; 0 not known.
struct MemorySlots {
    uint32_t maxModuleSizeMB = 0;
    uint32_t count = 0;
};

/// Reads the amounts, which the caller passes as 0, from /proc/meminfo. 0 when there is no file or its total is no
/// news: the amounts then hold nothing of use. Otherwise 1; an amount whose line is missing stays 0.
int getFromMeminfo(uint32_t* total, uint32_t* free, uint32_t* swapTotal, uint32_t* swapFree);

/// The same from a stream of that file's text, which may be null.
bool readMeminfo(TextStream& stream, MemoryAmounts* amounts);

/// The number behind the label of a /proc/meminfo line; 0 when there is none. Breaks the line into tokens.
int32_t parseVal(char* line);

/// The group's row, owned by the caller. pageSize is in bytes and not 0.
VexTableRow* newMemoryRow(const MemoryAmounts& amounts, uint32_t pageSize, const MemorySlots& slots);
