// Mount tables: the time has to grow linearly with the number of entries.

#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>

#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "linux/partition/PartitionMounts.h"
#include "linux/partition/PartitionRows.h"

// The mount points are all the root folder: asking for a size costs what it costs for a real mount.
static void BM_Mounts(benchmark::State& state)
{
    std::string text;
    for (int64_t i = 0; i < state.range(0); ++i)
        text += "/dev/mapper/volume" + std::to_string(i) + " / ext3 rw 0 0\n";
    for (auto iteration : state) {
        (void)iteration;
        VexTable table(GROUP_PARTITION, 1);
        beginPartitionRows(&table);
        FILE* mountTable = fmemopen(text.data(), text.size(), "r");
        addMountEntries(mountTable);
        fclose(mountTable);
        benchmark::DoNotOptimize(table.getNext());
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Mounts)->Arg(1000)->Arg(3000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
