#include "report/TemporaryFile.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace report
{
int temporaryFile()
{
    const char* folder = getenv("TMPDIR");
    std::string name = std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") + "/invhwctl.XXXXXX";
    const int descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor != -1)
        unlink(name.c_str());
    return descriptor;
}
} // namespace report
