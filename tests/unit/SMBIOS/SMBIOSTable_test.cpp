#include "SMBIOS/SMBIOSTable.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/unit/Capture.h"
#include "tests/unit/LogCapture.h"
#include "tests/unit/SMBIOS/TableBuilder.h"

static std::unique_ptr<SMBIOSTable> parsed(const TableBytes& table, int numTables)
{
    auto result = std::make_unique<SMBIOSTable>(table.bytes().data(), table.length(), 0x23, numTables);
    result->parseData();
    return result;
}

static std::unique_ptr<SMBIOSTable> parsed(const TableBytes& table)
{
    return parsed(table, table.count());
}

static void expectEmpty(const SMBIOSTable& table)
{
    EXPECT_EQ(table.isAvailable(), 0);
    EXPECT_EQ(table.getData(), nullptr);
    for (const int value :
         {table.getRevision(), table.getMajorVersion(), table.getMinorVersion(), table.getTotalLength(),
          table.getNumTables(), table.getTable4Total(), table.getTable4PopulatedTotal()})
        EXPECT_EQ(value, 0);
}

TEST(SMBIOSTable, fromBytesIsAvailableWithTheRevisionAsGiven)
{
    const TableBytes bytes = TableBytes().add(Structure(2, 8)).end();
    const SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, 2);
    EXPECT_EQ(table.isAvailable(), 1);
    EXPECT_EQ(table.getRevision(), 0x23);
    EXPECT_EQ(table.getMajorVersion(), 2);
    EXPECT_EQ(table.getMinorVersion(), 3);
    EXPECT_EQ(table.getTotalLength(), bytes.length());
    EXPECT_EQ(table.getNumTables(), 2);
    EXPECT_EQ(std::vector<unsigned char>(table.getData(), table.getData() + bytes.length()), bytes.bytes());
    EXPECT_EQ(table.getTable2(), nullptr) << "not parsed yet";
}

TEST(SMBIOSTable, isEmptyWherePhysicalMemoryCannotBeRead)
{
    inChild([] {
        const rlimit noFiles = {0, 0};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &noFiles), 0);
        expectEmpty(SMBIOSTable());
    });
}

TEST(SMBIOSTable, keepsTheFirstOfTypesThatAreKeptOnce)
{
    TableBytes bytes;
    for (unsigned type : {0U, 1U, 2U, 3U, 22U})
        bytes.add(Structure(type, 40).string(type == 3 ? 6 : 5, "first")).add(Structure(type, 40).string(5, "second"));
    const auto table = parsed(bytes.end());
    EXPECT_STREQ(table->getTable0()->getVersion(), "first");
    EXPECT_STREQ(table->getTable1()->getProduct(), "first");
    EXPECT_STREQ(table->getTable2()->getProduct(), "first");
    EXPECT_STREQ(table->getTable3()->getVersion(), "first");
    EXPECT_STREQ(table->getTable22()->getManufacturer(), "first");
}

TEST(SMBIOSTable, readsEveryTypeThatIsKept)
{
    TableBytes bytes;
    for (unsigned type : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 8U, 9U, 10U, 11U, 16U, 17U, 22U, 24U})
        bytes.add(Structure(type, 40));
    const auto table = parsed(bytes.end());
    EXPECT_NE(table->getTable0(), nullptr);
    EXPECT_NE(table->getTable1(), nullptr);
    EXPECT_NE(table->getTable2(), nullptr);
    EXPECT_NE(table->getTable3(), nullptr);
    EXPECT_NE(table->getTable5(), nullptr);
    EXPECT_EQ(table->getTable11(), nullptr) << "never read";
    EXPECT_NE(table->getTable16(), nullptr);
    EXPECT_NE(table->getTable22(), nullptr);
    EXPECT_NE(table->getTable24(), nullptr);
    EXPECT_EQ(table->getTable4Total(), 1);
    EXPECT_EQ(table->getTable6Total(), 1);
    EXPECT_EQ(table->getTable8Total(), 1);
    EXPECT_EQ(table->getTable9Total(), 1);
    EXPECT_EQ(table->getTable10Total(), 1);
    EXPECT_EQ(table->getTable17Total(), 1);
}

