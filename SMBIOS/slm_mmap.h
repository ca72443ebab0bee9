#pragma once

// Mappings of stretches of files and of physical memory. A mapping is known by an opaque record that the mapping call
// hands out and the unmapping call frees.

/// 1 rounds down, any other value up.
using slm_page_alignment_direction = int;
/// 1 moves the start of the mapping down to a page boundary and makes it longer by as much; any other value maps as
/// given.
using slm_page_alignment = int;
/// 0 maps for reading, any other value for reading and writing.
using slm_file_access_mode = int;

/// The system's page size in bytes.
unsigned long slm_get_page_size();
/// addr modulo the page size.
unsigned long slm_page_off(void* addr);
unsigned long slm_page_off(unsigned long offset);
/// addr when it stands on a page boundary, else the boundary below or above it.
void* slm_page_align(void* addr, slm_page_alignment_direction dir);

/// Maps length bytes of a file from offset; a file that does not exist is made. Returns the start of the mapping, to
/// which the caller adds slm_page_off(offset) when it asked for alignment, or the address -1. In a mapping for reading,
/// what lies behind the end of a regular file reads as zeros; one for writing never makes the file longer, and its
/// pages wholly behind the file's end must not be touched. Sets *handle on success only.
void* slm_file_mmap(const char* path, unsigned long offset, unsigned long length, slm_page_alignment align,
                    slm_file_access_mode mode, void** handle);
/// Ends a mapping. Returns 0, or -1 when that failed; the record is gone either way.
int slm_file_munmap(void** handle);

/// Maps physical memory from start to end (exclusive) for reading, as slm_file_mmap does; "/dev/mem" is never made.
void* slm_phys_mmap(unsigned long start, unsigned long end, slm_page_alignment align, void** handle);
/// The same as slm_file_munmap.
int slm_phys_munmap(void** handle);
