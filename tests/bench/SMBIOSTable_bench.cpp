// Parsing of structure tables: the time per structure is the same for small and for large tables.

#include <benchmark/benchmark.h>

#include "SMBIOS/EntryPoint.h"
#include "SMBIOS/SMBIOSTable.h"
#include "tests/unit/SMBIOS/MappedTable.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

// Structures as a server has them, most of which are skipped.
static TableBytes tableOf(int structures)
{
    TableBytes table;
    table.add(Structure(0, 24).string(4, "Vendor").string(5, "1.07").string(8, "07/15/2004"));
    table.add(Structure(2, 8).string(4, "Maker").string(5, "Board"));
    const Structure cache = Structure(7, 19).string(4, "Internal L1 Cache");
    const Structure oem = Structure(221, 26).string(4, "Reference code").string(5, "1.2.3");
    while (table.count() < structures)
        table.add(cache).add(oem);
    return table;
}

static void parseTable(benchmark::State& state)
{
    const TableBytes bytes = tableOf(static_cast<int>(state.range(0)));
    SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, bytes.count());
    for (auto _ : state) {
        table.parseData();
        benchmark::DoNotOptimize(table.getTable0());
    }
    state.SetItemsProcessed(state.iterations() * bytes.count());
}
BENCHMARK(parseTable)->Arg(1000)->Arg(60000);

// Every structure is kept or would be: processors and memory devices up to their limits, then the skipping of the rest.
static void parseMemoryDevices(benchmark::State& state)
{
    TableBytes bytes;
    bytes.add(Structure(17, 27).string(16, "DIMM 1").string(17, "BANK 1"), static_cast<int>(state.range(0)));
    SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, bytes.count());
    for (auto _ : state) {
        table.parseData();
        benchmark::DoNotOptimize(table.getTable17(0));
    }
    state.SetItemsProcessed(state.iterations() * bytes.count());
}
BENCHMARK(parseMemoryDevices)->Arg(100)->Arg(1000);

// The direct search for the System Information structure behind all others.
static void findEntry(benchmark::State& state)
{
    TableBytes bytes = tableOf(static_cast<int>(state.range(0)));
    bytes.add(Structure(1, 25).string(4, "Maker").string(5, "Model"));
    const MappedTable mapped(bytes.bytes().data(), bytes.bytes().size(), 16);
    const smbios_table_entry_point entryPoint = entryPointOf(bytes.bytes().size(), static_cast<size_t>(bytes.count()));
    for (auto _ : state) {
        smbios_sysinfo_table_entry entry;
        const int count = find_entry(mapped.table(), &entryPoint, &entry);
        benchmark::DoNotOptimize(entry.header);
        free_entry(&entry, count);
    }
    state.SetItemsProcessed(state.iterations() * bytes.count());
}
BENCHMARK(findEntry)->Arg(100)->Arg(1400);
