// Registers that x86 processors tell themselves by (Intel SDM volume 2, CPUID).

#include <charconv>

#include <nlohmann/json.hpp>

#include "host/kernel/Questions.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>

namespace host
{
static constexpr uint32_t kFirstHypervisorLeaf = 0x40000000;
static constexpr uint32_t kLastHypervisorLeaf = 0x400000FF;
static constexpr uint32_t kHasHypervisor = 1u << 31; // ECX of leaf 1

// Leaves of a hypervisor are counted apart: the processor's own highest leaf says nothing of them.
static bool hasLeaf(uint32_t leaf)
{
    if (leaf < kFirstHypervisorLeaf || leaf > kLastHypervisorLeaf)
        return static_cast<uint32_t>(__get_cpuid_max(leaf & 0x80000000, nullptr)) >= leaf;
    uint32_t eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0 || (ecx & kHasHypervisor) == 0)
        return false;
    __cpuid(kFirstHypervisorLeaf, eax, ebx, ecx, edx);
    return leaf == kFirstHypervisorLeaf || leaf <= eax;
}

nlohmann::json askCpuid(const std::string& leaf)
{
    uint32_t number = 0;
    uint32_t subleaf = 0;
    const char* const end = leaf.data() + leaf.size();
    const auto [colon, error] = std::from_chars(leaf.data(), end, number, 16);
    if (error != std::errc() || colon == end || std::from_chars(colon + 1, end, subleaf, 16).ec != std::errc())
        return nullptr;
    if (!hasLeaf(number))
        return nullptr;
    uint32_t eax = 0, ebx = 0, ecx = 0, edx = 0;
    __cpuid_count(number, subleaf, eax, ebx, ecx, edx);
    return {eax, ebx, ecx, edx};
}
} // namespace host
#else
namespace host
{
nlohmann::json askCpuid(const std::string&)
{
    return nullptr;
}
} // namespace host
#endif
