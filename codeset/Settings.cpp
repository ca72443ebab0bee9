// Settings in the process environment.

#include <cstdlib>
#include <cstring>
#include <string>

#include "codeset/kst.h"

namespace
{

constexpr char kTableDirectory[] = "KSTDIR";
constexpr char kCatalogPath[] = "NLSPATH";

const char* getSetting(const char* name)
{
    const char* const value = getenv(name);
    return value != nullptr ? value : "";
}

// Makes "name=value" part of the environment. entry owns that text, which must outlive its place in it.
void putSetting(const char* name, const std::string& value, char*& entry)
{
    char* const next = strdup((std::string(name) + "=" + value).c_str());
    if (next == nullptr || putenv(next) != 0) {
        free(next);
        return;
    }
    free(entry);
    entry = next;
}

} // namespace

void kst_set_dir(const char* dir)
{
    static char* entry = nullptr;
    putSetting(kTableDirectory, dir != nullptr ? dir : "", entry);
}

const char* kst_get_dir()
{
    return getSetting(kTableDirectory);
}

void kst_set_nlspath(const char* path)
{
    static char* entry = nullptr;
    putSetting(kCatalogPath, path != nullptr ? path : "", entry);
}

void kst_prepend_nlspath(const char* path)
{
    const std::string rest = kst_get_nlspath();
    const std::string first = path != nullptr ? path : "";
    kst_set_nlspath((first.empty() || rest.empty() ? first + rest : first + ":" + rest).c_str());
}

const char* kst_get_nlspath()
{
    return getSetting(kCatalogPath);
}
