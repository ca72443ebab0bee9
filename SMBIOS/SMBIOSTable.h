#pragma once

/// The firmware's structure table and the records parsed from it.
class SMBIOSTable {
public:
    /// Reads the process-wide table once; parse 1 also parses it. Further calls only count.
    static void initializeGlobalTable(unsigned char parse);
    /// Undoes one initializeGlobalTable; the last one deletes the table.
    static void terminateGlobalTable();
};
