#include "host/TimeZone.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;
using report::DateTime;

static constexpr const char* kZones = "/usr/share/zoneinfo";
static constexpr int64_t kFirst = 0;
static constexpr int64_t kLast = 4102444800; // 2100-01-01

static std::string content(const std::string& path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

static DateTime byLibrary(time_t seconds)
{
    tm local{};
    localtime_r(&seconds, &local);
    DateTime time;
    time.year = local.tm_year + 1900;
    time.month = static_cast<uint8_t>(local.tm_mon + 1);
    time.day = static_cast<uint8_t>(local.tm_mday);
    time.hour = static_cast<uint8_t>(local.tm_hour);
    time.minute = static_cast<uint8_t>(local.tm_min);
    time.second = static_cast<uint8_t>(local.tm_sec);
    time.offsetSeconds = static_cast<int32_t>(local.tm_gmtoff);
    return time;
}

static std::string print(const DateTime& time)
{
    std::ostringstream text;
    text << time.year << '-' << +time.month << '-' << +time.day << ' ' << +time.hour << ':' << +time.minute << ':'
         << +time.second << ' ' << time.offsetSeconds.value_or(-1);
    return text.str();
}

// The first second after begin, until end, whose offset differs from begin's.
static time_t changeBetween(time_t begin, time_t end)
{
    const auto offset = byLibrary(begin).offsetSeconds;
    while (end - begin > 1) {
        const time_t middle = begin + (end - begin) / 2;
        (byLibrary(middle).offsetSeconds == offset ? begin : end) = middle;
    }
    return end;
}

// Compares every ten days, and the seconds round every change of the offset. Returns the number of comparisons.
static int compareZone(const std::string& path)
{
    const TimeZone zone = TimeZone::parse(content(path));
    setenv("TZ", (":" + path).c_str(), 1);
    tzset();
    constexpr time_t kStep = 10 * 86400 + 12345;
    int compared = 0;
    const auto compare = [&](time_t time) {
        ++compared;
        const DateTime ours = zone.local(time);
        const DateTime theirs = byLibrary(time);
        EXPECT_EQ(print(ours), print(theirs)) << path << " at " << time;
        return ours == theirs;
    };
    for (time_t time = kFirst; time < kLast; time += kStep) {
        bool isSame = compare(time);
        if (byLibrary(time).offsetSeconds != byLibrary(time + kStep).offsetSeconds) {
            const time_t change = changeBetween(time, time + kStep);
            isSame = compare(change - 1) && compare(change) && isSame;
        }
        if (!isSame)
            return compared; // one difference of a zone tells enough
    }
    return compared;
}

static std::vector<std::string> zoneFiles(const std::string& folder)
{
    std::vector<std::string> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error))
        if (entry.is_regular_file() && content(entry.path()).starts_with("TZif"))
            files.push_back(entry.path());
    return files;
}

class EveryZone : public testing::TestWithParam<const char*>
{
protected:
    ~EveryZone() override
    {
        unsetenv("TZ");
        tzset();
    }
};

INSTANTIATE_TEST_SUITE_P(TimeZone, EveryZone,
                         testing::Values("Africa", "America", "Antarctica", "Asia", "Atlantic", "Australia", "Europe",
                                         "Etc", "Indian", "Pacific", "right/Africa", "right/America", "right/Europe"),
                         [](const auto& folder) {
                             std::string name = folder.param;
                             std::replace(name.begin(), name.end(), '/', '_');
                             return name;
                         });

TEST_P(EveryZone, isAsTheLibrarySays)
{
    const std::vector<std::string> files = zoneFiles(std::string(kZones) + "/" + GetParam());
    if (files.empty())
        GTEST_SKIP() << "no time zones are installed";
    for (const std::string& path : files)
        EXPECT_GT(compareZone(path), 4000) << path;
}

TEST(TimeZone, withoutAFileItIsUtc)
{
    Tree tree;
    Notes notes;
    const TimeZone zone = TimeZone::of(Root(tree.folder(), notes));
    EXPECT_EQ(print(zone.local(0)), "1970-1-1 0:0:0 0");
    EXPECT_EQ(print(zone.local(951868799)), "2000-2-29 23:59:59 0");
    EXPECT_EQ(print(zone.local(-1)), "1969-12-31 23:59:59 0");
    EXPECT_EQ(print(zone.local(INT64_MIN)), "1-1-1 0:0:0 0");
    EXPECT_EQ(print(zone.local(INT64_MAX)), "9998-12-31 23:59:59 0");
    EXPECT_EQ(zone.standardName(), "UTC");
    EXPECT_EQ(zone.standardOffset(), 0);
    EXPECT_FALSE(zone.hasDaylight());
    EXPECT_EQ(notes.text(), "");
}

