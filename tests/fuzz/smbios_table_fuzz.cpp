// Any bytes as a structure table: the walk, every record at every version, the summary queries and the cleaning of
// texts. The first two bytes are the declared number of structures.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "SMBIOS/SMBIOSTable.h"
#include "SMBIOS/SMMemory.h"
#include "SMBIOS/SMProcessor.h"
#include "SMBIOS/SM_HWSecurity.h"
#include "com/Owned.h"

static void cleanStrings(const SMBIOSTableData* record)
{
    for (int i = 0; record != nullptr && i <= 16; ++i) {
        const char* const text = record->stringFromIndex(i);
        if (text == nullptr)
            continue;
        std::string clean(text);
        SMBIOSTable::validateString(text, clean.data());
    }
}

static void useRecords(const SMBIOSTable& table)
{
    cleanStrings(table.getTable1());
    cleanStrings(table.getTable2());
    cleanStrings(table.getTable3());
    cleanStrings(table.getTable22());
    for (int i = 0; i < table.getTable4Total(); ++i)
        cleanStrings(table.getTable4(i));
    for (int i = 0; i < table.getTable17Total(); ++i)
        cleanStrings(table.getTable17(i));
    if (table.getTable0() != nullptr) {
        const OwnedText date(table.getTable0()->getReleaseDateAsYYYYMMDD());
        table.getTable0()->getReleaseDateAsTimeT();
    }
}

// A record of a table of version 2.3 or later, which reads more fields, read anywhere in the table.
template <class Record>
static void readAnywhere(const TableBuffer& buffer, int length)
{
    for (int offset = 0; offset < length - 4; offset += 97) {
        Record record(0x0203);
        if (record.readBlock(buffer.bytes(), offset) < offset)
            abort();
        cleanStrings(&record);
    }
}

static void readEverywhere(const uint8_t* data, int length)
{
    TableBuffer buffer(length);
    for (int i = 0; i < length; ++i)
        buffer.bytes()[i] = data[i];
    readAnywhere<SMBIOSTable0Data>(buffer, length);
    readAnywhere<SMBIOSTable1Data>(buffer, length);
    readAnywhere<SMBIOSTable4Data>(buffer, length);
    readAnywhere<SMBIOSTable5Data>(buffer, length);
    readAnywhere<SMBIOSTable9Data>(buffer, length);
    readAnywhere<SMBIOSTable11Data>(buffer, length);
    readAnywhere<SMBIOSTable16Data>(buffer, length);
    readAnywhere<SMBIOSTable17Data>(buffer, length);
    readAnywhere<SMBIOSTable24Data>(buffer, length);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2 || size > 0x10002)
        return 0;
    const int numTables = data[0] | data[1] << 8;
    const int length = static_cast<int>(size - 2);
    globalSMBIOSTable = new SMBIOSTable(data + 2, length, 0x23, numTables);
    globalSMBIOSTable->parseData();
    useRecords(*globalSMBIOSTable);
    unsigned short speed, clock, upgrade, powerOn, other;
    unsigned int moduleSize, slots;
    SM_Processor(&speed, &clock, &upgrade, nullptr);
    SM_HWSecurity(&powerOn, &other);
    getMemorySpecs(&moduleSize, &slots);
    delete globalSMBIOSTable;
    globalSMBIOSTable = nullptr;
    readEverywhere(data + 2, length);
    return 0;
}
