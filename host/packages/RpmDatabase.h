#pragma once

#include <functional>
#include <string>
#include <string_view>

// The forms of RPM's database, each as bytes of its files.

namespace host
{
/// Called for the header of each installed package, as parseRpmHeader() takes it.
using TakeHeader = std::function<void(std::string_view header)>;

/// The older file of SUSE's (Packages.db): slots of 16 bytes that say where the headers stand. Slots and headers that
/// do not lie in the bytes, or do not name each other, are left out. Returns why nothing could be read, else an empty
/// text.
std::string readRpmNdb(std::string_view database, const TakeHeader& take);

/// rpmdb.sqlite, with the changes that its log (rpmdb.sqlite-wal) has and it not yet. The database is read where it is
/// in memory: no file is opened or made. Its bytes are changed: the log's pages and the mark that there is none go into
/// it. Returns why it was not read to its end, else an empty text; of a build without SQLite it tells that.
std::string readRpmSqlite(std::string& database, std::string_view log, const TakeHeader& take);

/// Brings the pages of the log's whole transactions into a database. Pages of an older log, and those from the first
/// one on that is damaged, are left out, as SQLite does.
void applySqliteLog(std::string& database, std::string_view log);
} // namespace host
