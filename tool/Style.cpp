#include "tool/Style.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "report/Text.h"

namespace tool
{
namespace
{
std::string variable(const char* name)
{
    const char* value = getenv(name);
    return value != nullptr ? value : "";
}

// Of a terminal that does not know, what most are.
size_t terminalWidth()
{
    constexpr size_t kUsual = 80, kWidest = 10'000;
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0)
        return size.ws_col;
    const char* text = getenv("COLUMNS");
    const size_t columns = report::parseNumber<size_t>(text != nullptr ? text : "").value_or(0);
    return columns != 0 && columns <= kWidest ? columns : kUsual;
}

bool hasUtf8()
{
    return setlocale(LC_CTYPE, "") != nullptr && strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}
} // namespace

report::TerminalStyle outputStyle(bool isStandardOutput)
{
    report::TerminalStyle style;
    if (!isStandardOutput || isatty(STDOUT_FILENO) != 1)
        return style;
    style.width = terminalWidth();
    style.hasColours = variable("NO_COLOR").empty() && variable("TERM") != "dumb" && !variable("TERM").empty();
    style.isUtf8 = hasUtf8();
    return style;
}
} // namespace tool
