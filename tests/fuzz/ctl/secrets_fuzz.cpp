// Any text as a command line, as mount options and as assignments: no crash; a secret behind it is hidden whatever
// stands before it; assignments have names, and are no more than the lines.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "host/text/Assignments.h"
#include "host/text/Secrets.h"

static constexpr std::string_view kSecret = "Zq9";

static void expectHidden(const std::string& masked)
{
    if (masked.find(kSecret) != std::string::npos)
        abort();
}

static void checkAssignments(std::string_view text)
{
    const auto values = host::parseAssignments(text);
    if (values.size() > static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + 1)
        abort();
    for (const auto& [name, value] : values)
        if (name.empty() || name.find('=') != std::string::npos || value.size() > text.size())
            abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    checkAssignments(text);
    if (text.find(kSecret) != std::string::npos)
        return 0;
    const std::string secret(kSecret);
    expectHidden(host::maskCommandLine(text + " password=" + secret));
    expectHidden(host::maskCommandLine(text + " --token \"a " + secret + '"'));
    expectHidden(host::maskCommandLine(text + " x=http://me:" + secret + "@host/"));
    expectHidden(host::maskOptions(text + ",password=" + secret));
    expectHidden(host::maskUri(text + " http://me:" + secret + "@host/"));
    return 0;
}
