// RPM's headers, and the files that hold them.

#include <gtest/gtest.h>
#include <vector>

#include "host/packages/RpmDatabase.h"
#include "host/packages/RpmHeader.h"
#include "tests/unit/host/Tree.h"

#if __has_include(<sqlite3.h>)
#include <sqlite3.h>
#endif

using namespace host;

namespace
{
std::string big(uint32_t number)
{
    return {static_cast<char>(number >> 24), static_cast<char>(number >> 16), static_cast<char>(number >> 8),
            static_cast<char>(number)};
}

std::string little(uint32_t number)
{
    const std::string bytes = big(number);
    return {bytes.rbegin(), bytes.rend()};
}

// A header under construction.
class HeaderBytes
{
public:
    HeaderBytes& text(uint32_t tag, const std::string& value, uint32_t type = 6)
    {
        return add(tag, type, 1, value + '\0');
    }
    HeaderBytes& number(uint32_t tag, uint32_t value) { return add(tag, 4, 1, big(value)); }
    HeaderBytes& add(uint32_t tag, uint32_t type, uint32_t count, const std::string& value)
    {
        entries_ += big(tag) + big(type) + big(static_cast<uint32_t>(data_.size())) + big(count);
        data_ += value;
        return *this;
    }
    std::string bytes() const
    {
        return big(static_cast<uint32_t>(entries_.size() / 16)) + big(static_cast<uint32_t>(data_.size())) + entries_ +
               data_;
    }

private:
    std::string entries_, data_;
};

std::string bash()
{
    return HeaderBytes()
        .add(63, 7, 16, std::string(16, 'r')) // the region that is signed
        .text(1000, "bash")
        .text(1001, "5.1.8")
        .text(1002, "9.el9")
        .number(1003, 1)
        .number(1008, 1700000000)
        .number(1009, 7738634)
        .text(1011, "A Vendor")
        .text(1015, "A Packager")
        .text(1016, "Shells", 9)
        .text(1022, "x86_64")
        .text(1044, "bash-5.1.8-9.el9.src.rpm")
        .bytes();
}

// A file of slots and the headers in them.
std::string ndb(const std::vector<std::string>& headers)
{
    std::string slots = "RpmP" + little(0) + little(7) + little(1) + little(99) + std::string(12, '\0');
    std::string blobs;
    uint32_t package = 0;
    for (const std::string& header : headers) {
        std::string blob =
            "BlbS" + little(++package) + little(7) + little(static_cast<uint32_t>(header.size())) + header;
        blob.resize((blob.size() + 12 + 15) / 16 * 16);
        slots += "Slot" + little(package) + little(static_cast<uint32_t>(4096 + blobs.size()) / 16) +
                 little(static_cast<uint32_t>(blob.size()) / 16);
        blobs += blob;
    }
    while (slots.size() < 4096)
        slots += "Slot" + std::string(12, '\0');
    return slots + blobs;
}

std::vector<std::string> ndbHeaders(std::string_view database, std::string* trouble = nullptr)
{
    std::vector<std::string> headers;
    const std::string told = readRpmNdb(database, [&](std::string_view header) { headers.emplace_back(header); });
    if (trouble != nullptr)
        *trouble = told;
    return headers;
}
} // namespace

TEST(RpmHeader, tellsWhatThePackageSays)
{
    const auto package = parseRpmHeader(bash());
    ASSERT_TRUE(package);
    const Package views = package->package();
    EXPECT_EQ(views.name, "bash");
    EXPECT_EQ(views.version, "1:5.1.8");
    EXPECT_EQ(views.revision, "9.el9");
    EXPECT_EQ(views.architecture, "x86_64");
    EXPECT_EQ(views.vendor, "A Vendor");
    EXPECT_EQ(views.category, "Shells");
    EXPECT_EQ(views.sourcePackage, "bash-5.1.8-9.el9.src.rpm");
    EXPECT_EQ(views.installedKB, 7558U);
    EXPECT_EQ(views.installDate, 1700000000);
}

TEST(RpmHeader, takesWhatIsThere)
{
    const auto package = parseRpmHeader(HeaderBytes()
                                            .text(1000, "big")
                                            .text(1001, "1")
                                            .text(1015, "A Packager")
                                            .number(1009, 5)
                                            .add(5009, 5, 1, big(2) + big(0)) // more than 32 bits say
                                            .number(1011, 7)                  // no text
                                            .text(1008, "now")                // no number
                                            .bytes());
    ASSERT_TRUE(package);
    EXPECT_EQ(package->version, "1");
    EXPECT_EQ(package->release, "");
    EXPECT_EQ(package->vendor, "A Packager");
    EXPECT_EQ(package->installedKB, uint64_t{8} << 20);
    EXPECT_FALSE(package->installDate);
}

