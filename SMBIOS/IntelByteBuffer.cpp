#include "SMBIOS/IntelByteBuffer.h"

#include <cstring>

unsigned short IntelByteBuffer::readUSHORT(const unsigned char* buf, int off)
{
    return static_cast<unsigned short>(buf[off] + 256 * buf[off + 1]);
}

uint32_t IntelByteBuffer::readULONG(const unsigned char* buf, int off)
{
    return static_cast<uint32_t>(readUSHORT(buf, off)) | static_cast<uint32_t>(readUSHORT(buf, off + 2)) << 16;
}

char* IntelByteBuffer::readASCIIZ(const unsigned char* buf, int off, char* out)
{
    return strcpy(out, reinterpret_cast<const char*>(buf + off));
}

int IntelByteBuffer::getASCIIZLength(const char* s)
{
    return static_cast<int>(strlen(s)) + 1;
}

char* IntelByteBuffer::readCHARArray(const unsigned char* buf, int off, char* out, int n)
{
    memcpy(out, buf + off, static_cast<size_t>(n));
    return out;
}