TEST(SMBIOSTable, skipsWhatIsBeyondTheLimitOfItsTypeAndCountsIt)
{
    TableBytes bytes;
    bytes.add(Structure(4, 26).byte(5, 3).byte(24, 0x41), 81).add(Structure(6, 12), 13).add(Structure(8, 9), 21);
    bytes.add(Structure(9, 13), 21).add(Structure(10, 6), 21).add(Structure(17, 27), 1001);
    bytes.add(Structure(2, 8).string(4, "last"));
    const auto table = parsed(bytes.end());
    EXPECT_EQ(table->getTable4Total(), 80);
    EXPECT_EQ(table->getTable4PopulatedTotal(), 80);
    EXPECT_EQ(table->getTable6Total(), 12);
    EXPECT_EQ(table->getTable8Total(), 20);
    EXPECT_EQ(table->getTable9Total(), 20);
    EXPECT_EQ(table->getTable10Total(), 20);
    EXPECT_EQ(table->getTable17Total(), 1000);
    EXPECT_STREQ(table->getTable2()->getManufacturer(), "last");
    // The structures that were skipped count: two less than declared, and the walk ends before the board.
    EXPECT_EQ(parsed(bytes, bytes.count() - 2)->getTable2(), nullptr);
}

TEST(SMBIOSTable, countsPopulatedCentralProcessors)
{
    const auto table = parsed(TableBytes()
                                  .add(Structure(4, 26).byte(5, 3).byte(24, 0x41))
                                  .add(Structure(4, 26).byte(5, 3).byte(24, 0x01))
                                  .add(Structure(4, 26).byte(5, 4).byte(24, 0x41))
                                  .end());
    EXPECT_EQ(table->getTable4Total(), 3);
    EXPECT_EQ(table->getTable4PopulatedTotal(), 1);
}

TEST(SMBIOSTable, endsEarlyWhenFewerStructuresAreDeclared)
{
    const TableBytes bytes = TableBytes().add(Structure(8, 9), 5).end();
    EXPECT_EQ(parsed(bytes, 3)->getTable8Total(), 3);
    EXPECT_EQ(parsed(bytes, 0)->getTable8Total(), 0);
    EXPECT_EQ(parsed(bytes, -1)->getTable8Total(), 0);
}

TEST(SMBIOSTable, endsAtTheEndOfTableStructureWhenMoreAreDeclared)
{
    const TableBytes bytes = TableBytes().add(Structure(8, 9), 5).end().add(Structure(8, 9), 5);
    EXPECT_EQ(parsed(bytes, 100)->getTable8Total(), 5);
    EXPECT_EQ(parsed(bytes, 0x7FFFFFFF)->getTable8Total(), 5);
}

TEST(SMBIOSTable, stopsFourBytesBeforeItsEnd)
{
    TableBytes bytes;
    bytes.add(Structure(8, 9), 3);
    const std::vector<unsigned char>& all = bytes.bytes();
    SMBIOSTable whole(all.data(), static_cast<int>(all.size()), 0x23, 10);
    whole.parseData();
    EXPECT_EQ(whole.getTable8Total(), 3);
    SMBIOSTable cut(all.data(), 2 * 11 + 4, 0x23, 10);
    cut.parseData();
    EXPECT_EQ(cut.getTable8Total(), 2);
    SMBIOSTable tiny(all.data(), 4, 0x23, 10);
    tiny.parseData();
    EXPECT_EQ(tiny.getTable8Total(), 0);
}

TEST(SMBIOSTable, survivesBeingCutAtEveryByte)
{
    TableBytes bytes;
    for (unsigned type : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 8U, 9U, 10U, 11U, 16U, 17U, 22U, 24U})
        bytes.add(Structure(type, 40).string(4, "one").string(6, "two"), 2);
    bytes.end();
    for (int length = 0; length <= bytes.length(); ++length) {
        SMBIOSTable table(bytes.bytes().data(), length, 0x23, 0xFFFF);
        table.parseData();
        EXPECT_LE(table.getTable17Total(), 2);
    }
}

