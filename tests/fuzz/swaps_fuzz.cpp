// Any text of /proc/swaps: no crash, and what is free is never negative as a 32-bit number.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "com/VexUtil.h"
#include "linux/partition/PartitionRows.h"
#include "linux/partition/PartitionSwaps.h"
#include "linux/text/TextStream.h"

static uint32_t number(VexTableRow& row, unsigned long id)
{
    row.reset();
    while (const VexTableAttrib* attrib = row.getNext())
        if (attrib->getId() == id)
            return vexRecordWord(attrib->getAttribPtr(), VEX_HEADER_LENGTH);
    abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text(reinterpret_cast<const char*>(data), size);
    TextStream stream(fmemopen(text.data(), text.size(), "r"));
    VexTable table(GROUP_PARTITION, 1);
    beginPartitionRows(&table);
    addSwapRows(stream);
    table.reset();
    while (VexTableRow* row = table.getNext())
        if (number(*row, PARTITION_FS_FREE_SIZE) > INT32_MAX ||
            number(*row, PARTITION_PHYSICAL_SIZE) != number(*row, PARTITION_FS_TOTAL_SIZE))
            abort();
    return 0;
}
