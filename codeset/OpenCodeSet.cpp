// Opening code sets by name, copying and closing them.

#include <cstdlib>
#include <cstring>
#include <new>

#include "codeset/CodeSet.h"
#include "codeset/TableFolder.h"
#include "codeset/TableName.h"
#include "codeset/TableSearch.h"

namespace
{

kst_handle newCodeSet(const kst_code_set& contents)
{
    void* const memory = malloc(sizeof(kst_code_set));
    return memory == nullptr ? nullptr : new (memory) kst_code_set(contents);
}

const ConverterFamily* convertersOf(Family family)
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
void readSubstitution(const CodeTable& table, size_t offset, CodeBytes& code)
{
    const unsigned char length = *table.at(offset);
    if (length == 0 || length > TableLayout::kMaxCodeLength)
        return;
    code.length = length;
    memcpy(code.bytes, table.at(offset + 1), TableLayout::kMaxCodeLength);
}

kst_code_set codeSetFromTable(const std::shared_ptr<const CodeTable>& table)
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

} // namespace

void deleteCodeSet(kst_handle handle)
{
    if (handle == nullptr)
        return;
    handle->~kst_code_set();
    free(handle);
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
    return table == nullptr ? nullptr : newCodeSet(codeSetFromTable(table));
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

kst_handle copyCodeSet(const kst_code_set& original)
{
    kst_code_set* const copy = newCodeSet(original);
    if (copy != nullptr) {
        copy->shiftState = 0;
        copy->substitutions = 0;
    }
    return copy;
}
