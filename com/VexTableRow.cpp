#include "com/VexTableRow.h"

#include <cstdio>

int VexTableRow::addAttrib(VexTableAttrib* attr)
{
    attribs_.add(attr);
    ++count_;
    return 1;
}

int VexTableRow::reset()
{
    attribs_.reset();
    return 1;
}

void VexTableRow::toString() const
{
    printf("\n\t Attribs=%d", count_);
    attribs_.forEach([](const VexTableAttrib& attrib) { attrib.toString(); });
}

void VexTableRow::addULong(unsigned long id, uint32_t value)
{
    addAttrib(new VexTableAttrib(id, static_cast<unsigned long>(value)));
}

void VexTableRow::addString(unsigned long id, const char* text)
{
    addAttrib(new VexTableAttrib(id, text));
}

void VexTableRow::addFloat(unsigned long id, float value)
{
    addAttrib(new VexTableAttrib(id, value));
}

void VexTableRow::addDateTime(unsigned long id, long time)
{
    addAttrib(new VexTableAttrib(id, time));
}
