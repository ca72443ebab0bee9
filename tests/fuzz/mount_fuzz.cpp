// Any mount table: no crash, at most one row for each line, and no text longer than a name may be.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "com/VexUtil.h"
#include "linux/partition/PartitionMounts.h"
#include "linux/partition/PartitionRows.h"

static constexpr uint32_t kLongestName = 255;

static void checkTexts(VexTableRow& row)
{
    row.reset();
    while (const VexTableAttrib* attrib = row.getNext())
        if (attrib->getType() == VEX_STRING &&
            vexRecordWord(attrib->getAttribPtr(), VEX_HEADER_LENGTH) > kLongestName + 1)
            abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    FILE* mountTable = fmemopen(text.data(), text.size(), "r");
    if (mountTable == nullptr)
        return 0;
    VexTable table(GROUP_PARTITION, 1);
    beginPartitionRows(&table);
    addMountEntries(mountTable);
    fclose(mountTable);
    auto linesLeft = std::count(text.begin(), text.end(), '\n') + 1;
    table.reset();
    while (VexTableRow* row = table.getNext()) {
        if (--linesLeft < 0)
            abort();
        checkTexts(*row);
    }
    return 0;
}
