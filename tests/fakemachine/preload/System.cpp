// What the machine says about itself: names, counts, clock, file-system sizes, logins, reverse look-ups.

#include <arpa/inet.h>
#include <cerrno>
#include <clocale>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <netdb.h>
#include <sstream>
#include <sys/mman.h>
#include <sys/statvfs.h>
#include <sys/sysinfo.h>
#include <sys/time.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utmp.h>

#include "preload/Calls.h"
#include "preload/Export.h"
#include "preload/Machine.h"
#include "preload/Text.h"

using namespace fakemachine;

// A machine without a clock setting stands at 2001-09-09 01:46:40 UTC.
static constexpr int64_t kDefaultClock = 1000000000;
static constexpr int kDefaultPageSize = 4096;

static const MachineConf& conf()
{
    return Machine::instance().conf();
}

FAKE(int, uname, utsname* names)
{
    Call call("uname");
    if (call.fails())
        return -1;
    if (!conf().uname)
        return fails(EFAULT);
    *names = *conf().uname;
    return 0;
}

static uint64_t numberOf(const Numbers& numbers, const char* name, uint64_t fallback)
{
    const auto found = numbers.find(name);
    return found == numbers.end() ? fallback : found->second;
}

// The fields of a 32-bit build hold what fits; a machine.conf for both builds gives such numbers.
FAKE(int, sysinfo, struct sysinfo* info)
{
    Call call("sysinfo");
    if (call.fails())
        return -1;
    if (!conf().sysinfo)
        return fails(EFAULT);
    const auto number = [](const char* name, uint64_t fallback = 0) {
        return static_cast<unsigned long>(numberOf(*conf().sysinfo, name, fallback));
    };
    *info = {};
    info->uptime = static_cast<long>(number("uptime"));
    info->totalram = number("totalram");
    info->freeram = number("freeram");
    info->sharedram = number("sharedram");
    info->bufferram = number("bufferram");
    info->totalswap = number("totalswap");
    info->freeswap = number("freeswap");
    info->totalhigh = number("totalhigh");
    info->freehigh = number("freehigh");
    info->procs = static_cast<unsigned short>(number("procs"));
    info->mem_unit = static_cast<unsigned>(number("mem_unit", 1));
    return 0;
}

FAKE(int, get_nprocs)
{
    Call call("get_nprocs");
    return conf().processors.value_or(1);
}

FAKE(int, get_nprocs_conf)
{
    Call call("get_nprocs_conf");
    return conf().configuredProcessors.value_or(conf().processors.value_or(1));
}

// A sanitizer's runtime asks for the page size while it starts, before this library's constructors, when there is no
// environment to find the machine by. The program does not run before them.
static bool ready = false;

__attribute__((constructor)) static void becomeReady()
{
    ready = true;
}

FAKE(int, getpagesize)
{
    if (!ready)
        return kDefaultPageSize;
    static auto* const real = realFunction<int()>("getpagesize");
    if (!hasSettings())
        return real();
    Call call("getpagesize");
    return conf().pageSize.value_or(kDefaultPageSize);
}

FAKE(long, sysconf, int name)
{
    static auto* const real = realFunction<long(int)>("sysconf");
    switch (name) {
    case _SC_NPROCESSORS_ONLN:
        return fake_get_nprocs();
    case _SC_NPROCESSORS_CONF:
        return fake_get_nprocs_conf();
    default:
        return real(name);
    }
}

template <typename Status>
static int fileSystemStatus(const char* path, Status* status, const char* realName)
{
    Call call("statvfs", path);
    if (call.fails())
        return -1;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (where.place == Place::Real)
        return realFunction<int(const char*, Status*)>(realName)(path, status);
    if (const int error = machine.errorOf("statvfs", where); error != 0)
        return fails(error);
    const auto found = conf().fileSystems.find(where.name);
    if (found == conf().fileSystems.end())
        return fails(ENOENT);
    const Numbers& numbers = found->second;
    *status = {};
    status->f_bsize = static_cast<unsigned long>(numberOf(numbers, "bsize", kDefaultPageSize));
    status->f_frsize = static_cast<unsigned long>(numberOf(numbers, "frsize", status->f_bsize));
    status->f_blocks = static_cast<decltype(status->f_blocks)>(numberOf(numbers, "blocks", 0));
    status->f_bfree = static_cast<decltype(status->f_bfree)>(numberOf(numbers, "bfree", 0));
    status->f_bavail = static_cast<decltype(status->f_bavail)>(numberOf(numbers, "bavail", status->f_bfree));
    status->f_files = static_cast<decltype(status->f_files)>(numberOf(numbers, "files", 0));
    status->f_ffree = static_cast<decltype(status->f_ffree)>(numberOf(numbers, "ffree", 0));
    status->f_favail = status->f_ffree;
    status->f_namemax = static_cast<unsigned long>(numberOf(numbers, "namemax", 255));
    return 0;
}

FAKE(int, statvfs, const char* path, struct statvfs* status)
{
    return fileSystemStatus(path, status, "statvfs");
}

FAKE(int, statvfs64, const char* path, struct statvfs64* status)
{
    return fileSystemStatus(path, status, "statvfs64");
}

// The C library's resolver asserts that it can keep the names of the search list.
static void requireShortSearchList()
{
    constexpr size_t LONGEST_NAME = 255;
    if (getenv("LOCALDOMAIN") != nullptr)
        return;
    const Location where = Machine::instance().locate("/etc/resolv.conf");
    for (const std::string& line : splitLines(readWhole(where.path).value_or(""))) {
        std::istringstream words(line);
        std::string word;
        if (words >> word && (word == "search" || word == "domain"))
            while (words >> word)
                if (word.size() > LONGEST_NAME)
                    abort();
    }
}

