#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "com/VexTable.h"
#include "com/VexUtil.h"

/// A row as text, "id=value" for every attribute in the order of adding: "1=1|2=eth0".
inline std::string rowText(VexTableRow* row)
{
    char* bytes = nullptr;
    size_t size = 0;
    FILE* const stream = open_memstream(&bytes, &size);
    const char* separator = "";
    row->reset();
    while (const VexTableAttrib* attrib = row->getNext()) {
        fprintf(stream, "%s%lu=", separator, attrib->getId());
        PrintVexAttribValueToFile(stream, attrib->getAttribPtr());
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
        rows.push_back(rowText(row));
    return rows;
}
