#pragma once

#include <cstdint>

/// One typed value of one attribute of one row, held as a flat, self-describing record in host byte order, without
/// gaps:
///
///   offset  width  field
///        0      4  length of the whole record in bytes, as allocated
///        4      4  attribute id within the group
///        8      4  type code (VexType)
///       12         value, laid out by type:
///                  VEX_UCHAR 1 byte, VEX_USHORT 2, VEX_ULONG and VEX_FLOAT 4, VEX_DOUBLE 8, VEX_UQUAD the low word and
///                  then the high word, VEX_STRING a VexString, VEX_OCTETSTRING a 32-bit byte count and the bytes,
///                  VEX_DATETIME 26 characters without a terminator
///
/// The stored type follows from the constructor: mind that a signed long is a time and an unsigned long a number.
class VexTableAttrib
{
public:
    VexTableAttrib(unsigned long id, unsigned char value);
    VexTableAttrib(unsigned long id, unsigned short value);
    /// Stores the low 32 bits of value.
    VexTableAttrib(unsigned long id, unsigned long value);
    VexTableAttrib(unsigned long id, unsigned long long value);
    VexTableAttrib(unsigned long id, float value);
    VexTableAttrib(unsigned long id, double value);
    /// Converts text from the current locale to wide characters; null is stored as the empty text. Bytes that are no
    /// character of the locale end the stored text.
    VexTableAttrib(unsigned long id, const char* text);
    /// Copies count bytes.
    VexTableAttrib(unsigned long id, const unsigned char* bytes, unsigned long count);
    /// Stores the local time of a time_t.
    VexTableAttrib(unsigned long id, long time);
    VexTableAttrib(const VexTableAttrib&) = delete;
    VexTableAttrib& operator=(const VexTableAttrib&) = delete;
    ~VexTableAttrib();

    /// The attribute id; 0 without a record.
    unsigned long getId() const;
    /// The type code; 0x80000000 without a record.
    unsigned long getType() const;
    /// The record, owned by this object.
    const unsigned char* getAttribPtr() const { return record_; }
    /// Dumps the record to standard output.
    void toString() const;

private:
    unsigned char* record_;
};
