#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/Report.h"
#include "report/Summary.h"
#include "report/catalog/AttributeIds.h"

// The sections of a summary, each made in the file of its subject, and what they share. A report
// that they are made of holds the first rows of its groups, which may be all.

namespace report::summary
{
SummarySection machineSection(const Report& report);
SummarySection firmwareSection(const Report& report);
SummarySection processorSection(const Report& report);
SummarySection memorySection(const Report& report);
SummarySection diskSection(const Report& report);
SummarySection networkSection(const Report& report);
SummarySection deviceSection(const Report& report);
SummarySection unreadSection(const Report& report);

/// Lines of one section; what is more is counted.
constexpr size_t kMostLines = 200;

/// Of the machine: what its network calls it, its maker and model, its operating system; empty where the report does
/// not tell.
std::string machineName(const Report& report);
std::string modelName(const Report& report);
std::string systemName(const Report& report);

/// The groups that the sections look at.
bool isLookedAt(const Group& group);

/// The rows of a group, none when it has none.
const std::vector<Row>& rowsOf(const Report& report, uint32_t group);
/// Its first row; an empty one when it has none.
const Row& firstRow(const Report& report, uint32_t group);

/// The text of a value, trimmed, of a date-time RFC 3339; empty where there is none.
std::string textOf(const Row& row, uint32_t attribute);
/// The same of what a maker wrote: the first of several texts that is not one that stands where nobody filled anything
/// in ("To be filled by O.E.M.").
std::string makersText(const Row& row, std::initializer_list<uint32_t> attributes);
std::optional<uint64_t> numberOf(const Row& row, uint32_t attribute);
/// The number in this unit; empty where there is none or it is 0.
std::string numberText(const Row& row, uint32_t attribute, std::string_view unit = "");

/// "931.5 GiB", three digits and more; exact below 1000.
std::string sizeText(uint64_t bytes);
/// Size of a value that counts so many bytes; empty where there is none.
std::string sizeText(const Row& row, uint32_t attribute, uint64_t unit = 1);

/// "45% of 931.5 GiB", with its share; the fuller the worse the news.
SummaryCell usedOf(uint64_t bytes, uint64_t freeBytes);

/// Texts that are not empty, each once, with a separator between them.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// Adds a fact that has a text.
void addFact(SummarySection& section, const char* label, std::string text, Tone tone = Tone::PLAIN);
} // namespace report::summary
