#include "SMBIOS/SMBIOSTableData.h"

#include <cstdio>
#include <cstring>

#include "SMBIOS/IntelByteBuffer.h"

namespace
{

// Strings that a record keeps.
constexpr int kStringCapacity = 15;

} // namespace

int SMBIOSTableData::readBlock(const unsigned char* data, int offset)
{
    type_ = IntelByteBuffer::readUCHAR(data, offset);
    length_ = IntelByteBuffer::readUCHAR(data, offset + 1);
    strings_.clear();
    stringSetSize_ = 1;
    hasData_ = 1;
    return offset + length_;
}

void SMBIOSTableData::getStrings(const unsigned char* data, int offset)
{
    strings_.resize(kStringCapacity);
    int index = 1;
    do {
        const int size = IntelByteBuffer::getASCIIZLength(reinterpret_cast<const char*>(data + offset));
        if (index <= kStringCapacity) {
            auto& string = strings_[static_cast<size_t>(index - 1)];
            string.reset(new char[static_cast<size_t>(size)]);
            IntelByteBuffer::readASCIIZ(data, offset, string.get());
        }
        offset += size;
        stringSetSize_ += size;
        ++index;
    } while (data[offset] != 0);
}

const char* SMBIOSTableData::stringFromIndex(int i) const
{
    if (strings_.empty() || i < 1 || i > kStringCapacity)
        return nullptr;
    return strings_[static_cast<size_t>(i - 1)].get();
}

int SMBIOSTableData::readStringsAfter(const unsigned char* data, int offset)
{
    getStrings(data, offset + length_);
    return offset + length_ + stringSetSize_;
}

void SMBIOSTableData::dump() const
{
    printf("\n\nSMBIOS Header -----------------------------------------------------------");
    printf("\n   Type  : %d", type_);
    printf("\n   Length: x%04X", static_cast<unsigned>(length_));
}
