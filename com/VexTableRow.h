#pragma once

#include <cstdint>

#include "com/VexList.h"
#include "com/VexTableAttrib.h"

/// One row of a table: attributes in the order in which the collector added them.
class VexTableRow
{
public:
    /// Appends attr, which the row owns from now on. Returns 1.
    int addAttrib(VexTableAttrib* attr);
    int getNumAttribs() const { return count_; }
    /// Starts a new pass over the attributes. Returns 1.
    int reset();
    /// The next attribute of the pass, or null at its end.
    VexTableAttrib* getNext() { return attribs_.getNext(); }
    /// Dumps the row to standard output; the cursor is not touched.
    void toString() const;

    /// The collectors' short forms of addAttrib: the name says which type of value is stored.
    void addULong(unsigned long id, uint32_t value);
    void addString(unsigned long id, const char* text); // text in the current locale
    void addFloat(unsigned long id, float value);
    void addDateTime(unsigned long id, long time); // seconds since the epoch

private:
    int32_t count_ = 0;
    VexList<VexTableAttrib> attribs_;
};
