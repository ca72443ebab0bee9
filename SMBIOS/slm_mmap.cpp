#include "SMBIOS/slm_mmap.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr char kMemoryDevice[] = "/dev/mem";
constexpr slm_page_alignment_direction kDown = 1;

// What a handle points to; from malloc.
struct SlmMapping {
    void* address; // as mmap returned it
    uint32_t length;
    int descriptor;
};

// True for a regular file that ends before the mapping does: touching a page behind its end would kill the process.
bool endsInside(int descriptor, off_t offset, size_t length)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_size < offset + static_cast<off_t>(length);
}

// Memory of its own that holds what the file has, with zeros behind the file's end.
void* copyOfFile(int descriptor, off_t offset, size_t length)
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
    mprotect(copy, length, PROT_READ);
    return copy;
}

// What is written must reach the file, so that a mapping for writing is always the file's own.
void* mapDescriptor(int descriptor, off_t offset, size_t length, slm_file_access_mode mode)
{
    if (mode != 0)
        return mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, offset);
    if (length != 0 && endsInside(descriptor, offset, length))
        return copyOfFile(descriptor, offset, length);
    return mmap(nullptr, length, PROT_READ, MAP_SHARED, descriptor, offset);
}

// Takes the descriptor over; one of -1, of a file that could not be opened, makes mmap fail.
void* mapOpened(int descriptor, unsigned long offset, unsigned long length, slm_page_alignment align,
                slm_file_access_mode mode, void** handle)
{
    if (align == 1) {
        const unsigned long beyond = slm_page_off(offset);
        length += beyond;
        offset -= beyond;
    }
    auto* const mapping = static_cast<SlmMapping*>(malloc(sizeof(SlmMapping)));
    void* const address =
        mapping == nullptr ? MAP_FAILED : mapDescriptor(descriptor, static_cast<off_t>(offset), length, mode);
    if (address == MAP_FAILED) {
        close(descriptor);
        free(mapping);
        return MAP_FAILED;
    }
    *mapping = {address, static_cast<uint32_t>(length), descriptor};
    *handle = mapping;
    return address;
}

} // namespace

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
    auto* const down = static_cast<char*>(addr) - beyond;
    return dir == kDown ? down : down + slm_get_page_size();
}

void* slm_file_mmap(const char* path, unsigned long offset, unsigned long length, slm_page_alignment align,
                    slm_file_access_mode mode, void** handle)
{
    const int descriptor = open(path, (mode != 0 ? O_RDWR : O_RDONLY) | O_CREAT, 0640);
    return mapOpened(descriptor, offset, length, align, mode, handle);
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
    // Without O_CREAT: an empty file in the device's place would outlive the scan and mislead other programs.
    return mapOpened(open(kMemoryDevice, O_RDONLY), start, end - start, align, 0, handle);
}

int slm_phys_munmap(void** handle)
{
    return slm_file_munmap(handle);
}
