#include "linux/processor/RealSpeed.h"

#include <cstdint>

#include "com/VexDebug.h"

namespace
{

// The part of the nominal clock beyond the hundreds, for a measured part of 0 to 99. Uneven on purpose: 40 is meant as
// 50, every 20 to 29 as 20, and 70 exactly as 66.
uint32_t nominalPart(uint32_t part)
{
    switch (part / 10) {
    case 0:
        return 0;
    case 1:
        return part <= 15 ? 0 : 20;
    case 2:
        return 20;
    case 3:
        return 33;
    case 4:
        return 50;
    case 5:
        return part <= 57 ? 50 : 60;
    case 6:
        return part <= 62 ? 60 : 66;
    case 7:
        if (part == 70)
            return 66;
        return part <= 77 ? 75 : 80;
    case 8:
        return part <= 85 ? 80 : 90;
    default:
        return part <= 91 ? 90 : 100;
    }
}

} // namespace

unsigned long RealSpeedValue(unsigned long mhz)
{
    VEX_LOG(DEBUG_PROCESSOR, VEX_LEVEL_DETAIL, "Entering RealSpeedValue(), Exit not logged.\n");
    const auto measured = static_cast<uint32_t>(mhz);
    // Two clocks that the rule below would miss: 1.5 times 50, and 2.5 times 75.
    if (measured >= 71 && measured <= 79)
        return 75;
    if (measured >= 186 && measured <= 189)
        return 188;
    const uint32_t part = measured % 100;
    return measured - part + nominalPart(part);
}
