#include "SMBIOS/SMBIOSTable.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "SMBIOS/DmiScan.h"
#include "SMBIOS/DumpFile.h"
#include "com/VexDebug.h"

namespace
{

int globalUseCount = 0;

// Records kept of each type that may stand in the table more than once.
constexpr size_t kMostTable4 = 80;
constexpr size_t kMostTable6 = 12;
constexpr size_t kMostTable8 = 20;
constexpr size_t kMostTable9 = 20;
constexpr size_t kMostTable10 = 20;
constexpr size_t kMostTable17 = 1000;

constexpr int kMemoryController = 5;
constexpr int kEndOfTable = 127;
constexpr unsigned char kCentralProcessor = 3;

// Writes every record of a list, or the one record, that is there.
template <class Record>
void dumpRecords(const std::unique_ptr<Record>& record)
{
    if (record != nullptr)
        record->dump();
}

template <class Record>
void dumpRecords(const std::vector<std::unique_ptr<Record>>& records)
{
    for (const auto& record : records)
        record->dump();
}

} // namespace

SMBIOSTable* globalSMBIOSTable = nullptr;

SMBIOSTable::SMBIOSTable()
{
    readPhysicalMemory();
}

SMBIOSTable::SMBIOSTable(const unsigned char* data, int length, unsigned char bcdRevision, int numTables)
    : revision_(bcdRevision), majorVersion_(bcdRevision >> 4), minorVersion_(bcdRevision & 0x0F),
      totalLength_(std::clamp(length, 0, TableBuffer::kMaxLength)), numTables_(numTables), available_(1),
      data_(totalLength_)
{
    std::copy_n(data, totalLength_, data_.bytes());
}

SMBIOSTable::SMBIOSTable(const char* path)
{
    readBytesFromFile(path);
}

void SMBIOSTable::initializeGlobalTable(unsigned char parse)
{
    if (globalSMBIOSTable != nullptr) {
        ++globalUseCount;
        return;
    }
    globalSMBIOSTable = new SMBIOSTable;
    globalUseCount = 1;
    if (parse == 1 && globalSMBIOSTable->isAvailable() != 0)
        globalSMBIOSTable->parseData();
}

void SMBIOSTable::terminateGlobalTable()
{
    if (globalUseCount > 0)
        --globalUseCount;
    if (globalUseCount > 0)
        return;
    delete globalSMBIOSTable;
    globalSMBIOSTable = nullptr;
}

void SMBIOSTable::clearRecords()
{
    std::apply([](auto&... records) { ((records = std::decay_t<decltype(records)>()), ...); }, recordsOf(*this));
    table4PopulatedCount_ = 0;
}

void SMBIOSTable::init()
{
    revision_ = majorVersion_ = minorVersion_ = totalLength_ = numTables_ = 0;
    available_ = 0;
    data_ = TableBuffer();
    clearRecords();
}

void SMBIOSTable::readPhysicalMemory()
{
    DmiTable found;
    available_ = scanForDmi(&found) ? 1 : 0;
    revision_ = found.revision;
    majorVersion_ = found.majorVersion;
    minorVersion_ = found.minorVersion;
    totalLength_ = found.totalLength;
    numTables_ = found.numTables;
    data_ = std::move(found.data);
}

void SMBIOSTable::readBytesFromFile(const char* path)
{
    DumpedTable dumped;
    switch (readDumpFile(path, &dumped)) {
    case DumpResult::Unreadable:
        return;
    case DumpResult::BadFormat:
        puts("\nERROR - Invalid file format.");
        exit(-1);
    case DumpResult::Read:
        break;
    }
    totalLength_ = static_cast<int>(dumped.bytes.size());
    numTables_ = dumped.numTables;
    revision_ = dumped.revision;
    data_ = TableBuffer(totalLength_);
    std::copy(dumped.bytes.begin(), dumped.bytes.end(), data_.bytes());
}

void SMBIOSTable::writeBytesToFile(const char* path) const
{
    writeDumpFile(path, data_.bytes(), totalLength_, numTables_, revision_);
}

// Skips a structure's strings up to the two NULs behind them. A memory controller has none to skip: it ends with its
// formatted area and the two NULs, if they are there.
int SMBIOSTable::getNextType(const unsigned char* data, int offset) const
{
    int p = offset + data[offset + 1];
    const auto atEnd = [data](int at) { return data[at] == 0 && data[at + 1] == 0; };
    if (data[offset] == kMemoryController)
        return atEnd(p) ? p + 2 : p;
    while (p < totalLength_ && !atEnd(p))
        ++p;
    return p + 2;
}

