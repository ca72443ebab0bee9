#pragma once

#include <cstdint>
#include <string_view>

/// Where a collector finds an attribute, in one line of Markdown; null for an attribute of a group without collector.
const char* attribSource(uint32_t groupId, uint32_t attribId);

/// The name of the attribute's id in com/VexAttribIds.h; empty for an attribute of a group without collector.
std::string_view attribIdName(uint32_t groupId, uint32_t attribId);

/// The unit of a number, empty where the name or the text says it all.
const char* attribUnit(uint32_t groupId, uint32_t attribId);

/// True when the table of sources names every attribute of the collected groups once and nothing else.
bool sourcesAreComplete();