TEST(SMBIOSTable, structuresOfLengthZeroEndByTheirNumber)
{
    for (unsigned type = 0; type < 256; ++type) {
        const unsigned char bytes[] = {static_cast<unsigned char>(type), 0, 1, 0, 1, 1, 1, 1, 1, 1};
        SMBIOSTable table(bytes, sizeof bytes, 0x23, 0x7FFFFFFF);
        table.parseData();
        EXPECT_LE(table.getTable17Total() + table.getTable4Total(), int{sizeof bytes}) << type;
    }
}

TEST(SMBIOSTable, allZerosIsManyEmptyStructures)
{
    const std::vector<unsigned char> zeros(0xFFFF);
    SMBIOSTable table(zeros.data(), 0xFFFF, 0x23, 0xFFFF);
    table.parseData();
    EXPECT_NE(table.getTable0(), nullptr);
}

TEST(SMBIOSTable, parsingAgainStartsAnew)
{
    const auto table = parsed(TableBytes().add(Structure(4, 26).byte(5, 3).byte(24, 0x41), 2).end());
    table->parseData();
    EXPECT_EQ(table->getTable4Total(), 2);
    EXPECT_EQ(table->getTable4PopulatedTotal(), 2);
}

TEST(SMBIOSTable, recordsOutsideTheListsAreNull)
{
    const auto table = parsed(TableBytes().add(Structure(4, 26)).add(Structure(17, 27), 2).end());
    EXPECT_EQ(table->getTable4(-1), nullptr);
    EXPECT_NE(table->getTable4(0), nullptr);
    EXPECT_EQ(table->getTable4(table->getTable4Total()), nullptr);
    EXPECT_NE(table->getTable17(1), nullptr);
    EXPECT_EQ(table->getTable17(2), nullptr);
    EXPECT_EQ(table->getTable6(0), nullptr);
    EXPECT_EQ(table->getTable8(0), nullptr);
    EXPECT_EQ(table->getTable9(0), nullptr);
    EXPECT_EQ(table->getTable10(0), nullptr);
}

TEST(SMBIOSTable, initEmptiesIt)
{
    const auto table = parsed(TableBytes().add(Structure(4, 26)).add(Structure(0, 19)).end());
    table->init();
    EXPECT_EQ(table->isAvailable(), 0);
    EXPECT_EQ(table->getTotalLength(), 0);
    EXPECT_EQ(table->getNumTables(), 0);
    EXPECT_EQ(table->getData(), nullptr);
    EXPECT_EQ(table->getTable0(), nullptr);
    EXPECT_EQ(table->getTable4Total(), 0);
}

TEST(GetNextType, searchesTheStringSetExceptOfAMemoryController)
{
    const TableBytes bytes = TableBytes().add(Structure(11, 5).addString("abc")).end();
    const SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, 2);
    EXPECT_EQ(table.getNextType(table.getData(), 0), 5 + 4 + 1);

    const TableBytes controllers =
        TableBytes().add(Structure(5, 16)).add(Structure(5, 16).addString("abc")).add(Structure(2, 8)).end();
    const SMBIOSTable second(controllers.bytes().data(), controllers.length(), 0x23, 4);
    EXPECT_EQ(second.getNextType(second.getData(), 0), 18);
    EXPECT_EQ(second.getNextType(second.getData(), 18), 18 + 16) << "the strings are not searched";
}

TEST(GetNextType, stopsBehindTheTablesEnd)
{
    const unsigned char bytes[] = {11, 4, 0, 0, 'a', 'b', 'c', 'd'};
    const SMBIOSTable table(bytes, sizeof bytes, 0x23, 1);
    EXPECT_EQ(table.getNextType(table.getData(), 0), static_cast<int>(sizeof bytes) + 2);
}

