// What callers ask of a handle; a null one is the default code set's.

#include "codeset/CodeSet.h"

kst_handle kst_dup_handle(kst_handle handle)
{
    kst_code_set* const original = resolveHandle(handle);
    return original == nullptr ? nullptr : copyCodeSet(*original);
}

const void* kst_cs_table(kst_handle handle)
{
    kst_code_set* const codeSet = resolveHandle(handle);
    return codeSet == nullptr || codeSet->table == nullptr ? nullptr : codeSet->table->bytes.data();
}

const char* kst_get_cs_name(kst_handle handle)
{
    kst_code_set* const codeSet = resolveHandle(handle);
    return codeSet == nullptr ? "" : codeSet->name;
}

unsigned long kst_get_subst_count(kst_handle handle)
{
    kst_code_set* const codeSet = resolveHandle(handle);
    return codeSet == nullptr ? 0 : codeSet->substitutions;
}