template <class Record>
int SMBIOSTable::readFirst(std::unique_ptr<Record>& record, int offset)
{
    if (record != nullptr)
        return getNextType(data_.bytes(), offset);
    record = std::make_unique<Record>(revision_);
    return record->readBlock(data_.bytes(), offset);
}

template <class Record>
int SMBIOSTable::readNext(Records<Record>& records, size_t limit, int offset)
{
    if (records.size() >= limit)
        return getNextType(data_.bytes(), offset);
    records.push_back(std::make_unique<Record>(revision_));
    return records.back()->readBlock(data_.bytes(), offset);
}

int SMBIOSTable::readProcessor(int offset)
{
    const size_t kept = table4_.size();
    const int next = readNext(table4_, kMostTable4, offset);
    if (table4_.size() > kept && table4_.back()->isPopulated() != 0 && table4_.back()->getType() == kCentralProcessor)
        ++table4PopulatedCount_;
    return next;
}

// Reads or skips the structure at offset and returns the offset of the next one.
int SMBIOSTable::readStructure(int offset)
{
    switch (data_.bytes()[offset]) {
    case 0:
        return readFirst(table0_, offset);
    case 1:
        return readFirst(table1_, offset);
    case 2:
        return readFirst(table2_, offset);
    case 3:
        return readFirst(table3_, offset);
    case 4:
        return readProcessor(offset);
    case kMemoryController:
        return readFirst(table5_, offset);
    case 6:
        return readNext(table6_, kMostTable6, offset);
    case 8:
        return readNext(table8_, kMostTable8, offset);
    case 9:
        return readNext(table9_, kMostTable9, offset);
    case 10:
        return readNext(table10_, kMostTable10, offset);
    case 16:
        return readFirst(table16_, offset);
    case 17:
        return readNext(table17_, kMostTable17, offset);
    case 22:
        return readFirst(table22_, offset);
    case 24:
        return readFirst(table24_, offset);
    case kEndOfTable:
        // Not left: the walk counts it until it has its number of structures.
        VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_DETAIL, "\nfound structure 127");
        return offset;
    default:
        return getNextType(data_.bytes(), offset);
    }
}

void SMBIOSTable::parseData()
{
    clearRecords();
    // A structure may be passed without leaving its place, up to the declared number. An entry point declares at most
    // 0xFFFF; a dump file's larger number must not keep the walk for hours.
    const int mostSteps = std::min(numTables_, totalLength_ + 0x10000);
    for (int offset = 0, count = 0; offset < totalLength_ - 4 && count < mostSteps; ++count) {
        traceStructure(offset, count);
        offset = readStructure(offset);
    }
    traceCounts();
}

void SMBIOSTable::traceStructure(int offset, int count) const
{
    const unsigned char* const p = data_.bytes() + offset;
    VEX_LOG(DEBUG_GENERAL, VEX_LEVEL_DETAIL,
            "\nSMBIOS cur=%04X type=%3d tables=%2d of %2d | %02X %02X %02X (%02X) %02X %02X %02X",
            static_cast<unsigned>(offset), p[0], count + 1, numTables_, p[-3], p[-2], p[-1], p[0], p[1], p[2], p[3]);
}

void SMBIOSTable::traceCounts() const
{
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nNumber of Table 4 = %d", getTable4Total());
    VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nNumber of Table 4 Populated = %d", table4PopulatedCount_);
    if (!table4_.empty())
        VEX_LOG(DEBUG_SMBIOS, VEX_LEVEL_MAIN, "\nTable 4 Family = %d", table4_.front()->getFamily());
    VEX_LOG(DEBUG_GENERAL, VEX_LEVEL_DETAIL, "\n");
}

char* SMBIOSTable::validateString(const char* src, char* dst)
{
    static constexpr const char* kPlaceholders[] = {"Not Available", "This is OEM", "System Manufacturer",
                                                    "System Model", "No Asset Information"};
    if (dst == nullptr)
        return nullptr;
    *dst = '\0';
    if (src == nullptr)
        return dst;
    for (const char* placeholder : kPlaceholders)
        if (strstr(src, placeholder) != nullptr)
            return dst;
    size_t length = 0;
    while (static_cast<signed char>(src[length]) >= 32)
        ++length;
    while (length > 0 && isspace(static_cast<unsigned char>(src[length - 1])) != 0)
        --length;
    memcpy(dst, src, length);
    dst[length] = '\0';
    return dst;
}

void SMBIOSTable::dump() const
{
    printf("\n-SMBIOS Table -------------------------------");
    printf("\n   revision    : x%02X", static_cast<unsigned>(revision_));
    printf("\n   numTables   : %d", numTables_);
    printf("\n   totalLength : %d", totalLength_);
    std::apply([](const auto&... records) { (dumpRecords(records), ...); }, recordsOf(*this));
    printf("\n");
}
