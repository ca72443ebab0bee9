#include "com/BIOSROM.h"

#include <cstdio>
#include <memory>

namespace
{

constexpr char kMemoryDevice[] = "/dev/mem";

} // namespace

int BIOSROM::getPhysMem(unsigned char* buf, int, unsigned long physAddr, int count)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> memory(fopen(kMemoryDevice, "rb"), fclose);
    // fseeko: a 32-bit build reaches addresses above 2 GB too.
    if (memory == nullptr || fseeko(memory.get(), static_cast<off_t>(physAddr), SEEK_SET) != 0)
        return 0;
    const auto wanted = static_cast<size_t>(count);
    return fread(buf, 1, wanted, memory.get()) == wanted ? 1 : 0;
}
