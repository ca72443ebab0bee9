#include "preload/Calls.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

#include "preload/Text.h"

namespace fakemachine
{

// Plain static data, usable before any constructor has run: allocations come first.
static int depth = 0;
static unsigned long callCount = 0;
static unsigned long allocationCount = 0;
static bool settingsRead = false;
static const char* countFile = nullptr;
static const char* faults = nullptr;

__attribute__((constructor)) static void readSettings()
{
    countFile = getenv("FAKEMACHINE_COUNT");
    faults = getenv("FAKEMACHINE_FAIL");
    settingsRead = true;
}

// Opened anew for every line, so that the record holds no descriptor and survives a crash.
static void record(const std::string& line)
{
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    static auto* const realWrite = realFunction<ssize_t(int, const void*, size_t)>("write");
    static auto* const realClose = realFunction<int(int)>("close");
    const int savedErrno = errno;
    const int descriptor = realOpen(countFile, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (descriptor >= 0) {
        if (realWrite(descriptor, line.data(), line.size()) < 0)
            _exit(126);
        realClose(descriptor);
    }
    errno = savedErrno;
}

__attribute__((destructor)) static void recordAllocations()
{
    const Inside inside;
    if (countFile != nullptr)
        record("m " + std::to_string(allocationCount) + "\n");
}

// What stands behind "NUMBER:" (or "mNUMBER" for an allocation) in the list of faults; null when it is not in it.
static const char* findFault(char kind, unsigned long number)
{
    for (const char* at = faults; at != nullptr && *at != '\0';) {
        const bool isAllocation = *at == 'm';
        char* end = nullptr;
        const unsigned long listed = strtoul(isAllocation ? at + 1 : at, &end, 10);
        if (listed == number && isAllocation == (kind == 'm'))
            return *end == ':' ? end + 1 : end;
        at = strchr(end, ',');
        if (at != nullptr)
            ++at;
    }
    return nullptr;
}

Call::Call(const char* name, std::string_view subject)
{
    if (subject.ends_with(".gcda")) // a measured program writes its record last: no call of its own follows
        ++depth;
    if (depth++ > 0)
        return;
    if (!settingsRead)
        return;
    ++callCount;
    if (countFile != nullptr)
        record(std::to_string(callCount) + " " + name + " " + std::string(subject) + "\n");
    if (faults != nullptr)
        chooseFault(callCount);
}

Call::~Call()
{
    --depth;
}

void Call::chooseFault(unsigned long number)
{
    const char* fault = findFault('c', number);
    if (fault == nullptr)
        return;
    const std::string name(fault, strcspn(fault, ","));
    if (name == "EOF")
        fault_ = Fault::End;
    else if (name == "SHORT")
        fault_ = Fault::Short;
    else
        fault_ = Fault::Errno;
    errno_ = fault_ == Fault::Errno ? parseErrno(name, {"FAKEMACHINE_FAIL", 0}) : EIO;
}

bool Call::fails()
{
    if (fault_ == Fault::None)
        return false;
    errno = errno_;
    return true;
}

bool allocationFails()
{
    if (depth > 0 || !settingsRead)
        return false;
    ++allocationCount;
    return faults != nullptr && findFault('m', allocationCount) != nullptr;
}

bool hasSettings()
{
    return settingsRead;
}

Inside::Inside()
{
    ++depth;
}

Inside::~Inside()
{
    --depth;
}

} // namespace fakemachine
