#include "scanner/XmlReport.h"

#include <cstdlib>
#include <cstring>
#include <memory>

#include "codeset/kst.h"
#include "com/Owned.h"
#include "com/VexUtil.h"

namespace
{

// Longest text of one value in the locale's encoding, in bytes; the report cuts what is longer.
constexpr size_t kMaxTextBytes = 20480;
// Most bytes of the report that one byte of text becomes: "&amp;", which no conversion to UTF-8 exceeds.
constexpr size_t kMaxGrowth = 5;

using ElementName = std::unique_ptr<char[]>;

void printAttribute(const vexGroupDef* group, VexTableAttrib* attrib, bool markKeys)
{
    const unsigned long id = attrib->getId();
    const unsigned char* record = attrib->getAttribPtr();
    const ElementName name(spaceOut(getAttribNameFromId(group, id)));
    printf(markKeys && isKey(group, id) ? "\n\t\t\t\t<%s IsKey=\"1\">" : "\n\t\t\t\t<%s>", name.get());
    if (!PrintEnumActual(stdout, group, id, record)) {
        if (attrib->getType() == VEX_STRING)
            PrintVexAttribStringToXMLFile(stdout, record);
        else
            PrintVexAttribValueLocal(record);
    }
    printf("</%s>", name.get());
}

void printRow(const VexTable* table, const char* groupElement, VexTableRow* row, bool markKeys)
{
    const vexGroupDef* group = getGroupDefinitionFromId(table->getGroupId());
    printf("\n\n\t<serviceData>");
    printf("\n\t\t<name>%s</name>", groupElement);
    printf("\n\t\t<value>");
    printf("\n\t\t\t<%s version=\"%ld\">", groupElement,
           static_cast<long>(static_cast<int32_t>(table->getGroupVersion())));
    while (VexTableAttrib* attrib = row->getNext())
        printAttribute(group, attrib, markKeys);
    printf("\n\t\t\t</%s>", groupElement);
    printf("\n\t\t</value>");
    printf("\n\t</serviceData>");
}

bool isAsciiLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isAsciiDigit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

void printXML(VexTable* table)
{
    const ElementName groupElement(spaceOut(table->getGroupName()));
    const vexGroupDef* group = getGroupDefinitionFromId(table->getGroupId());
    const bool keyed = group != nullptr && group->keys != nullptr;
    table->reset();
    while (VexTableRow* row = table->getNext()) {
        printRow(table, groupElement.get(), row, keyed);
        if (!keyed)
            break; // without keys rows could not be told apart: the first one is the group
    }
}

char* spaceOut(const char* text)
{
    if (text == nullptr || *text == '\0')
        return new char[1]();
    auto* const name = new char[strlen(text) + 2];
    char* out = name;
    for (; *text != '\0'; ++text) {
        const char c = *text;
        const bool startsName = isAsciiLetter(c) || c == '_' || c == ':';
        if (out == name) {
            if (isAsciiDigit(c)) {
                *out++ = '_';
                *out++ = c;
            } else if (startsName) {
                *out++ = c;
            }
        } else if (startsName || isAsciiDigit(c) || c == '.' || c == '-') {
            *out++ = c;
        }
    }
    *out = '\0';
    return name;
}

int isKey(const vexGroupDef* group, unsigned long attribId)
{
    for (uint32_t i = 0; i < group->numKeys; ++i)
        if (group->keys[i] == attribId)
            return 1;
    return 0;
}

int PrintEnumActual(FILE*, const vexGroupDef* group, unsigned long attribId, const unsigned char* record)
{
    if (vexRecordWord(record, 8) != VEX_ULONG)
        return 0;
    const vexAttribDef* attrib = getAttribDefinitionFromId(group, attribId);
    if (attrib == nullptr || attrib->enums == nullptr)
        return 0;
    const uint32_t value = vexRecordWord(record, VEX_HEADER_LENGTH);
    for (const vexEnumDef* pair = attrib->enums; pair->value != VEX_END; ++pair) {
        if (pair->value == value) {
            printf("%s", pair->text);
            return 1;
        }
    }
    return 0;
}

void PrintVexAttribStringToXMLFile(FILE* stream, const unsigned char* record)
{
    const auto* string = reinterpret_cast<const VexString*>(record + VEX_HEADER_LENGTH);
    if (string->count == 0)
        return;
    // Not on the stack, which may be a small one.
    const std::unique_ptr<char[]> text(new char[kMaxTextBytes + 1]);
    const size_t length = wcstombs(text.get(), string->characters, kMaxTextBytes);
    if (length == static_cast<size_t>(-1))
        return;
    text[length] = '\0';
    const std::unique_ptr<char[]> escaped(new char[length * kMaxGrowth + 1]);
    fprintf(stream, "%s", io_esc_fixn(escaped.get(), text.get()));
}

char* io_esc_fixn(char* out, const char* text)
{
    const size_t capacity = strlen(text) * kMaxGrowth + 1;
    const std::unique_ptr<char[]> work(new char[capacity]);
    char* end = work.get();
    while (*text != '\0') {
        const int measured = mblen(text, MB_CUR_MAX);
        // A byte that is no character of the locale is copied alone.
        const size_t length = measured < 1 ? 1 : static_cast<size_t>(measured);
        const char* escape = *text == '&' ? "&amp;" : *text == '<' ? "&lt;" : nullptr;
        if (escape != nullptr)
            end = stpcpy(end, escape);
        else
            end = static_cast<char*>(mempcpy(end, text, length));
        text += length;
    }
    *end = '\0';
    *out = '\0'; // stays when there is no code set to convert from
    kst_to_utf8(nullptr, work.get(), -1, out, capacity);
    return out;
}

void PrintVexAttribValueLocal(const unsigned char* record)
{
    switch (vexRecordWord(record, 8)) {
    case VEX_ULONG:
        // Signed on purpose, like the low word of a VEX_UQUAD: the report's readers know both.
        printf("%ld", static_cast<long>(static_cast<int32_t>(vexRecordWord(record, VEX_HEADER_LENGTH))));
        break;
    case VEX_OCTETSTRING:
        break;
    case VEX_DATETIME: {
        const OwnedText text(GetTimeBlockString(reinterpret_cast<const char*>(record + VEX_HEADER_LENGTH)));
        if (text != nullptr)
            printf("%s", text.get());
        break;
    }
    default:
        PrintVexAttribValueToFile(stdout, record);
    }
}

char* GetTimeBlockString(const char* text)
{
    char block[VEX_DATETIME_LENGTH + 2];
    memcpy(block, text, VEX_DATETIME_LENGTH);
    block[VEX_DATETIME_LENGTH] = '0';
    block[VEX_DATETIME_LENGTH + 1] = '\0';
    return strdup(block);
}
