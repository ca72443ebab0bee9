#include "report/catalog/Groups.h"
#include "report/catalog/Table.h"

namespace report
{
namespace
{
// clang-format off
constexpr AttributeDef kAttributes[] = {
    known (MEMORY_TOTAL_PHYSICAL, PLAIN, "kB", "`/proc/meminfo`, \"MemTotal\""),
    known (MEMORY_FREE_PHYSICAL, VOLATILE, "kB", "`/proc/meminfo`, \"MemFree\""),
    known (MEMORY_TOTAL_VIRTUAL, PLAIN, "kB", "`/proc/meminfo`, \"SwapTotal\""),
    known (MEMORY_FREE_VIRTUAL, VOLATILE, "kB", "`/proc/meminfo`, \"SwapFree\""),
    known (MEMORY_TOTAL_PAGE, PLAIN, "", "Total Physical divided by the page size: kB by bytes, as invhw has it"),
    known (MEMORY_FREE_PAGE, VOLATILE, "", "Free Physical divided by the page size"),
    known (MEMORY_PAGE_SIZE, PLAIN, "bytes", "`sysconf`"),
    known (MEMORY_MAX_MEMORY_MB, PLAIN, "MB", "structure type 16, maximum capacity, summed over the arrays of system memory"),
    known (MEMORY_NUM_SLOTS, PLAIN, "", "structure type 16, memory devices, summed over the arrays of system memory"),
    number(MEMORY_AVAILABLE, "Available", "kB", VOLATILE, "`/proc/meminfo`, \"MemAvailable\""),
    number(MEMORY_SWAP_TOTAL, "Swap Total", "kB", PLAIN, "`/proc/meminfo`, \"SwapTotal\""),
    number(MEMORY_SWAP_FREE, "Swap Free", "kB", VOLATILE, "`/proc/meminfo`, \"SwapFree\""),
    number(MEMORY_INSTALLED_MB, "Installed MB", "MB", PLAIN, "structure type 17, sizes of all modules"),
};
// clang-format on
static_assert(isWellFormed(kAttributes), "Memory: bad row");
} // namespace

constexpr GroupDef MEMORY_GROUP = {
    .id = GROUP_MEMORY,
    .name = nullptr,
    .attributes = kAttributes,
    .keys = {},
    .pairing = {},
    .version = 2,
    .source = "`/proc/meminfo`, structure types 16 and 17",
};
} // namespace report
