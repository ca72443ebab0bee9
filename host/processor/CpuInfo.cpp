#include "host/processor/CpuInfo.h"

#include "report/Text.h"

namespace host
{
namespace
{
// Names that the kernel gives to the bits, by bit; bit 10, 20 and 30 have none in this register or are another's.
constexpr const char* kFeatures[32] = {
    "fpu",  "vme",  "de",   "pse", "tsc",  "msr", "pae",   "mce", "cx8",     "apic",  nullptr,
    "sep",  "mtrr", "pge",  "mca", "cmov", "pat", "pse36", "pn",  "clflush", nullptr, "dts",
    "acpi", "mmx",  "fxsr", "sse", "sse2", "ss",  "ht",    "tm",  "ia64",    "pbe",
};

struct Implementer {
    uint32_t number;
    const char* name;
};
constexpr Implementer kImplementers[] = {
    {0x41, "ARM"},      {0x42, "Broadcom"}, {0x43, "Cavium"},  {0x46, "Fujitsu"},  {0x48, "HiSilicon"},
    {0x4D, "Motorola"}, {0x4E, "NVIDIA"},   {0x50, "APM"},     {0x51, "Qualcomm"}, {0x53, "Samsung"},
    {0x56, "Marvell"},  {0x61, "Apple"},    {0x66, "Faraday"}, {0x69, "Intel"},    {0x6D, "Microsoft"},
    {0x70, "Phytium"},  {0xC0, "Ampere"},
};
} // namespace

void forEachProcessor(std::string_view text, const std::function<void(uint32_t number, const CpuInfo& lines)>& take)
{
    CpuInfo lines;
    std::optional<uint32_t> current;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const auto [key, value] = report::keyValue(line, ':');
        const auto number = key == "processor" ? report::parseNumber<uint32_t>(value) : std::nullopt;
        if (number && current) {
            take(*current, lines);
            lines.clear();
        }
        if (number)
            current = number;
        if (!key.empty() && !value.empty())
            lines.emplace(key, value);
    }
    if (current || !lines.empty())
        take(current.value_or(0), lines);
}

std::optional<uint32_t> featureBits(std::string_view flags)
{
    if (flags.empty())
        return std::nullopt;
    uint32_t bits = 0;
    for (const std::string_view word : report::words(flags))
        for (uint32_t bit = 0; bit < 32; ++bit)
            if (kFeatures[bit] != nullptr && word == kFeatures[bit])
                bits |= 1U << bit;
    return bits;
}

const char* implementerName(std::string_view number)
{
    const auto value = number.starts_with("0x") ? report::parseNumber<uint32_t>(number.substr(2), 16) : std::nullopt;
    for (const Implementer& implementer : kImplementers)
        if (implementer.number == value)
            return implementer.name;
    return nullptr;
}
} // namespace host
