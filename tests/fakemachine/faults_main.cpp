// invhw_faults [--every N] [MACHINE-FOLDER...]: scans recorded machines once for every fault that is plausible for
// every intercepted call, and says how many scans there were. Without folders: all machines of the source tree.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "Faults.h"

namespace fs = std::filesystem;

static unsigned long tryMachine(const std::string& folder, size_t every, unsigned long& runs)
{
    FakeMachine machine = FakeMachine::open(folder);
    const std::vector<Fault> faults = planFaults(machine);
    unsigned long found = 0;
    const unsigned long runsBefore = runs;
    for (size_t i = 0; i < faults.size(); i += every) {
        const std::string wrong = tryFault(machine, faults[i]);
        ++runs;
        if (wrong.empty())
            continue;
        ++found;
        printf("%s: %s: %s\n", folder.c_str(), faults[i].text().c_str(), wrong.c_str());
        fflush(stdout);
    }
    printf("%s: %lu runs, %lu findings\n", fs::path(folder).filename().c_str(), runs - runsBefore, found);
    fflush(stdout);
    return found;
}

int main(int count, char** arguments)
{
    size_t every = 1;
    std::vector<std::string> folders;
    for (int i = 1; i < count; ++i) {
        if (strcmp(arguments[i], "--every") == 0 && i + 1 < count)
            every = std::max<size_t>(1, strtoul(arguments[++i], nullptr, 10));
        else
            folders.emplace_back(arguments[i]);
    }
    if (folders.empty())
        for (const fs::directory_entry& entry : fs::directory_iterator(INVHW_MACHINES))
            if (entry.is_directory())
                folders.push_back(entry.path().string());
    std::sort(folders.begin(), folders.end());
    unsigned long runs = 0;
    unsigned long found = 0;
    for (const std::string& folder : folders)
        found += tryMachine(folder, every, runs);
    printf("%lu runs on %zu machines, %lu findings\n", runs, folders.size(), found);
    return found == 0 && runs > 0 ? 0 : 1;
}