// A whole file of version 2 with a rule and no transition.
static std::string ruled(const std::string& rule)
{
    std::string block = "TZif2" + std::string(15, '\0');
    for (const char count : {'\0', '\0', '\0', '\0', '\1', '\4'}) // one type, four characters of names
        block.append(3, '\0').append(1, count);
    block += std::string(6, '\0') + "LMT" + '\0';
    return block + block + "\n" + rule + "\n";
}

TEST(TimeZone, aRecordingsZoneIsItsOwn)
{
    Tree tree;
    tree.file("/usr/share/zoneinfo/Europe/Berlin", ruled("CET-1CEST,M3.5.0,M10.5.0/3"));
    tree.link("/etc/localtime", "/usr/share/zoneinfo/Europe/Berlin");
    setenv("TZ", "Asia/Tokyo", 1);
    Notes notes;
    const TimeZone zone = TimeZone::of(Root(tree.folder(), notes));
    unsetenv("TZ");
    EXPECT_EQ(print(zone.local(1751371200)), "2025-7-1 14:0:0 7200");
    EXPECT_EQ(print(zone.local(1735732800)), "2025-1-1 13:0:0 3600");
    EXPECT_EQ(zone.standardName(), "CET");
    EXPECT_EQ(zone.daylightName(), "CEST");
    EXPECT_EQ(zone.standardOffset(), 3600);
    EXPECT_TRUE(zone.hasDaylight());
}

TEST(TimeZone, rulesOfEveryForm)
{
    const struct {
        const char* rule;
        int64_t seconds;
        const char* local;
    } cases[] = {
        {"<+0545>-5:45", 0, "1970-1-1 5:45:0 20700"},
        {"XXX12:34:56", 0, "1969-12-31 11:25:4 -45296"},
        {"EST5EDT,M3.2.0,M11.1.0", 1741503599, "2025-3-9 1:59:59 -18000"},
        {"EST5EDT,M3.2.0,M11.1.0", 1741503600, "2025-3-9 3:0:0 -14400"},
        {"EST5EDT,M3.2.0,M11.1.0", 1762063199, "2025-11-2 1:59:59 -14400"},
        {"EST5EDT,M3.2.0,M11.1.0", 1762063200, "2025-11-2 1:0:0 -18000"},
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 1743296399, "2025-3-29 22:59:59 -7200"},
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 1743296400, "2025-3-30 0:0:0 -3600"},
        {"NZST-12NZDT,M9.5.0,M4.1.0/3", 1735689600, "2025-1-1 13:0:0 46800"}, // from October to April
        {"AAA0BBB,J60/0,J300/0", 1709251199, "2024-2-29 23:59:59 0"},         // 60 is 1 March in leap years too
        {"AAA0BBB,J60/0,J300/0", 1709251200, "2024-3-1 1:0:0 3600"},
        {"AAA0BBB,59/0,300/0", 1709164800, "2024-2-29 1:0:0 3600"}, // and 59 is 29 February
        {"IST-1GMT0,M10.5.0,M3.5.0/1", 1735732800, "2025-1-1 12:0:0 0"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(print(TimeZone::parse(ruled(one.rule)).local(one.seconds)), one.local) << one.rule;
}

TEST(TimeZone, whatIsNoRuleIsNone)
{
    for (const char* rule :
         {"", "X1", "XXX", "XXX25", "XXX1YYY,M3.2.0", "XXX1YYY,M13.1.0,M1.1.0", "XXX1YYY,M3.0.0,M4.1.0",
          "XXX1YYY,M3.1.7,M4.1.0", "XXX1YYY,J0,J1", "XXX1YYY,366,1", "XXX1YYY,M3.1.0/168,M4.1.0", "<XXX1",
          "XXX1YYY,M3.1.0,M4.1.0 ", "XXX1:60", "XXX99999999999999999999", "XXX1YY"}) {
        EXPECT_FALSE(parseZoneRule(rule)) << rule;
        EXPECT_EQ(TimeZone::parse(ruled(rule)).standardName(), "LMT") << rule;
    }
    EXPECT_EQ(TimeZone::parse(ruled("EST5EDT")).standardName(), "LMT"); // files tell the dates
    EXPECT_FALSE(parseZoneRule(std::string(100'000, '<')));
}

// Cut anywhere, or with any byte changed, a file is UTC or a zone, and no read leaves it.
TEST(TimeZone, aBrokenFileIsSurvived)
{
    const std::string whole = ruled("CET-1CEST,M3.5.0,M10.5.0/3");
    for (size_t size = 0; size < whole.size() - 1; ++size)
        EXPECT_NE(TimeZone::parse(std::string(whole, 0, size)).standardName(), "CET") << size;
    for (size_t at = 0; at < whole.size(); ++at)
        for (const char byte : {'\0', '\x7F', '\xFF'}) {
            std::string broken = whole;
            broken[at] = byte;
            EXPECT_LE(std::abs(*TimeZone::parse(broken).local(0).offsetSeconds), 26 * 3600) << at;
        }
}
