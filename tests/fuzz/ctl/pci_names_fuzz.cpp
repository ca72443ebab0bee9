// Any text as pci.ids: no crash; the chosen lines choose themselves, and give the names that the whole text gives. A
// recording keeps the chosen lines alone. The first six bytes say what is wanted.

#include <cstdint>
#include <cstdlib>

#include "host/pci/PciNames.h"
#include "report/Text.h"

using host::PciNames;

namespace
{
struct Wanted {
    uint32_t vendor, device, classId;
};

PciNames wanting(const Wanted& wanted)
{
    PciNames names;
    names.want(wanted.vendor, wanted.device);
    names.wantClass(wanted.classId);
    return names;
}

std::vector<std::string> chosenOf(const Wanted& wanted, const std::vector<std::string>& lines)
{
    PciNames names = wanting(wanted);
    std::vector<std::string> chosen;
    for (const std::string& line : lines)
        if (names.isWanted(line))
            chosen.push_back(line);
    return chosen;
}

std::string namesOf(const Wanted& wanted, const std::vector<std::string>& lines)
{
    PciNames names = wanting(wanted);
    names.parse(lines);
    return names.vendor(wanted.vendor) + '\n' + names.device(wanted.vendor, wanted.device) + '\n' +
           names.className(wanted.classId);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    constexpr size_t kHead = 6;
    if (size < kHead)
        return 0;
    const Wanted wanted{data[0] * 256u + data[1], data[2] * 256u + data[3], data[4] * 65536u + data[5] * 256u};
    std::vector<std::string> lines;
    std::string_view text(reinterpret_cast<const char*>(data) + kHead, size - kHead);
    std::string_view line;
    while (report::takeLine(text, line))
        lines.emplace_back(line);
    const std::vector<std::string> chosen = chosenOf(wanted, lines);
    if (chosenOf(wanted, chosen) != chosen || namesOf(wanted, chosen) != namesOf(wanted, lines))
        abort();
    return 0;
}
