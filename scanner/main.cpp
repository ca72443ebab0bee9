// One scan: every group that can be collected, in the provider's order, as one XML document on standard output.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "linux/InvVexProv.h"
#include "scanner/XmlReport.h"

// A scanner started with closed standard streams must not take the log or a device for one of them.
static void occupyStandardStreams()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (fcntl(descriptor, F_GETFD) == -1 && open("/dev/null", O_RDWR) == -1)
            return;
}

// A reader that goes away ends the report, not the scan. A handler rather than SIG_IGN: commands that the scan starts
// get the default action back.
static void survivePipe()
{
    struct sigaction action {
    };
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    sigaction(SIGPIPE, &action, nullptr);
}

// The shipped code-set tables stand beside the program ("../generic/codeset" from its folder) and are looked for below
// BINDIR; a setting of the user wins.
static void locateCodeSetTables()
{
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length <= 0)
        return;
    path[length] = '\0';
    char* const lastSlash = strrchr(path, '/');
    if (lastSlash == nullptr)
        return;
    *lastSlash = '\0';
    setenv("BINDIR", path, 0);
}

int main()
{
    occupyStandardStreams();
    survivePipe();
    locateCodeSetTables();

    vexInit(0xFFFFFFFF, 7, nullptr);
    uint32_t* const groups = vexGetSupportedTables();
    printf("\n<serviceDataList>");
    for (const uint32_t* group = groups; *group != VEX_END; ++group) {
        VexTable* table = vexGetTable(*group);
        if (table != nullptr) {
            printXML(table);
            vexFreeTable(table);
        }
    }
    vexFreeSupportedTables(groups);
    vexTerm();
    printf("\n\n</serviceDataList>");
    return 0;
}