static std::string validated(const char* text)
{
    char result[100] = "unset";
    EXPECT_EQ(SMBIOSTable::validateString(text, result), result);
    return result;
}

TEST(ValidateString, placeholderTextsCountAsNone)
{
    EXPECT_EQ(validated("System Manufacturer Inc."), "");
    EXPECT_EQ(validated("a Not Available b"), "");
    EXPECT_EQ(validated("This is OEM"), "");
    EXPECT_EQ(validated("System Model"), "");
    EXPECT_EQ(validated("No Asset Information"), "");
    EXPECT_EQ(validated("not available"), "not available");
}

TEST(ValidateString, cutsAtControlAndNonAsciiBytesAndTrailingBlanks)
{
    EXPECT_EQ(validated("ABC   "), "ABC");
    EXPECT_EQ(validated("AB\tC"), "AB");
    EXPECT_EQ(validated("caf\xE9 au lait"), "caf");
    EXPECT_EQ(validated("  A B "), "  A B");
    EXPECT_EQ(validated("A \x80"), "A");
    EXPECT_EQ(validated("\x7F"), "\x7F");
    EXPECT_EQ(validated("   "), "");
    EXPECT_EQ(validated(""), "");
}

TEST(ValidateString, nullsGiveNothing)
{
    EXPECT_EQ(validated(nullptr), "");
    EXPECT_EQ(SMBIOSTable::validateString("A", nullptr), nullptr);
}

class DumpFile : public testing::Test
{
protected:
    DumpFile() { EXPECT_GE(close(mkstemp(path_)), 0); }
    ~DumpFile() override { unlink(path_); }

    // A table read from a dump of this text.
    std::unique_ptr<SMBIOSTable> readText(const std::string& text)
    {
        FILE* const stream = fopen(path_, "w");
        fwrite(text.data(), 1, text.size(), stream);
        fclose(stream);
        return std::make_unique<SMBIOSTable>(static_cast<const char*>(path_));
    }

    std::string text() const
    {
        char buffer[4096];
        FILE* const stream = fopen(path_, "r");
        const size_t count = fread(buffer, 1, sizeof buffer, stream);
        fclose(stream);
        return std::string(buffer, count);
    }

    char path_[32] = "/tmp/invhw_dump_XXXXXX";
};

TEST_F(DumpFile, hasItsForm)
{
    std::vector<unsigned char> bytes(18);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(0xF0 + i);
    SMBIOSTable(bytes.data(), 18, 0x23, 1).writeBytesToFile(path_);
    EXPECT_EQ(text(), "SMBIOS File Format=0x0001\nSMBIOS Length=0x0012\nSMBIOS NumTables=0x0001\n"
                      "SMBIOS Revision=0x23\nSMBIOS Data=\n"
                      "0xF0 0xF1 0xF2 0xF3 0xF4 0xF5 0xF6 0xF7 0xF8 0xF9 0xFA 0xFB 0xFC 0xFD 0xFE 0xFF \n"
                      "0x00 0x01 \n");
}

TEST_F(DumpFile, isReadBackAsItWasWritten)
{
    const TableBytes bytes = TableBytes().add(Structure(2, 8).string(4, "Maker"), 40).end();
    const SMBIOSTable written(bytes.bytes().data(), bytes.length(), 0x23, bytes.count());
    written.writeBytesToFile(path_);
    SMBIOSTable read(static_cast<const char*>(path_));
    EXPECT_EQ(read.getTotalLength(), bytes.length());
    EXPECT_EQ(read.getNumTables(), bytes.count());
    EXPECT_EQ(read.getRevision(), 0x23);
    EXPECT_EQ(std::vector<unsigned char>(read.getData(), read.getData() + bytes.length()), bytes.bytes());
    EXPECT_EQ(read.isAvailable(), 0);
    EXPECT_EQ(read.getMajorVersion(), 0);
    read.parseData();
    EXPECT_STREQ(read.getTable2()->getManufacturer(), "Maker");
}

