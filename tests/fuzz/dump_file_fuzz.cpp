// Any text as a dump file: what is read has as many bytes as it says, and is parsed.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "SMBIOS/DumpFile.h"
#include "SMBIOS/SMBIOSTable.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FILE* const stream = fmemopen(const_cast<uint8_t*>(data), size, "r");
    if (stream == nullptr)
        return 0;
    DumpedTable dumped;
    const DumpResult result = readDump(stream, &dumped);
    fclose(stream);
    if (result != DumpResult::Read)
        return 0;
    if (dumped.bytes.size() > size)
        abort();
    SMBIOSTable table(dumped.bytes.data(), static_cast<int>(dumped.bytes.size()),
                      static_cast<unsigned char>(dumped.revision), dumped.numTables);
    table.parseData();
    return 0;
}
