#pragma once

#include <string>

#include "com/VexTable.h"
#include "com/VexUtil.h"

// Values of a table as text, for tests of collectors.

/// The value of attribute id in row: a number in decimal, a string as it is; "(none)" when the row has no such
/// attribute.
inline std::string valueText(VexTableRow& row, unsigned long id)
{
    row.reset();
    while (VexTableAttrib* attrib = row.getNext()) {
        if (attrib->getId() != id)
            continue;
        const unsigned char* value = attrib->getAttribPtr() + VEX_HEADER_LENGTH;
        if (attrib->getType() == VEX_ULONG)
            return std::to_string(vexRecordWord(attrib->getAttribPtr(), VEX_HEADER_LENGTH));
        std::string text;
        const auto* string = reinterpret_cast<const VexString*>(value);
        for (uint32_t i = 0; i + 1 < string->count; ++i)
            text += static_cast<char>(string->characters[i]);
        return text;
    }
    return "(none)";
}
