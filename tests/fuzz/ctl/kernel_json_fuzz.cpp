// Any text as invhw-kernel.json: no crash; what is taken reads the same after it was written; and its answers are
// values within their bounds, whatever their form.

#include <cstdint>
#include <cstdlib>

#include "host/RecordedKernel.h"

using namespace host;

static void askAll(const Kernel& kernel)
{
    kernel.clock();
    kernel.userId();
    kernel.pageSize();
    kernel.names();
    for (const Link& link : kernel.links())
        kernel.linkDriver(link.name);
    for (const Address& address : kernel.addresses())
        if (address.prefixLength > 128)
            abort();
    for (const Route& route : kernel.routes())
        if (route.prefixLength > 128)
            abort();
    kernel.fileSystemSize("/");
    kernel.blockContent("/dev/sda");
    kernel.cpuid(1, 0);
    kernel.birthTime("/");
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    KernelRecording recording;
    std::string reason;
    if (!parseKernelRecording({reinterpret_cast<const char*>(data), size}, recording, reason)) {
        if (reason.empty())
            abort();
        return 0;
    }
    const std::string text = printKernelRecording(recording);
    KernelRecording again;
    if (!parseKernelRecording(text, again, reason) || printKernelRecording(again) != text)
        abort();
    askAll(RecordedKernel(recording));
    return 0;
}
