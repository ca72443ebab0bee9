#pragma once

#include <cstdint>

#include "com/VexTable.h"

// The provider: the whole outward interface of the collection library. Call vexInit, then the others in any order, then
// vexTerm once. Single-threaded.

/// Sets the debug masks (category: VexDebugMask bits; level: VEX_LEVEL bits), opens the debug log (null or empty name:
/// the default one), reads the firmware's structure table and makes the collectors.
void vexInit(uint32_t category, uint32_t level, const char* logName);

/// The ids of the groups that can be collected, in report order, ended by VEX_END. The caller gives the array back with
/// vexFreeSupportedTables.
uint32_t* vexGetSupportedTables();

/// Collects one group afresh. The caller gives the table back with vexFreeTable. Null for an id without a collector and
/// for a group that has nothing to report.
VexTable* vexGetTable(uint32_t groupId);

/// Deletes a table with its rows and values; null is allowed.
void vexFreeTable(VexTable* table);

/// Deletes a list of ids; null is allowed.
void vexFreeSupportedTables(uint32_t* list);

/// Closes the log, clears the masks, deletes the collectors and releases the structure table.
void vexTerm();