TEST(RpmHeader, cutOrForgedIsNone)
{
    const std::string whole = bash();
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(parseRpmHeader(std::string(whole, 0, size))) << size;
    for (size_t at = 0; at < 8; ++at) {
        std::string forged = whole;
        forged[at] = '\xFF';
        EXPECT_FALSE(parseRpmHeader(forged)) << at;
    }
    EXPECT_FALSE(parseRpmHeader(HeaderBytes().text(1000, "a").bytes()));
    EXPECT_FALSE(parseRpmHeader(HeaderBytes().text(1001, "1").add(1000, 6, 1, "no end").bytes()));
    EXPECT_FALSE(parseRpmHeader(HeaderBytes().text(1001, "1").add(1000, 6, 0, std::string("a\0", 2)).bytes()));
}

TEST(RpmHeader, entriesBeyondTheDataAreNone)
{
    std::string forged = HeaderBytes().text(1000, "a").text(1001, "1").text(1022, "x").bytes();
    forged.replace(8 + 2 * 16 + 8, 4, big(0xFFFFFFF0));
    ASSERT_TRUE(parseRpmHeader(forged));
    EXPECT_EQ(parseRpmHeader(forged)->architecture, "");
}

TEST(RpmNdb, headersStandWhereSlotsSay)
{
    EXPECT_EQ(ndbHeaders(ndb({"one", bash(), ""})), (std::vector<std::string>{"one", bash(), ""}));
    EXPECT_EQ(ndbHeaders(ndb({})), std::vector<std::string>{});
}

TEST(RpmNdb, slotsThatLieAreLeftOut)
{
    const std::string whole = ndb({"one", "two"});
    const auto with = [&](size_t at, const std::string& bytes) {
        return std::string(whole).replace(at, bytes.size(), bytes);
    };
    constexpr size_t kSecond = 48, kBlob = 4096;
    const std::vector<std::string> both{"one", "two"}, first{"one"}, second{"two"};
    EXPECT_EQ(ndbHeaders(whole), both);
    EXPECT_EQ(ndbHeaders(with(kSecond, "Slop")), first);
    EXPECT_EQ(ndbHeaders(with(kSecond + 4, little(1))), first); // not the package that the header is of
    EXPECT_EQ(ndbHeaders(with(kSecond + 8, little(0xFFFFFFFF))), first);
    EXPECT_EQ(ndbHeaders(with(kSecond + 12, little(0xFFFFFFFF))), first);
    EXPECT_EQ(ndbHeaders(with(kSecond + 12, little(0))), first);
    EXPECT_EQ(ndbHeaders(with(kBlob, "BlbX")), second);
    EXPECT_EQ(ndbHeaders(with(kBlob + 12, little(17))), second); // longer than its blocks
}

TEST(RpmNdb, anotherFileTellsWhy)
{
    std::string trouble;
    for (const std::string& bytes : {std::string(), std::string("RpmP"), std::string(8192, 'x')}) {
        ndbHeaders(bytes, &trouble);
        EXPECT_EQ(trouble, "no RPM database");
    }
    ndbHeaders(ndb({"one"}).replace(12, 4, little(0xFFFFFFFF)), &trouble);
    EXPECT_EQ(trouble, "its slots are not in it");
}

#if __has_include(<sqlite3.h>)
namespace
{
std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A database as RPM makes it, with a log that has what came last.
class SqliteDatabase
{
public:
    explicit SqliteDatabase(const char* mode = "WAL")
    {
        sqlite3_open(path().c_str(), &database_);
        run("PRAGMA journal_mode = " + std::string(mode) + "; PRAGMA wal_autocheckpoint = 0");
        run("CREATE TABLE Packages (hnum INTEGER PRIMARY KEY AUTOINCREMENT, blob BLOB NOT NULL)");
    }
    ~SqliteDatabase() { sqlite3_close(database_); }
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    void run(const std::string& statements)
    {
        char* error = nullptr;
        EXPECT_EQ(sqlite3_exec(database_, statements.c_str(), nullptr, nullptr, &error), SQLITE_OK) << error;
    }
    void add(const std::string& header) { run("INSERT INTO Packages (blob) VALUES (CAST('" + header + "' AS BLOB))"); }

    std::string path() const { return tree_.at("/rpmdb.sqlite"); }
    std::string bytes() const { return contentOf(path()); }
    std::string log() const { return contentOf(path() + "-wal"); }

private:
    Tree tree_;
    sqlite3* database_ = nullptr;
};

std::vector<std::string> sqliteHeaders(std::string database, std::string_view log, std::string* trouble = nullptr)
{
    std::vector<std::string> headers;
    const std::string told =
        readRpmSqlite(database, log, [&](std::string_view header) { headers.emplace_back(header); });
    if (trouble != nullptr)
        *trouble = told;
    else
        EXPECT_EQ(told, "");
    return headers;
}
} // namespace

