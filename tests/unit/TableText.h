#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "com/VexTable.h"
#include "com/VexUtil.h"

/// A row as text, "id=value" for every attribute in the order of adding: "1=1|2=eth0". Strings are not escaped.
inline std::string rowText(VexTableRow& row)
{
    char* bytes = nullptr;
    size_t size = 0;
    FILE* const stream = open_memstream(&bytes, &size);
    const char* separator = "";
    row.reset();
    while (const VexTableAttrib* attrib = row.getNext()) {
        fprintf(stream, "%s%lu=", separator, attrib->getId());
        const unsigned char* const record = attrib->getAttribPtr();
        if (attrib->getType() == VEX_STRING)
            fprintf(stream, "%ls", reinterpret_cast<const VexString*>(record + VEX_HEADER_LENGTH)->characters);
        else
            PrintVexAttribValueToFile(stream, record);
        separator = "|";
    }
    fclose(stream);
    const std::string text(bytes, size);
    free(bytes);
    return text;
}

/// All rows of a table as texts.
inline std::vector<std::string> tableText(VexTable* table)
{
    std::vector<std::string> rows;
    table->reset();
    while (VexTableRow* row = table->getNext())
        rows.push_back(rowText(*row));
    return rows;
}

/// One value of a row as text; "(none)" when the row has no such attribute.
inline std::string valueText(VexTableRow& row, unsigned long id)
{
    const std::string text = '|' + rowText(row) + '|';
    const std::string label = '|' + std::to_string(id) + '=';
    const size_t start = text.find(label);
    if (start == std::string::npos)
        return "(none)";
    const size_t value = start + label.size();
    return text.substr(value, text.find('|', value) - value);
}
