// The default code sets of the process.

#include <cstdlib>
#include <cstring>

#include "codeset/CodeSet.h"
#include "codeset/TableFolder.h"
#include "codeset/TableName.h"

namespace
{

struct Service {
    bool initialised = false;
    kst_handle initial = nullptr;         // owned: what KST_CODESET or the locale asks for
    kst_handle operatingSystem = nullptr; // owned
    kst_handle current = nullptr;         // one of those, or a caller's
    char operatingSystemName[kPathLimit + 1] = "";
};

Service service;

// The locale's code set. Mostly it is the one that is open already: then both handles share one table.
void openOperatingSystem(const char* openName, kst_handle open)
{
    get_table_name("OS", service.operatingSystemName, sizeof service.operatingSystemName);
    const bool isOpen = open != nullptr && strcmp(openName, service.operatingSystemName) == 0;
    service.operatingSystem = isOpen ? copyCodeSet(*open) : kst_cs_new(service.operatingSystemName);
    if (service.operatingSystem == nullptr)
        service.operatingSystem = kst_cs_new("OSDEFAULT");
}

} // namespace

int kst_init()
{
    if (service.initialised)
        return 0;
    service.initialised = true; // first, since a table that redirects converts its file name
    const char* const configured = getenv("KST_CODESET");
    const bool isConfigured = configured != nullptr && *configured != '\0';
    char tableName[kPathLimit + 1];
    get_table_name(isConfigured ? configured : "OS", tableName, sizeof tableName);
    kst_handle named = kst_cs_new(tableName);
    service.initial = named != nullptr ? named : kst_cs_new("DEFAULT");
    service.current = service.initial;
    openOperatingSystem(tableName, named);
    return 0;
}

void kst_uninit()
{
    deleteCodeSet(service.initial);
    deleteCodeSet(service.operatingSystem);
    service = Service();
}

kst_handle resolveHandle(kst_handle handle)
{
    return handle != nullptr ? handle : kst_get_def_cs();
}

kst_handle operatingSystemHandle()
{
    return service.operatingSystem;
}

kst_handle kst_get_def_cs()
{
    kst_init();
    return service.current;
}

void kst_set_def_cs(kst_handle handle)
{
    kst_init();
    service.current = handle != nullptr ? handle : service.operatingSystem;
}

void kst_cs_free(kst_handle handle)
{
    if (handle == service.initial || handle == service.operatingSystem)
        return;
    if (handle == service.current)
        service.current = service.initial;
    deleteCodeSet(handle);
}

const char* kst_os_cs_name()
{
    kst_init();
    return service.operatingSystemName;
}
