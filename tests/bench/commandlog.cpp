// A preload library that appends every command line that a program starts to the file $COMMANDLOG: what a scan of this
// machine has to run.

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) FILE* popen(const char* commandLine, const char* mode)
{
    static auto* const real = reinterpret_cast<FILE* (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "popen"));
    const char* const name = getenv("COMMANDLOG");
    if (FILE* const log = name == nullptr ? nullptr : fopen(name, "a")) {
        fprintf(log, "%s\n", commandLine);
        fclose(log);
    }
    return real(commandLine, mode);
}
