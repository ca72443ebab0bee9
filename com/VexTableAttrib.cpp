#include "com/VexTableAttrib.h"

#include <cstring>

#include "com/VexCatalog.h"
#include "com/VexUtil.h"

namespace
{

// Allocates a zeroed record for a value of valueLength bytes and writes its header.
unsigned char* newRecord(unsigned long id, VexType type, size_t valueLength)
{
    const size_t length = VEX_HEADER_LENGTH + valueLength;
    unsigned char* record = new unsigned char[length]();
    const uint32_t header[] = {static_cast<uint32_t>(length), static_cast<uint32_t>(id), type};
    static_assert(sizeof header == VEX_HEADER_LENGTH, "the header is three words");
    memcpy(record, header, sizeof header);
    return record;
}

// The same, with the bytes of value behind the header.
template <typename Value>
unsigned char* newValueRecord(unsigned long id, VexType type, Value value)
{
    unsigned char* record = newRecord(id, type, sizeof value);
    memcpy(record + VEX_HEADER_LENGTH, &value, sizeof value);
    return record;
}

} // namespace

VexTableAttrib::VexTableAttrib(unsigned long id, unsigned char value) : record_(newValueRecord(id, VEX_UCHAR, value)) {}

VexTableAttrib::VexTableAttrib(unsigned long id, unsigned short value) : record_(newValueRecord(id, VEX_USHORT, value))
{
    static_assert(sizeof value == 2);
}

VexTableAttrib::VexTableAttrib(unsigned long id, unsigned long value)
    : record_(newValueRecord(id, VEX_ULONG, static_cast<uint32_t>(value)))
{
}

// The layout names the low word first, which is also how x86 stores 64 bits.
VexTableAttrib::VexTableAttrib(unsigned long id, unsigned long long value)
    : record_(newValueRecord(id, VEX_UQUAD, static_cast<uint64_t>(value)))
{
}

VexTableAttrib::VexTableAttrib(unsigned long id, float value) : record_(newValueRecord(id, VEX_FLOAT, value))
{
    static_assert(sizeof value == 4);
}

VexTableAttrib::VexTableAttrib(unsigned long id, double value) : record_(newValueRecord(id, VEX_DOUBLE, value))
{
    static_assert(sizeof value == 8);
}

VexTableAttrib::VexTableAttrib(unsigned long id, const char* text)
    : record_(newRecord(id, VEX_STRING, SizeAsVexString(text)))
{
    auto* string = reinterpret_cast<VexString*>(record_ + VEX_HEADER_LENGTH);
    unsigned long running = VEX_HEADER_LENGTH;
    StringToVexString(text, string, SizeAsVexString(text), &running, &running);
}

VexTableAttrib::VexTableAttrib(unsigned long id, const unsigned char* bytes, unsigned long count)
    : record_(newRecord(id, VEX_OCTETSTRING, sizeof(uint32_t) + count))
{
    const auto storedCount = static_cast<uint32_t>(count);
    memcpy(record_ + VEX_HEADER_LENGTH, &storedCount, sizeof storedCount);
    if (count != 0)
        memcpy(record_ + VEX_HEADER_LENGTH + sizeof storedCount, bytes, count);
}

VexTableAttrib::VexTableAttrib(unsigned long id, long time) : record_(newRecord(id, VEX_DATETIME, VEX_DATETIME_LENGTH))
{
    TimeToVexDateTime(time, reinterpret_cast<char*>(record_ + VEX_HEADER_LENGTH));
}

VexTableAttrib::~VexTableAttrib()
{
    delete[] record_;
    record_ = nullptr;
}

unsigned long VexTableAttrib::getId() const
{
    return record_ == nullptr ? 0 : vexRecordWord(record_, 4);
}

unsigned long VexTableAttrib::getType() const
{
    return record_ == nullptr ? 0x80000000 : vexRecordWord(record_, 8);
}

void VexTableAttrib::toString() const
{
    PrintVexAttribValue(record_);
}