static const char kHeader[] = "SMBIOS File Format=0x0001\n";

TEST_F(DumpFile, keepsTheLowByteOfANumber)
{
    const auto table = readText(std::string(kHeader) + "SMBIOS Length=2\nSMBIOS NumTables=1\nSMBIOS Revision=203\n"
                                                       "SMBIOS Data=1FF 2");
    EXPECT_EQ(table->getTotalLength(), 2);
    EXPECT_EQ(table->getRevision(), 0x203);
    EXPECT_EQ(table->getData()[0], 0xFF);
    EXPECT_EQ(table->getData()[1], 2);
}

TEST_F(DumpFile, thatCannotBeTrueLeavesTheTableEmpty)
{
    for (const char* fields : {
             "SMBIOS Length=-5\nSMBIOS NumTables=1\nSMBIOS Revision=23\nSMBIOS Data=1 2 3",
             "SMBIOS Length=FFFFFFFF\nSMBIOS NumTables=1\nSMBIOS Revision=23\nSMBIOS Data=1 2 3",
             "SMBIOS Length=7FFFFFFF\nSMBIOS NumTables=1\nSMBIOS Revision=23\nSMBIOS Data=1 2 3",
             "SMBIOS Length=4\nSMBIOS NumTables=1\nSMBIOS Revision=23\nSMBIOS Data=1 2 3",
             "SMBIOS Length=3\nSMBIOS NumTables=1\nSMBIOS Revision=23\nSMBIOS Data=1 x 3",
             "SMBIOS Length=3\nSMBIOS NumTables=1\n",
             "SMBIOS Length=\n",
             "",
         }) {
        const auto table = readText(std::string(kHeader) + fields);
        EXPECT_EQ(table->getTotalLength(), 0) << fields;
        EXPECT_EQ(table->getNumTables(), 0) << fields;
        EXPECT_EQ(table->getRevision(), 0) << fields;
        EXPECT_EQ(table->getData(), nullptr) << fields;
    }
}

TEST_F(DumpFile, thatIsMissingLeavesTheTableEmpty)
{
    SMBIOSTable table("/nonexistent/dump");
    expectEmpty(table);
    table.writeBytesToFile("/nonexistent/dump");
}

TEST_F(DumpFile, ofAnotherFormatEndsTheProcess)
{
    EXPECT_EXIT(readText("SMBIOS File Format=0x0002\n"), testing::ExitedWithCode(255), "");
    EXPECT_EXIT(readText("nothing of the kind"), testing::ExitedWithCode(255), "");
}

TEST(DumpToStandardOutput, showsTheRecordsInOrder)
{
    const auto table = parsed(TableBytes()
                                  .add(Structure(24, 5))
                                  .add(Structure(17, 27))
                                  .add(Structure(0, 19).string(4, "Vendor").byte(9, 3).dword(10, 0x10))
                                  .end());
    testing::internal::CaptureStdout();
    table->dump();
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(text.find("\n-SMBIOS Table -------------------------------\n   revision    : x23\n   numTables   : 4\n"),
              0u);
    EXPECT_NE(text.find("\n\nSMBIOS Header -----------------------------------------------------------\n   Type  : 0\n"
                        "   Length: x0013\nSMBIOS Table 0 Data - BIOS Information\n   Vendor            : >Vendor<"),
              std::string::npos);
    EXPECT_NE(text.find("\n   ROMSize           : 256Kb"), std::string::npos);
    EXPECT_NE(text.find("\n   Characteristics   : x00000010:00000000"), std::string::npos);
    EXPECT_NE(text.find("\n      isISASupported          : Yes"), std::string::npos);
    EXPECT_NE(text.find("\n      isMCASupported          : No"), std::string::npos);
    EXPECT_LT(text.find("Table 17 Data - Memory Device"), text.find("Table 24 Data - Hardware Security"));
    EXPECT_EQ(text.back(), '\n');
}

