#include "linux/network/ReverseLookups.h"

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include <netdb.h>
#include <sys/socket.h>

namespace
{

constexpr int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr int64_t kNanosecondsAllowed = 30 * kNanosecondsPerSecond;
constexpr char kSearchList[] = "LOCALDOMAIN";

// Gives the C library's resolver an empty search list in place of the one in /etc/resolv.conf, as long as it exists: an
// address is not searched for, and a name of 256 characters in that list ends the program by an assertion.
class EmptySearchList
{
public:
    EmptySearchList()
    {
        if (const char* const value = getenv(kSearchList))
            before_ = value;
        setenv(kSearchList, "", 1);
    }
    EmptySearchList(const EmptySearchList&) = delete;
    EmptySearchList& operator=(const EmptySearchList&) = delete;
    ~EmptySearchList()
    {
        if (before_)
            setenv(kSearchList, before_->c_str(), 1);
        else
            unsetenv(kSearchList);
    }

private:
    std::optional<std::string> before_;
};

// Not the time of day, which may be set while a look-up waits.
int64_t monotonicNanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

} // namespace

const char* ReverseLookups::nameOf(in_addr address)
{
    if (nanoseconds_ >= kNanosecondsAllowed)
        return nullptr;
    const EmptySearchList emptySearchList;
    const int64_t start = monotonicNanoseconds();
    const hostent* const host = gethostbyaddr(&address, sizeof address, AF_INET);
    nanoseconds_ += monotonicNanoseconds() - start;
    return host == nullptr ? nullptr : host->h_name;
}
