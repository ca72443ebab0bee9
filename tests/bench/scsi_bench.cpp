// SCSI devices asked through their generic nodes: the time has to grow linearly with the number of nodes.

#include <array>
#include <benchmark/benchmark.h>
#include <scsi/sg.h>
#include <sys/socket.h>
#include <unistd.h>

#include "linux/scsiinfo.h"

static constexpr int kReplies = 5; // INQUIRY, two mode pages, the serial number page twice

// A device that has all its answers ready; returns the end to ask.
static int readyDevice(int* otherEnd)
{
    static const std::array<char, sizeof(sg_header) + 255> reply = {};
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) != 0)
        abort();
    for (int i = 0; i < kReplies; ++i)
        if (write(ends[1], reply.data(), reply.size()) < 0)
            abort();
    *otherEnd = ends[1];
    return ends[0];
}

static void BM_GenericNodes(benchmark::State& state)
{
    for (auto iteration : state) {
        (void)iteration;
        for (int64_t i = 0; i < state.range(0); ++i) {
            int device;
            const scsiinfo info(readyDevice(&device));
            benchmark::DoNotOptimize(info.totalsize());
            close(device);
        }
    }
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_GenericNodes)->Arg(32)->Arg(85)->Arg(254)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
