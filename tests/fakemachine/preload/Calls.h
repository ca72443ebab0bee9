#pragma once

#include <cerrno>
#include <dlfcn.h>
#include <string_view>

// The gate that every intercepted call passes: it counts and records the program's calls and makes the chosen one fail.

namespace fakemachine
{

/// The C library's own function behind the intercepted one.
template <typename Function>
Function* realFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// What most calls return on failure, errno set.
inline int fails(int error)
{
    errno = error;
    return -1;
}

/// One intercepted call, as long as it lasts. Calls that the library makes itself meanwhile are neither counted nor
/// made to fail. FAKEMACHINE_FAIL="N:ERRNO,..." chooses by running number; ERRNO may be EOF (the data end here) or
/// SHORT (only a part is transferred), which calls without data take for EIO.
class Call
{
public:
    explicit Call(const char* name, std::string_view subject = {});
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

    /// True when the call has to fail; errno is set.
    bool fails();
    bool endsData() const { return fault_ == Fault::End; }
    bool isShort() const { return fault_ == Fault::Short; }

private:
    enum class Fault { None, Errno, End, Short };
    void chooseFault(unsigned long number);

    Fault fault_ = Fault::None;
    int errno_ = 0;
};

/// The same for one allocation (FAKEMACHINE_FAIL="mN", FAKEMACHINE_COUNT then ends with "m COUNT"): true when it fails.
bool allocationFails();

/// True once the process has its environment. Before, a sanitizer's start-up may already call: it gets the real
/// answers.
bool hasSettings();

/// Marks that the library itself runs, without a call of the program.
class Inside
{
public:
    Inside();
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
    ~Inside();
};

} // namespace fakemachine
