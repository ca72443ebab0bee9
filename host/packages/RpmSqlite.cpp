#include <memory>

#include "host/packages/RpmDatabase.h"

#ifdef INVHW_SQLITE
#include <sqlite3.h>
#endif

namespace host
{
namespace
{
constexpr size_t kLogHeader = 32, kFrameHeader = 24; // bytes; their numbers are big-endian
constexpr uint32_t kLogMagic = 0x377F0682;           // its last bit: the checksums' numbers are big-endian

uint32_t bigAt(std::string_view bytes, size_t offset)
{
    uint32_t word = 0;
    for (size_t i = 0; i < 4; ++i)
        word = word << 8 | static_cast<uint8_t>(bytes[offset + i]);
    return word;
}

// The sum of pairs of numbers that SQLite's log keeps of all before.
struct LogSum {
    uint32_t first = 0, second = 0;

    void add(std::string_view bytes, bool isBig)
    {
        for (size_t i = 0; i + 8 <= bytes.size(); i += 8) {
            first += number(bytes, i, isBig) + second;
            second += number(bytes, i + 4, isBig) + first;
        }
    }
    bool isAt(std::string_view bytes, size_t offset) const
    {
        return bigAt(bytes, offset) == first && bigAt(bytes, offset + 4) == second;
    }

private:
    static uint32_t number(std::string_view bytes, size_t offset, bool isBig)
    {
        const uint32_t big = bigAt(bytes, offset);
        return isBig ? big : __builtin_bswap32(big);
    }
};

// A page's place in the database: its number counts from 1.
void putPage(std::string& database, std::string_view page, uint32_t number, size_t mostBytes)
{
    const uint64_t begin = (uint64_t{number} - 1) * page.size();
    if (number == 0 || begin + page.size() > mostBytes)
        return;
    if (database.size() < begin + page.size())
        database.resize(begin + page.size());
    database.replace(begin, page.size(), page);
}

// Bytes of the log up to the end of the last whole transaction, whose last frame tells the database's size in pages.
size_t wholeFrames(std::string_view log, size_t frame, bool isBig, uint32_t* pages)
{
    LogSum sum;
    size_t whole = kLogHeader;
    sum.add(log.substr(0, 24), isBig);
    if (!sum.isAt(log, 24))
        return whole;
    for (size_t at = kLogHeader; frame <= log.size() - at; at += frame) {
        sum.add(log.substr(at, 8), isBig);
        sum.add(log.substr(at + kFrameHeader, frame - kFrameHeader), isBig);
        if (log.substr(at + 8, 8) != log.substr(16, 8) || !sum.isAt(log, at + 16))
            break;
        if (const uint32_t size = bigAt(log, at + 4); size != 0) {
            whole = at + frame;
            *pages = size;
        }
    }
    return whole;
}
} // namespace

void applySqliteLog(std::string& database, std::string_view log)
{
    constexpr size_t kMostGrowth = 4; // times what the files have: pages may come in any order
    if (log.size() < kLogHeader || (bigAt(log, 0) & ~1U) != kLogMagic)
        return;
    const size_t page = bigAt(log, 8);
    if (page < 512 || page > 65536 || (page & (page - 1)) != 0)
        return;
    uint32_t pages = 0;
    const size_t frame = kFrameHeader + page;
    const size_t end = wholeFrames(log, frame, (bigAt(log, 0) & 1) != 0, &pages);
    const size_t most = kMostGrowth * (database.size() + log.size());
    for (size_t at = kLogHeader; at < end; at += frame)
        putPage(database, log.substr(at + kFrameHeader, page), bigAt(log, at), most);
    if (pages != 0 && uint64_t{pages} * page < database.size())
        database.resize(uint64_t{pages} * page);
}

#ifdef INVHW_SQLITE
namespace
{
using Connection = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

constexpr int kStepsBetweenLooks = 100'000;
constexpr int kMostLooks = 2000; // 200 million steps of SQLite's machine: what no honest database needs
constexpr int kMostHeader = 64 << 20;

int isTooLong(void* looks)
{
    return ++*static_cast<int*>(looks) > kMostLooks ? 1 : 0;
}

// The database may come from anybody: its own views and functions are not trusted.
void distrust(sqlite3& connection, int* looks)
{
    sqlite3_db_config(&connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(&connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(&connection, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(&connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_limit(&connection, SQLITE_LIMIT_LENGTH, kMostHeader);
    sqlite3_limit(&connection, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_progress_handler(&connection, kStepsBetweenLooks, isTooLong, looks);
}

// A database in memory has no log: the header's two bytes that ask for one are those of a database without.
void askForNoLog(std::string& database)
{
    constexpr size_t kWriteForm = 18, kReadForm = 19;
    database[kWriteForm] = database[kReadForm] = 1;
}

std::string readHeaders(sqlite3& connection, const TakeHeader& take)
{
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(&connection, "SELECT blob FROM Packages ORDER BY hnum", -1, &prepared, nullptr);
    const Statement statement(prepared, sqlite3_finalize);
    while (result == SQLITE_OK || result == SQLITE_ROW) {
        result = sqlite3_step(statement.get());
        if (result != SQLITE_ROW)
            break;
        const void* bytes = sqlite3_column_blob(statement.get(), 0);
        if (bytes != nullptr)
            take({static_cast<const char*>(bytes), static_cast<size_t>(sqlite3_column_bytes(statement.get(), 0))});
    }
    return result == SQLITE_DONE ? "" : sqlite3_errmsg(&connection);
}
} // namespace

std::string readRpmSqlite(std::string& database, std::string_view log, const TakeHeader& take)
{
    constexpr size_t kSmallest = 512;
    applySqliteLog(database, log);
    if (database.size() < kSmallest || !database.starts_with(std::string_view("SQLite format 3\0", 16)))
        return "no SQLite database";
    askForNoLog(database);
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(":memory:", &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
    const Connection connection(opened, sqlite3_close);
    if (result != SQLITE_OK)
        return sqlite3_errstr(result);
    int looks = 0;
    distrust(*connection, &looks);
    const auto size = static_cast<sqlite3_int64>(database.size());
    const int taken = sqlite3_deserialize(connection.get(), "main", reinterpret_cast<unsigned char*>(database.data()),
                                          size, size, SQLITE_DESERIALIZE_READONLY);
    return taken == SQLITE_OK ? readHeaders(*connection, take) : sqlite3_errstr(taken);
}
#else
std::string readRpmSqlite(std::string&, std::string_view, const TakeHeader&)
{
    return "this program was built without SQLite";
}
#endif
} // namespace host
