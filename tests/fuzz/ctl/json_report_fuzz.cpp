// Any bytes as a JSON report: no crash; a problem is told in one line; and what is taken whole is written so that it
// reads the same again, in both forms.

#include <cstdint>

#include "tests/fuzz/ctl/ReportProperty.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkReport("{" + text);
    return 0;
}