// Seconds that look-ups have taken, all in no time.
static int64_t secondsOfLookups = 0;

FAKE(hostent*, gethostbyaddr, const void* address, socklen_t length, int family)
{
    static hostent entry;
    static std::string name;
    static char* noNames[] = {nullptr};
    static in_addr answer;
    static char* addresses[] = {reinterpret_cast<char*>(&answer), nullptr};
    char dotted[INET_ADDRSTRLEN] = "";
    if (family == AF_INET && length == sizeof answer) {
        memcpy(&answer, address, sizeof answer);
        inet_ntop(AF_INET, &answer, dotted, sizeof dotted);
    }
    Call call("gethostbyaddr", dotted);
    requireShortSearchList();
    secondsOfLookups += conf().hostSeconds;
    const auto found = conf().hosts.find(dotted);
    if (call.fails() || found == conf().hosts.end()) {
        h_errno = HOST_NOT_FOUND;
        return nullptr;
    }
    name = found->second;
    entry = {name.data(), noNames, AF_INET, sizeof answer, addresses};
    return &entry;
}

// The login records are written to a file in memory, which the C library's own functions then read: what they accept is
// what they accept on a real machine.
static void useMachineLogins()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    static auto* const realWrite = realFunction<ssize_t(int, const void*, size_t)>("write");
    const int file = conf().logins.empty() ? -1 : memfd_create("logins", MFD_CLOEXEC);
    if (file < 0) {
        utmpname("/proc/self/no-logins");
        return;
    }
    for (const Login& login : conf().logins) {
        utmp record{};
        record.ut_type = static_cast<short>(login.type);
        strncpy(record.ut_line, login.line.c_str(), sizeof record.ut_line);
        strncpy(record.ut_id, login.id.c_str(), sizeof record.ut_id);
        strncpy(record.ut_user, login.user.c_str(), sizeof record.ut_user);
        record.ut_tv.tv_sec = static_cast<decltype(record.ut_tv.tv_sec)>(login.seconds);
        if (realWrite(file, &record, sizeof record) != sizeof record)
            fail({"machine.conf", 0}, "cannot write login records");
    }
    utmpname(("/proc/self/fd/" + std::to_string(file)).c_str());
}

FAKE(void, setutent)
{
    static auto* const real = realFunction<void()>("setutent");
    Call call("setutent");
    useMachineLogins();
    real();
}
FAKE_ALIAS(void, setutxent, setutent)

FAKE(utmp*, getutid, const utmp* key)
{
    static auto* const real = realFunction<utmp*(const utmp*)>("getutid");
    Call call("getutid");
    useMachineLogins();
    return call.fails() ? nullptr : real(key);
}
FAKE_ALIAS(utmp*, getutxid, getutid, const utmp*)

FAKE(utmp*, getutent)
{
    static auto* const real = realFunction<utmp*()>("getutent");
    Call call("getutent");
    useMachineLogins();
    return call.fails() ? nullptr : real();
}
FAKE_ALIAS(utmp*, getutxent, getutent)

FAKE(void, endutent)
{
    static auto* const real = realFunction<void()>("endutent");
    Call call("endutent");
    real();
}
FAKE_ALIAS(void, endutxent, endutent)

static int64_t now()
{
    return conf().clock.value_or(kDefaultClock);
}

FAKE(time_t, time, time_t* out)
{
    Call call("time");
    const time_t seconds = static_cast<time_t>(now());
    if (out != nullptr)
        *out = seconds;
    return seconds;
}

FAKE(int, gettimeofday, timeval* out, void*)
{
    Call call("gettimeofday");
    out->tv_sec = static_cast<time_t>(now());
    out->tv_usec = 0;
    return 0;
}

FAKE(int, clock_gettime, clockid_t clock, timespec* out)
{
    static auto* const real = realFunction<int(clockid_t, timespec*)>("clock_gettime");
    if (clock != CLOCK_REALTIME && clock != CLOCK_REALTIME_COARSE) {
        const int result = real(clock, out);
        if (clock == CLOCK_MONOTONIC)
            out->tv_sec += static_cast<time_t>(secondsOfLookups);
        return result;
    }
    Call call("clock_gettime");
    out->tv_sec = static_cast<time_t>(now());
    out->tv_nsec = 0;
    return 0;
}

#ifdef __i386__
FAKE(int64_t, __time64, int64_t* out)
{
    Call call("time");
    if (out != nullptr)
        *out = now();
    return now();
}

struct WideTime {
    int64_t seconds;
    int64_t fraction;
};

FAKE(int, __gettimeofday64, WideTime* out, void*)
{
    Call call("gettimeofday");
    *out = {now(), 0};
    return 0;
}

FAKE(int, __clock_gettime64, clockid_t clock, WideTime* out)
{
    static auto* const real = realFunction<int(clockid_t, WideTime*)>("__clock_gettime64");
    if (clock != CLOCK_REALTIME && clock != CLOCK_REALTIME_COARSE) {
        const int result = real(clock, out);
        if (clock == CLOCK_MONOTONIC)
            out->seconds += secondsOfLookups;
        return result;
    }
    Call call("clock_gettime");
    *out = {now(), 0};
    return 0;
}
#endif

FAKE(char*, setlocale, int category, const char* name)
{
    static auto* const real = realFunction<char*(int, const char*)>("setlocale");
    Call call("setlocale", name == nullptr ? "" : name);
    return call.fails() ? nullptr : real(category, name);
}
