// invhwctl_faults [--every N] [GROUP...]: scans a small machine's copy and this machine, one group at a time, once for
// every fault that is plausible for every system call, and says how many scans there were. Without groups: all of them.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/ctl/Faults.h"
#include "tests/ctl/SmallMachine.h"

namespace
{
struct Tally {
    size_t runs = 0;
    size_t found = 0;
};

void tryGroup(const std::string& root, const std::string& group, size_t every, Tally& tally)
{
    FaultyScan scan(root, group);
    const std::vector<CallFault> faults = scan.plan();
    for (size_t i = 0; i < faults.size(); i += every) {
        ++tally.runs;
        const std::string wrong = scan.attempt(faults[i]);
        if (wrong.empty())
            continue;
        ++tally.found;
        printf("%s, %s: %s: %s\n", root.empty() ? "live" : "copy", group.c_str(), faults[i].text().c_str(),
               wrong.c_str());
        fflush(stdout);
    }
}
} // namespace

int main(int count, char** arguments)
{
    size_t every = 1;
    std::vector<std::string> wanted;
    for (int i = 1; i < count; ++i) {
        if (strcmp(arguments[i], "--every") == 0 && i + 1 < count)
            every = std::max<size_t>(1, strtoul(arguments[++i], nullptr, 10));
        else
            wanted.emplace_back(arguments[i]);
    }
    if (!CallWatch::isPossible()) {
        fprintf(stderr, "no process can be watched here (seccomp)\n");
        return 2;
    }
    const Tree tree;
    addSmallMachine(tree);
    Tally all;
    for (const std::string& root : {tree.folder(), std::string()}) {
        for (const std::string& group : wanted.empty() ? groupsOfScan(root) : wanted) {
            Tally tally;
            tryGroup(root, group, every, tally);
            printf("%s, %s: %zu runs, %zu findings\n", root.empty() ? "live" : "copy", group.c_str(), tally.runs,
                   tally.found);
            fflush(stdout);
            all.runs += tally.runs;
            all.found += tally.found;
        }
    }
    printf("%zu runs of invhwctl scan, %zu findings\n", all.runs, all.found);
    return all.found == 0 && all.runs > 0 ? 0 : 1;
}
