#pragma once

#include <memory>
#include <vector>

/// What every structure of the firmware's table has: its header and its set of strings. One derived class per kept
/// structure type adds that type's fields. Offsets are bytes from the structure's type byte; the public standard is
/// DMTF DSP0134, whose section 7.<type + 1> describes each type.
///
/// A record reads its fixed offsets whatever the length byte says; old structures are shorter, and what then comes from
/// string bytes is what the firmware's own readers saw. TableBuffer makes these reads safe.
class SMBIOSTableData
{
public:
    /// revision is the table's version word, (major << 8) | minor.
    explicit SMBIOSTableData(int revision) : revision_(revision) {}
    SMBIOSTableData(const SMBIOSTableData&) = delete;
    SMBIOSTableData& operator=(const SMBIOSTableData&) = delete;
    virtual ~SMBIOSTableData() = default;

    /// Reads the structure at offset. The base reads the header and returns the offset of the string-set; a derived
    /// class reads its fields too and returns the offset of the next structure.
    virtual int readBlock(const unsigned char* data, int offset);
    /// Writes the record to standard output, for diagnosis.
    virtual void dump() const;

    /// Reads the string-set that starts at offset: an empty set is one empty string. Strings after the fifteenth are
    /// counted in its size and dropped.
    void getStrings(const unsigned char* data, int offset);
    /// String number i, counted from 1, or null when the structure has none of that number.
    const char* stringFromIndex(int i) const;
    int hasData() const { return hasData_; }
    int getRevision() const { return revision_; }
    /// Length of the formatted area in bytes.
    int getLength() const { return length_; }
    int getStringSetSize() const { return stringSetSize_; }

protected:
    /// Reads the strings behind the formatted area and returns the offset of the next structure.
    int readStringsAfter(const unsigned char* data, int offset);
    // The version tests compare the two bytes of the revision one by one: 3.0 fails both, 3.1 passes the first only.
    bool isVersion21() const { return major() >= 2 && minor() != 0; }
    bool isVersion23() const { return major() > 1 && minor() > 2; }

private:
    int major() const { return revision_ >> 8 & 0xFF; }
    int minor() const { return revision_ & 0xFF; }

    int type_ = 0;
    int revision_;
    int length_ = 0;        // of the formatted area
    int stringSetSize_ = 0; // 1 and every string with its terminator
    int hasData_ = 0;
    std::vector<std::unique_ptr<char[]>> strings_; // empty, or 15 entries of which the first ones are filled
};
