#pragma once

#include <memory>
#include <tuple>
#include <vector>

#include "SMBIOS/SMBIOSTable0Data.h"
#include "SMBIOS/SMBIOSTable10Data.h"
#include "SMBIOS/SMBIOSTable11Data.h"
#include "SMBIOS/SMBIOSTable16Data.h"
#include "SMBIOS/SMBIOSTable17Data.h"
#include "SMBIOS/SMBIOSTable1Data.h"
#include "SMBIOS/SMBIOSTable22Data.h"
#include "SMBIOS/SMBIOSTable24Data.h"
#include "SMBIOS/SMBIOSTable2Data.h"
#include "SMBIOS/SMBIOSTable3Data.h"
#include "SMBIOS/SMBIOSTable4Data.h"
#include "SMBIOS/SMBIOSTable5Data.h"
#include "SMBIOS/SMBIOSTable6Data.h"
#include "SMBIOS/SMBIOSTable8Data.h"
#include "SMBIOS/SMBIOSTable9Data.h"
#include "SMBIOS/TableBuffer.h"

/// One copy of the firmware's structure table and the records parsed from it. The table owns its bytes and its records;
/// accessors hand out borrowed pointers.
class SMBIOSTable
{
public:
    /// Reads the table from physical memory. Not parsed yet.
    SMBIOSTable();
    /// Copies a table of length bytes. Not parsed yet; the revision stays as given, so that the records take their
    /// table for one older than 2.1.
    SMBIOSTable(const unsigned char* data, int length, unsigned char bcdRevision, int numTables);
    /// Reads a dump file. The table calls itself unavailable and its version stays 0.
    explicit SMBIOSTable(const char* path);
    SMBIOSTable(const SMBIOSTable&) = delete;
    SMBIOSTable& operator=(const SMBIOSTable&) = delete;
    ~SMBIOSTable() = default;

    /// Makes the process-wide table on the first call, and parses it when parse is 1; later calls only count.
    static void initializeGlobalTable(unsigned char parse);
    /// Undoes one initializeGlobalTable; the last one deletes the table.
    static void terminateGlobalTable();

    /// Empties the table.
    void init();
    /// Makes the records from the bytes; those of an earlier parse are deleted.
    void parseData();
    /// The offset of the structure after the one at offset, which is not parsed.
    int getNextType(const unsigned char* data, int offset) const;
    /// Writes the table and its records to standard output.
    void dump() const;
    /// Reads a dump file; a file that cannot be read or holds no table changes nothing. A file of an unknown format
    /// ends the process.
    void readBytesFromFile(const char* path);
    /// Writes a dump file; nothing happens when it cannot be opened.
    void writeBytesToFile(const char* path) const;
    /// Copies src to dst, which is large enough for it, without trailing white space and what follows a control or
    /// non-ASCII character; empty for null and for the firmware's placeholder texts. Returns dst.
    static char* validateString(const char* src, char* dst);

    unsigned char isAvailable() const { return available_; }
    int getRevision() const { return revision_; }
    int getMajorVersion() const { return majorVersion_; }
    int getMinorVersion() const { return minorVersion_; }
    int getNumTables() const { return numTables_; }
    int getTotalLength() const { return totalLength_; }
    const unsigned char* getData() const { return data_.bytes(); }

    // The first structure of its type, or null.
    const SMBIOSTable0Data* getTable0() const { return table0_.get(); }
    const SMBIOSTable1Data* getTable1() const { return table1_.get(); }
    const SMBIOSTable2Data* getTable2() const { return table2_.get(); }
    const SMBIOSTable3Data* getTable3() const { return table3_.get(); }
    const SMBIOSTable5Data* getTable5() const { return table5_.get(); }
    const SMBIOSTable11Data* getTable11() const { return nullptr; } // never read
    const SMBIOSTable16Data* getTable16() const { return table16_.get(); }
    const SMBIOSTable22Data* getTable22() const { return table22_.get(); }
    const SMBIOSTable24Data* getTable24() const { return table24_.get(); }

