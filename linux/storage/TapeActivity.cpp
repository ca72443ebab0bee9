#include "linux/storage/TapeActivity.h"

#include <cstring>

#include "com/VexDebug.h"
#include "linux/text/TextStream.h"

namespace
{

// Every test but the second may cut the line and logs what it found: their order shows.
bool isTapeProcess(char* line)
{
    return getExactMatch(line, "save") == 1 || strstr(line, "save -s") != nullptr ||
           getExactMatch(line, "recover") == 1 || getExactMatch(line, "nsrclone") == 1 ||
           getExactMatch(line, "nsrstage") == 1;
}

} // namespace

int getExactMatch(char* line, const char* word)
{
    constexpr size_t kNewlineWithin = 256;
    char* rest = strstr(line, word);
    if (rest == nullptr)
        return 0;
    auto* newline = static_cast<char*>(memchr(rest, '\n', strnlen(rest, kNewlineWithin)));
    if (newline != nullptr)
        *newline = '\0';
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\n pdest=%s\n", rest);
    return strcmp(rest, word) == 0 ? 1 : 0;
}

int listsTapeProcess(TextStream& processes)
{
    char line[256];
    while (processes.readLine(line)) {
        if (isTapeProcess(line))
            return 1;
    }
    return 0;
}

int isUltrium_tape_QX9031_running()
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\ninside isUltrium_tape_QX9031_running()\n");
    TextStream processes = TextStream::runCommand("/bin/ps -ef");
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nisUltrium_tape_QX9031_running(): running ps -ef\n");
    if (processes.atEnd() || listsTapeProcess(processes) == 0)
        return 0;
    processes.close();
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL, "\nUltrium_tape_QX9031 tape robot is running\n");
    return 1;
}