TEST(RpmSqlite, headersAreTheTablesBlobs)
{
    for (const char* mode : {"WAL", "DELETE"}) {
        SqliteDatabase database(mode);
        database.add("one");
        database.add(std::string(100'000, 'x'));
        database.run("PRAGMA wal_checkpoint(TRUNCATE)");
        EXPECT_EQ(sqliteHeaders(database.bytes(), ""), (std::vector<std::string>{"one", std::string(100'000, 'x')}))
            << mode;
    }
}

TEST(RpmSqlite, whatStandsInTheLogAloneIsReadToo)
{
    SqliteDatabase database;
    database.add("one");
    database.run("PRAGMA wal_checkpoint(TRUNCATE)");
    database.add("two");
    database.add(std::string(50'000, 'y'));
    database.run("DELETE FROM Packages WHERE hnum = 1");
    const std::string bytes = database.bytes(), log = database.log();
    ASSERT_GT(log.size(), 50'000U);
    EXPECT_EQ(sqliteHeaders(bytes, ""), std::vector<std::string>{"one"});
    EXPECT_EQ(sqliteHeaders(bytes, log), (std::vector<std::string>{"two", std::string(50'000, 'y')}));
}

TEST(RpmSqlite, ofALogWholeTransactionsCount)
{
    SqliteDatabase database;
    database.add("one");
    database.run("PRAGMA wal_checkpoint(TRUNCATE)");
    const std::string bytes = database.bytes();
    database.add("two");
    const size_t first = database.log().size();
    database.add("three");
    const std::string log = database.log();
    const std::vector<std::string> before{"one", "two"};
    for (size_t size = first; size < log.size(); size += 61)
        EXPECT_EQ(sqliteHeaders(bytes, std::string_view(log).substr(0, size)), before) << size;
    std::string damaged = log;
    damaged[log.size() - 1] = static_cast<char>(damaged[log.size() - 1] + 1);
    EXPECT_EQ(sqliteHeaders(bytes, damaged), before);
    damaged = log;
    damaged[first + 8] = static_cast<char>(damaged[first + 8] + 1); // of an older log
    EXPECT_EQ(sqliteHeaders(bytes, damaged), before);
    damaged[25] = static_cast<char>(damaged[25] + 1); // the head's own sum
    EXPECT_EQ(sqliteHeaders(bytes, damaged), std::vector<std::string>{"one"});
}

TEST(RpmSqlite, nothingIsWrittenBesideIt)
{
    SqliteDatabase database("DELETE");
    database.add("one");
    Tree tree;
    const std::string was = std::filesystem::current_path();
    std::filesystem::current_path(tree.folder());
    EXPECT_EQ(sqliteHeaders(database.bytes(), "").size(), 1U);
    EXPECT_TRUE(std::filesystem::is_empty(tree.folder()));
    std::filesystem::current_path(was);
}

TEST(RpmSqlite, anotherDatabaseTellsWhy)
{
    std::string trouble;
    for (const std::string& bytes : {std::string(), std::string("SQLite format 3\0", 16), std::string(4096, 'x')}) {
        EXPECT_TRUE(sqliteHeaders(bytes, "", &trouble).empty());
        EXPECT_EQ(trouble, "no SQLite database");
    }
    SqliteDatabase other("DELETE");
    other.run("DROP TABLE Packages");
    EXPECT_TRUE(sqliteHeaders(other.bytes(), "", &trouble).empty());
    EXPECT_EQ(trouble, "no such table: Packages");
    // A view that would run for ever.
    other.run("CREATE VIEW Packages AS WITH RECURSIVE c(hnum, blob) AS (SELECT 1, 'x' UNION ALL SELECT hnum + 1, blob "
              "FROM c) "
              "SELECT * FROM c");
    EXPECT_TRUE(sqliteHeaders(other.bytes(), "", &trouble).empty());
    EXPECT_NE(trouble, "");
}

TEST(RpmSqlite, damageHarmsNobody)
{
    SqliteDatabase database("DELETE");
    for (int i = 0; i < 50; ++i)
        database.add(std::string(500, static_cast<char>('a' + i % 26)));
    const std::string whole = database.bytes();
    std::string trouble;
    for (size_t at = 0; at < whole.size(); at += 37) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(~damaged[at]);
        sqliteHeaders(damaged, "", &trouble);
    }
    for (size_t size = 0; size < whole.size(); size += 997)
        sqliteHeaders(whole.substr(0, size), "", &trouble);
}
#endif