TEST(DumpToStandardOutput, hasATitleForEachTypeButTheTwoThatPrintNothing)
{
    TableBytes bytes;
    for (unsigned type : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 8U, 9U, 10U, 16U, 17U, 22U, 24U})
        bytes.add(Structure(type, 40));
    const auto table = parsed(bytes.end());
    testing::internal::CaptureStdout();
    table->dump();
    const std::string text = testing::internal::GetCapturedStdout();
    size_t at = 0;
    for (const char* title :
         {"0 Data - BIOS Information", "1 Data - System Information (ComponentID)",
          "2 Data - Base Board Information (Motherboard)", "3 Data - System Enclosure Information (Chassis)",
          "4 Data - Processor Information", "6 Data - Memory Module Information", "8 Data - Port Connector Information",
          "9 Data - System Slots Information", "10 Data - On Board Devices Information",
          "17 Data - Memory Device Information", "22 Data - Portable Battery",
          "24 Data - Hardware Security Information"}) {
        const size_t found = text.find(std::string("\nSMBIOS Table ") + title + "\n");
        EXPECT_NE(found, std::string::npos) << title;
        EXPECT_GT(found, at) << title;
        at = found;
    }
}

TEST(GlobalTable, isMadeOnceAndDeletedByTheLastUser)
{
    ASSERT_EQ(globalSMBIOSTable, nullptr);
    SMBIOSTable::initializeGlobalTable(1);
    const SMBIOSTable* const table = globalSMBIOSTable;
    ASSERT_NE(table, nullptr);
    SMBIOSTable::initializeGlobalTable(1);
    EXPECT_EQ(globalSMBIOSTable, table);
    SMBIOSTable::terminateGlobalTable();
    EXPECT_EQ(globalSMBIOSTable, table);
    SMBIOSTable::terminateGlobalTable();
    EXPECT_EQ(globalSMBIOSTable, nullptr);
    SMBIOSTable::terminateGlobalTable();
    EXPECT_EQ(globalSMBIOSTable, nullptr);
}

TEST(WalkTrace, showsEveryStructureAndTheBytesRoundItsType)
{
    const TableBytes bytes = TableBytes().add(Structure(2, 8).string(4, "A")).add(Structure(4, 26).byte(6, 0x0F)).end();
    SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, 4);
    const std::string general = logText(DEBUG_GENERAL, VEX_LEVEL_DETAIL, [&] { table.parseData(); });
    EXPECT_EQ(general, "\nSMBIOS cur=0000 type=  2 tables= 1 of  4 | 00 00 00 (02) 08 00 00"
                       "\nSMBIOS cur=000B type=  4 tables= 2 of  4 | 41 00 00 (04) 1A 00 00"
                       "\nSMBIOS cur=0027 type=127 tables= 3 of  4 | 00 00 00 (7F) 04 00 00"
                       "\nSMBIOS cur=0027 type=127 tables= 4 of  4 | 00 00 00 (7F) 04 00 00"
                       "\n");
    const std::string counts = logText(DEBUG_SMBIOS, VEX_LEVEL_MAIN, [&] { table.parseData(); });
    EXPECT_EQ(counts, "\nNumber of Table 4 = 1\nNumber of Table 4 Populated = 0\nTable 4 Family = 15");
}

TEST(WalkTrace, staysOnTheEndOfTableStructureUntilAllAreCounted)
{
    TableBytes bytes;
    bytes.end().add(Structure(2, 8));
    SMBIOSTable table(bytes.bytes().data(), bytes.length(), 0x23, 3);
    EXPECT_EQ(logText(DEBUG_SMBIOS, VEX_LEVEL_DETAIL, [&] { table.parseData(); }),
              "\nfound structure 127\nfound structure 127\nfound structure 127");
    EXPECT_EQ(logText(DEBUG_SMBIOS, VEX_LEVEL_MAIN, [&] { table.parseData(); }),
              "\nNumber of Table 4 = 0\nNumber of Table 4 Populated = 0");
}
