#include "SMBIOS/slm_mmap.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

static constexpr char kMemoryDevice[] = "/dev/mem";
static constexpr slm_page_alignment_direction kDown = 1;

// What a handle points to; from malloc.
struct SlmMapping {
    void* address; // as mmap returned it
    uint32_t length;
    int descriptor;
};

unsigned long slm_get_page_size()
{
    return static_cast<unsigned long>(getpagesize());
}

unsigned long slm_page_off(void* addr)
{
    return slm_page_off(static_cast<unsigned long>(reinterpret_cast<uintptr_t>(addr)));
}

unsigned long slm_page_off(unsigned long offset)
{
    return offset % slm_get_page_size();
}

void* slm_page_align(void* addr, slm_page_alignment_direction dir)
{
    const unsigned long beyond = slm_page_off(addr);
    if (beyond == 0)
        return addr;
    char* const down = static_cast<char*>(addr) - beyond;
    return dir == kDown ? down : down + slm_get_page_size();
}

// True for a regular file that ends before the mapping does: touching a page behind its end would kill the process.
static bool endsInside(int descriptor, off_t offset, size_t length)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_size < offset + static_cast<off_t>(length);
}

// Memory of its own that holds what the file has, with zeros behind the file's end.
static void* copyOfFile(int descriptor, off_t offset, size_t length, int protection)
{
    void* const copy = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (copy == MAP_FAILED)
        return copy;
    ssize_t count;
    for (size_t read = 0; read < length; read += static_cast<size_t>(count)) {
        count = pread(descriptor, static_cast<char*>(copy) + read, length - read, offset + static_cast<off_t>(read));
        if (count <= 0)
            break;
    }
    mprotect(copy, length, protection);
    return copy;
}

static void* mapDescriptor(int descriptor, off_t offset, size_t length, slm_file_access_mode mode)
{
    const int protection = mode != 0 ? PROT_READ | PROT_WRITE : PROT_READ;
    if (length != 0 && endsInside(descriptor, offset, length))
        return copyOfFile(descriptor, offset, length, protection);
    return mmap(nullptr, length, protection, MAP_SHARED, descriptor, offset);
}

void* slm_file_mmap(const char* path, unsigned long offset, unsigned long length, slm_page_alignment align,
                    slm_file_access_mode mode, void** handle)
{
    auto* const mapping = static_cast<SlmMapping*>(malloc(sizeof(SlmMapping)));
    if (mapping == nullptr)
        return MAP_FAILED;
    // A descriptor of -1 makes mmap fail.
    mapping->descriptor = open(path, (mode != 0 ? O_RDWR : O_RDONLY) | O_CREAT, 0640);
    if (align == 1) {
        const unsigned long beyond = slm_page_off(offset);
        length += beyond;
        offset -= beyond;
    }
    mapping->length = static_cast<uint32_t>(length);
    mapping->address = mapDescriptor(mapping->descriptor, static_cast<off_t>(offset), length, mode);
    if (mapping->address == MAP_FAILED) {
        close(mapping->descriptor);
        free(mapping);
        return MAP_FAILED;
    }
    *handle = mapping;
    return mapping->address;
}

int slm_file_munmap(void** handle)
{
    auto* const mapping = static_cast<SlmMapping*>(*handle);
    const int result = munmap(mapping->address, mapping->length);
    close(mapping->descriptor);
    free(mapping);
    *handle = nullptr;
    return result == 0 ? 0 : -1;
}

void* slm_phys_mmap(unsigned long start, unsigned long end, slm_page_alignment align, void** handle)
{
    return slm_file_mmap(kMemoryDevice, start, end - start, align, 0, handle);
}

int slm_phys_munmap(void** handle)
{
    return slm_file_munmap(handle);
}
