#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include "com/VexTableRow.h"
#include "com/VexUtil.h"

/// A row on one line, "1=4 2='text' 4=2.0 ", its attributes in the order in which they were added: strings in quotes,
/// floats with one digit behind the point, other numbers in decimal.
inline std::string rowText(VexTableRow& row)
{
    std::string text;
    row.reset();
    while (const VexTableAttrib* attrib = row.getNext()) {
        const unsigned char* record = attrib->getAttribPtr();
        text += std::to_string(attrib->getId()) + '=';
        if (attrib->getType() == VEX_STRING) {
            const auto* string = reinterpret_cast<const VexString*>(record + VEX_HEADER_LENGTH);
            text += '\'';
            for (uint32_t i = 0; i + 1 < string->count; ++i)
                text += static_cast<char>(string->characters[i]);
            text += '\'';
        } else if (attrib->getType() == VEX_FLOAT) {
            float value = 0;
            memcpy(&value, record + VEX_HEADER_LENGTH, sizeof value);
            char number[64];
            snprintf(number, sizeof number, "%.1f", static_cast<double>(value));
            text += number;
        } else if (attrib->getType() == VEX_ULONG) {
            text += std::to_string(vexRecordWord(record, VEX_HEADER_LENGTH));
        } else {
            text += "(type " + std::to_string(attrib->getType()) + ')';
        }
        text += ' ';
    }
    return text;
}
