#pragma once

#include <cstddef>

// Converts text between named code sets and UTF-8.

struct kst_code_set;
using kst_handle = kst_code_set*;

/// Converts src to UTF-8 in dst; a null handle means the default code set. srcLen counts bytes; a negative one means
/// that src is NUL-terminated, and then dst is terminated as well. dstLen is the size of dst in bytes. Text that does
/// not fit is cut at a character. Returns the bytes written, with the terminator; 0 when dstLen is 0.
size_t kst_to_utf8(kst_handle handle, const char* src, long srcLen, char* dst, size_t dstLen);
