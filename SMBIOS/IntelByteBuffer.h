#pragma once

#include <cstdint>

/// Reads little-endian values from bytes. Nothing here knows the buffer's end: whoever holds the buffer sees to it that
/// what is read lies inside (SMBIOS/TableBuffer.h).
class IntelByteBuffer
{
public:
    static unsigned char readUCHAR(const unsigned char* buf, int off) { return buf[off]; }
    static unsigned short readUSHORT(const unsigned char* buf, int off);
    static uint32_t readULONG(const unsigned char* buf, int off);
    /// Copies the NUL-terminated string at off into out, which has room for it. Returns out.
    static char* readASCIIZ(const unsigned char* buf, int off, char* out);
    /// Bytes that a string occupies, its terminator included.
    static int getASCIIZLength(const char* s);
    /// Copies n bytes from off into out. Returns out.
    static char* readCHARArray(const unsigned char* buf, int off, char* out, int n);
};
