#include "SMBIOS/TableBuffer.h"

TableBuffer::TableBuffer(int length)
{
    const size_t size = kBefore + static_cast<size_t>(length) + kBehind;
    bytes_.reset(new unsigned char[size]());
    bytes_[size - 1] = 0xFF;
}
