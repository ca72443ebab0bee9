// Opening, copying and asking handles.

#include <cstdlib>
#include <cstring>
#include <new>

#include "codeset/CodeSet.h"
#include "codeset/TableName.h"
#include "codeset/TableSearch.h"

static kst_handle newCodeSet(const kst_code_set& contents)
{
    void* const memory = malloc(sizeof(kst_code_set));
    return memory == nullptr ? nullptr : new (memory) kst_code_set(contents);
}

void deleteCodeSet(kst_handle handle)
{
    if (handle == nullptr)
        return;
    handle->~kst_code_set();
    free(handle);
}

static const ConverterFamily* convertersOf(Family family)
{
    switch (family) {
    case Family::AsciiSbcs:
        return &kAsciiSbcs;
    case Family::AsciiDbcs:
        return &kAsciiDbcs;
    case Family::AsciiMbcs:
        return &kAsciiMbcs;
    case Family::EbcdicDbcs:
        return &kEbcdicDbcs;
    case Family::Utf8:
        return &kUtf8;
    case Family::EbcdicSbcs:
        return &kEbcdicSbcs;
    case Family::Gb18030:
        return &kGb18030;
    }
    return &kOsPassThrough;
}

// Length and bytes at the offset; a length of 0, and one that no code has, leaves the default.
static void readSubstitution(const CodeTable& table, size_t offset, CodeBytes& code)
{
    const unsigned char length = *table.at(offset);
    if (length == 0 || length > TableLayout::kMaxCodeLength)
        return;
    code.length = length;
    memcpy(code.bytes, table.at(offset + 1), TableLayout::kMaxCodeLength);
}

static kst_code_set codeSetOf(const std::shared_ptr<const CodeTable>& table)
{
    static constexpr unsigned char kEbcdicQuestionMark = 0x6F;
    kst_code_set codeSet;
    codeSet.family = table->family;
    codeSet.converters = convertersOf(table->family);
    codeSet.tableSize = table->size;
    memcpy(codeSet.name, table->at(TableLayout::kNameOffset), TableLayout::kNameSize);
    if (table->family == Family::EbcdicSbcs || table->family == Family::EbcdicDbcs)
        codeSet.substitution = {1, {kEbcdicQuestionMark}};
    readSubstitution(*table, TableLayout::kSubstitutionOffset, codeSet.substitution);
    readSubstitution(*table, TableLayout::kSubstitutionOffset + TableLayout::kSubstitutionSize,
                     codeSet.doubleSubstitution);
    codeSet.table = table;
    return codeSet;
}

kst_handle cs_new(const char* name)
{
    if (strcmp(name, "UTF8") == 0) {
        kst_code_set utf8;
        strcpy(utf8.name, "UTF8");
        utf8.converters = &kUtf8;
        return newCodeSet(utf8);
    }
    const std::shared_ptr<const CodeTable> table = get_table(name);
    return table == nullptr ? nullptr : newCodeSet(codeSetOf(table));
}

kst_handle kst_cs_new(const char* name)
{
    if (name == nullptr)
        return nullptr;
    if (strpbrk(name, "/\\") != nullptr)
        return cs_new(name);
    char tableName[kPathLimit + 1];
    get_table_name(name, tableName, sizeof tableName);
    return cs_new(tableName);
}

kst_handle kst_dup_handle(kst_handle handle)
{
    kst_code_set* const original = resolveHandle(handle);
    if (original == nullptr)
        return nullptr;
    kst_code_set* const copy = newCodeSet(*original);
    if (copy != nullptr) {
        copy->shiftState = 0;
        copy->substitutions = 0;
    }
    return copy;
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
