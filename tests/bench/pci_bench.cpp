#include <benchmark/benchmark.h>
#include <cstdio>
#include <string>

#include "com/Owned.h"
#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "linux/PCIDeviceGroup.h"
#include "linux/pci/PciNames.h"
#include "linux/pci/PciTables.h"
#include "linux/text/TextStream.h"

// Naming as many devices as a listing may hold, known ones and unknown ones in turn.
static void lookUpDevices(benchmark::State& state)
{
    const auto count = static_cast<size_t>(state.range(0));
    for (auto _ : state) {
        for (size_t i = 0; i < count; ++i) {
            const PciDevice& device = PciDevTable[i % PciDevTableCount];
            const OwnedText name(lookupPCI(device.vendorId, device.deviceId + i % 2, "Bridge"));
            benchmark::DoNotOptimize(name.get());
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(lookUpDevices)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000);

// A listing of devices that the kernel could not name, from text to table.
static void readUnnamedDevices(benchmark::State& state)
{
    std::string listing = "PCI devices found:\n";
    for (int i = 0; i < state.range(0); ++i) {
        const PciDevice& device = PciDevTable[static_cast<size_t>(i) % PciDevTableCount];
        char entry[200];
        snprintf(entry, sizeof entry,
                 "  Bus %2d, device %3d, function  0:\n    Bridge: Unknown vendor Unknown device (rev 1).\n"
                 "      Vendor id=%04x. Device id=%04x.\n      Medium devsel.  IRQ 11.\n",
                 i / 32, i % 32, static_cast<unsigned>(device.vendorId), static_cast<unsigned>(device.deviceId));
        listing += entry;
    }
    for (auto _ : state) {
        TextStream stream(fmemopen(listing.data(), listing.size(), "r"));
        VexTable table(GROUP_PCI_DEVICE, 1);
        addProcPciDevices(stream, &table);
        benchmark::DoNotOptimize(&table);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(readUnnamedDevices)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000);