    // Record i, or null when there is none of that number.
    const SMBIOSTable4Data* getTable4(int i) const { return recordAt(table4_, i); }
    const SMBIOSTable6Data* getTable6(int i) const { return recordAt(table6_, i); }
    const SMBIOSTable8Data* getTable8(int i) const { return recordAt(table8_, i); }
    const SMBIOSTable9Data* getTable9(int i) const { return recordAt(table9_, i); }
    const SMBIOSTable10Data* getTable10(int i) const { return recordAt(table10_, i); }
    const SMBIOSTable17Data* getTable17(int i) const { return recordAt(table17_, i); }

    int getTable4Total() const { return static_cast<int>(table4_.size()); }
    /// Populated central processors among the processor records.
    int getTable4PopulatedTotal() const { return table4PopulatedCount_; }
    int getTable6Total() const { return static_cast<int>(table6_.size()); }
    int getTable8Total() const { return static_cast<int>(table8_.size()); }
    int getTable9Total() const { return static_cast<int>(table9_.size()); }
    int getTable10Total() const { return static_cast<int>(table10_.size()); }
    int getTable17Total() const { return static_cast<int>(table17_.size()); }

private:
    template <class Record>
    using Records = std::vector<std::unique_ptr<Record>>;

    template <class Record>
    static const Record* recordAt(const Records<Record>& records, int i)
    {
        return i < 0 || i >= static_cast<int>(records.size()) ? nullptr : records[static_cast<size_t>(i)].get();
    }

    // Every record and list of records of a table, const or not, in the order of their types.
    template <class Table>
    static auto recordsOf(Table& table)
    {
        return std::tie(table.table0_, table.table1_, table.table2_, table.table3_, table.table4_, table.table5_,
                        table.table6_, table.table8_, table.table9_, table.table10_, table.table16_, table.table17_,
                        table.table22_, table.table24_);
    }

    void readPhysicalMemory();
    void clearRecords();
    int readStructure(int offset);
    template <class Record>
    int readFirst(std::unique_ptr<Record>& record, int offset);
    template <class Record>
    int readNext(Records<Record>& records, size_t limit, int offset);
    int readProcessor(int offset);
    void traceStructure(int offset, int count) const;
    void traceCounts() const;

    int revision_ = 0; // (major << 8) | minor when read from memory
    int majorVersion_ = 0;
    int minorVersion_ = 0;
    int totalLength_ = 0; // bytes
    int numTables_ = 0;   // as declared
    unsigned char available_ = 0;
    TableBuffer data_;
    std::unique_ptr<SMBIOSTable0Data> table0_;
    std::unique_ptr<SMBIOSTable1Data> table1_;
    std::unique_ptr<SMBIOSTable2Data> table2_;
    std::unique_ptr<SMBIOSTable3Data> table3_;
    Records<SMBIOSTable4Data> table4_;
    int table4PopulatedCount_ = 0;
    std::unique_ptr<SMBIOSTable5Data> table5_;
    Records<SMBIOSTable6Data> table6_;
    Records<SMBIOSTable8Data> table8_;
    Records<SMBIOSTable9Data> table9_;
    Records<SMBIOSTable10Data> table10_;
    std::unique_ptr<SMBIOSTable16Data> table16_;
    Records<SMBIOSTable17Data> table17_;
    std::unique_ptr<SMBIOSTable22Data> table22_;
    std::unique_ptr<SMBIOSTable24Data> table24_;
};

/// The process-wide table; null before initializeGlobalTable and after terminateGlobalTable.
extern SMBIOSTable* globalSMBIOSTable;

/// The process-wide table when it holds the firmware's structures, else null.
inline const SMBIOSTable* availableSMBIOSTable()
{
    return globalSMBIOSTable != nullptr && globalSMBIOSTable->isAvailable() != 0 ? globalSMBIOSTable : nullptr;
}
