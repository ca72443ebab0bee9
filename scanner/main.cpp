// One scan: every group that can be collected, in the provider's order, as one XML document on standard output.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "linux/InvVexProv.h"
#include "scanner/XmlReport.h"

namespace
{

// A scanner started with closed standard streams must not take the log or a device for one of them. Without a null
// device the reading end of a pipe that nobody writes to stands in: it reads as ended, and what is written to it fails.
void occupyStandardStreams()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1 || open("/dev/null", O_RDWR) != -1)
            continue;
        int ends[2]; // the lower one is the stream; the other may be the next, which then takes its turn
        if (pipe(ends) == -1)
            return;
        close(ends[1]);
    }
}

// A reader that goes away ends the report, and a limit on the size of files ends the file, not the scan. A handler
// rather than SIG_IGN: commands that the scan starts get the default action back.
void surviveSignals()
{
    struct sigaction action {
    };
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    sigaction(SIGPIPE, &action, nullptr);
    sigaction(SIGXFSZ, &action, nullptr);
}

// The shipped code-set tables stand beside the program ("../generic/codeset" from its folder) and are looked for below
// BINDIR, their other names ("aliases") below KSTDIR. A setting of the user wins: KSTDIR comes before BINDIR and is
// therefore left alone where either of them is set.
void locateCodeSetTables()
{
    char folder[4096];
    const ssize_t length = readlink("/proc/self/exe", folder, sizeof folder - 1);
    if (length <= 0)
        return;
    folder[length] = '\0';
    char* const lastSlash = strrchr(folder, '/');
    if (lastSlash == nullptr)
        return;
    *lastSlash = '\0';
    char tables[sizeof folder + sizeof "/../generic"];
    snprintf(tables, sizeof tables, "%s/../generic", folder);
    if (getenv("BINDIR") == nullptr)
        setenv("KSTDIR", tables, 0);
    setenv("BINDIR", folder, 0);
}

} // namespace

int main()
{
    occupyStandardStreams();
    surviveSignals();
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
