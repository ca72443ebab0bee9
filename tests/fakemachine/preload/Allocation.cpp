// Allocations of the program, so that each of them can be made to fail. Not part of sanitized builds, whose own
// allocator comes first.

#include <cerrno>
#include <cstddef>

#include "preload/Calls.h"
#include "preload/Export.h"

using namespace fakemachine;

extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void* __libc_realloc(void* block, size_t size);

static void* noMemory()
{
    errno = ENOMEM;
    return nullptr;
}

FAKE(void*, malloc, size_t size)
{
    return allocationFails() ? noMemory() : __libc_malloc(size);
}

FAKE(void*, calloc, size_t count, size_t size)
{
    return allocationFails() ? noMemory() : __libc_calloc(count, size);
}

FAKE(void*, realloc, void* block, size_t size)
{
    return allocationFails() ? noMemory() : __libc_realloc(block, size);
}
