// Any text of /proc/cpuinfo: no crash, every text ends inside its buffer, and both readers count alike.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "linux/LParGroup.h"
#include "linux/processor/ProcessorFacts.h"

static constexpr int MAX_ROWS = 4; // all rows are alike

static bool ends(const char (&text)[kCpuInfoLineSize])
{
    return memchr(text, '\0', sizeof text) != nullptr;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    TextStream stream(fmemopen(text.data(), text.size(), "r"));
    CpuInfo cpu = readCpuInfo(stream);
    TextStream again(fmemopen(text.data(), text.size(), "r"));
    const CpuTopology topology = readCpuTopology(again);
    if (!ends(cpu.vendor) || !ends(cpu.modelName) || !ends(cpu.mhz) || topology.processorLines != cpu.processorLines)
        abort();
    nodeCapacity(1, topology, 0);

    ProcessorFacts facts = mergeFacts(std::move(cpu), FirmwareProcessor());
    facts.family = decideFamily(facts.cpu, 0);
    const OwnedText id = processorId(facts);
    if (id == nullptr || strlen(id.get()) != 32)
        abort();
    const int count = countProcessors(1, facts.cpu, facts.features, 0);
    for (int index = 1; index <= count && index <= MAX_ROWS; ++index)
        std::unique_ptr<VexTableRow>(newProcessorRow(static_cast<uint32_t>(index), id.get(), facts));
    return 0;
}
