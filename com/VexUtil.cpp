#include "com/VexUtil.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwchar>

namespace
{

// The value of a record, read as one of the fixed-width types.
template <typename Value>
Value recordValue(const unsigned char* record)
{
    Value value;
    memcpy(&value, record + VEX_HEADER_LENGTH, sizeof value);
    return value;
}

// Converts what the locale accepts of a text that mbstowcs refused as a whole.
void convertValidPrefix(const char* text, wchar_t* dest, size_t maxCharacters)
{
    const char* const end = text + strlen(text);
    mbstate_t state{};
    size_t count = 0;
    while (text != end && count < maxCharacters) {
        const size_t length = mbrtowc(&dest[count], text, static_cast<size_t>(end - text), &state);
        if (length == static_cast<size_t>(-1) || length == static_cast<size_t>(-2))
            break;
        text += length;
        ++count;
    }
    dest[count] = L'\0';
}

const VexString* recordString(const unsigned char* record)
{
    return reinterpret_cast<const VexString*>(record + VEX_HEADER_LENGTH);
}

const vexGroupDef* findGroupByName(const char* name)
{
    if (name == nullptr)
        return nullptr;
    for (const vexGroupDef* group = GROUPS_DEF; group->name != nullptr; ++group)
        if (strcmp(group->name, name) == 0)
            return group;
    return nullptr;
}

} // namespace

// ---------------------------------------------------------------------------------------------------- value records

uint32_t vexRecordWord(const unsigned char* record, size_t offset)
{
    uint32_t word;
    memcpy(&word, record + offset, sizeof word);
    return word;
}

unsigned long SizeofVexString(const VexString* string)
{
    return string->count * 4UL + 4;
}

unsigned long SizeAsVexString(const char* text)
{
    return text == nullptr || *text == '\0' ? 8 : strlen(text) * 4UL + 8;
}

unsigned long StringToVexString(const char* text, VexString* dest, unsigned long maxCharacters,
                                unsigned long* runningSize, unsigned long* runningOffset)
{
    if (text == nullptr || *text == '\0') {
        dest->count = 1;
        dest->characters[0] = L'\0';
    } else {
        if (mbstowcs(dest->characters, text, maxCharacters) == static_cast<size_t>(-1))
            convertValidPrefix(text, dest->characters, maxCharacters);
        dest->count = static_cast<uint32_t>(wcslen(dest->characters)) + 1;
        dest->characters[dest->count - 1] = L'\0';
    }
    const unsigned long used = SizeofVexString(dest);
    *runningOffset = *runningSize;
    *runningSize += used;
    return used;
}

void TimeToVexDateTime(long time, char* dest)
{
    const time_t seconds = time;
    const struct tm* local = localtime(&seconds);
    if (local == nullptr) {
        memset(dest, 0, 4);
        return;
    }
    // Digit by digit: a year beyond four digits must not move what follows.
    const auto writeDigits = [&dest](long value, int digits, char separator) {
        for (int i = digits - 1; i >= 0; --i, value /= 10)
            dest[i] = static_cast<char>('0' + value % 10);
        dest += digits;
        *dest++ = separator;
    };
    writeDigits(local->tm_year + 1900L, 4, '-');
    writeDigits(local->tm_mon + 1, 2, '-');
    writeDigits(local->tm_mday, 2, '-');
    writeDigits(local->tm_hour, 2, '.');
    writeDigits(local->tm_min, 2, '.');
    writeDigits(local->tm_sec, 2, '.');
    memset(dest, '0', 6);
}

const char* getVexAttribTypeAsString(unsigned long type)
{
    static constexpr const char* const kNames[] = {"VEX_UCHAR",  "VEX_USHORT",      "VEX_ULONG",
                                                   "VEX_UQUAD",  "VEX_FLOAT",       "VEX_DOUBLE",
                                                   "VEX_STRING", "VEX_OCTETSTRING", "VEX_DATETIME"};
    return type >= VEX_UCHAR && type <= VEX_DATETIME ? kNames[type - VEX_UCHAR] : "Undefined Attrib Type";
}

void PrintVexAttribValue(const unsigned char* record)
{
    if (record == nullptr)
        return;
    const uint32_t type = vexRecordWord(record, 8);
    printf("\n\t\t---len      : %d", static_cast<int32_t>(vexRecordWord(record, 0)));
    printf("\n\t\t   attribId : x%08X", vexRecordWord(record, 4));
    printf("\n\t\t   vex_type : %d (%s)", static_cast<int32_t>(type), getVexAttribTypeAsString(type));
    printf("\n\t\t   value    : ");
    if (type == VEX_USHORT) {
        const uint16_t value = recordValue<uint16_t>(record);
        printf("%d (0x%04X)", value, value);
    } else if (type == VEX_ULONG) {
        const uint32_t value = recordValue<uint32_t>(record);
        printf("%lu (0x%08X)", static_cast<unsigned long>(value), value);
    } else if (type >= VEX_UCHAR && type <= VEX_DATETIME) {
        PrintVexAttribValueToFile(stdout, record);
    } else {
        printf("Unknown attrib value type");
    }
}

void PrintVexAttribValueToFile(FILE* stream, const unsigned char* record)
{
    if (record == nullptr)
        return;
    switch (vexRecordWord(record, 8)) {
    case VEX_UCHAR:
        fprintf(stream, "0x%02X", record[VEX_HEADER_LENGTH]);
        break;
    case VEX_USHORT:
        fprintf(stream, "%d", recordValue<uint16_t>(record));
        break;
    case VEX_ULONG:
        fprintf(stream, "%lu", static_cast<unsigned long>(recordValue<uint32_t>(record)));
        break;
    case VEX_UQUAD: // the low word alone is shown, signed: readers of this text rely on it
        fprintf(stream, "%ld", static_cast<long>(recordValue<int32_t>(record)));
        break;
    case VEX_FLOAT:
        fprintf(stream, "%f", static_cast<double>(recordValue<float>(record)));
        break;
    case VEX_DOUBLE:
        fprintf(stream, "%f", recordValue<double>(record));
        break;
    case VEX_STRING:
        if (recordString(record)->count != 0)
            PrintVexStringToFile(stream, recordString(record));
        break;
    case VEX_OCTETSTRING: {
        const uint32_t count = recordValue<uint32_t>(record);
        if (count != 0)
            PrintOctetStringToFile(stream, record + VEX_HEADER_LENGTH + sizeof count, count);
        break;
    }
    case VEX_DATETIME:
        PrintVexTimeBlockToFile(stream, reinterpret_cast<const char*>(record + VEX_HEADER_LENGTH));
        break;
    default:
        break;
    }
}

void PrintVexTimeBlockToFile(FILE* stream, const char* text)
{
    // Character by character: an unset time holds NUL bytes, which are written as they are.
    for (size_t i = 0; i < VEX_DATETIME_LENGTH; ++i)
        fprintf(stream, "%c", text[i]);
}

void PrintOctetStringToFile(FILE* stream, const unsigned char* bytes, unsigned long count)
{
    fputc('"', stream);
    for (unsigned long i = 0; i < count; ++i)
        fprintf(stream, "%02X", bytes[i]);
    fputc('"', stream);
}

void PrintVexEnumToFile(FILE* stream, const vexAttribDef* attrib)
{
    if (attrib == nullptr || attrib->enums == nullptr)
        return;
    for (const vexEnumDef* pair = attrib->enums; pair->value != VEX_END; ++pair)
        fprintf(stream, "\n\t\t%d = \"%s\"", static_cast<int32_t>(pair->value), pair->text);
}

void PrintVexStringToFile(FILE* stream, const VexString* string)
{
    if (string->count == 0)
        return;
    wchar_t* const characters = const_cast<wchar_t*>(string->characters);
    wchar_t* const escaped = dmtf_escape(characters);
    fprintf(stream, "%ls", escaped);
    if (escaped != characters)
        delete[] escaped;
}

wchar_t* dmtf_escape(wchar_t* text)
{
    const size_t length = wcslen(text);
    if (length == 0)
        return text;
    static constexpr wchar_t kHexDigits[] = L"0123456789abcdef";
    auto* const escaped = new wchar_t[length * 4 + 1];
    wchar_t* out = escaped;
    for (const wchar_t* in = text; *in != L'\0'; ++in) {
        if (*in == L'\\' || *in == L'"') {
            *out++ = L'\\';
            *out++ = *in;
        } else if (*in >= 1 && *in <= 31) {
            *out++ = L'\\';
            *out++ = L'x';
            *out++ = kHexDigits[*in >> 4];
            *out++ = kHexDigits[*in & 15];
        } else {
            *out++ = *in;
        }
    }
    *out = L'\0';
    return escaped;
}

// -------------------------------------------------------------------------------------------------- catalog look-ups

const vexGroupDef* findGroupDefinition(const vexGroupDef* catalog, unsigned long groupId)
{
    if (catalog == nullptr)
        return nullptr;
    for (const vexGroupDef* group = catalog; group->id != VEX_END; ++group)
        if (group->id == groupId)
            return group;
    return nullptr;
}

const char* getGroupNameFromId(unsigned long groupId)
{
    const vexGroupDef* group = getGroupDefinitionFromId(groupId);
    return group == nullptr ? "Unknown" : group->name;
}

unsigned long getGroupIdFromName(const char* name)
{
    const vexGroupDef* group = findGroupByName(name);
    return group == nullptr ? 0 : group->id;
}

unsigned long getDebugMaskFromName(const char* name)
{
    const vexGroupDef* group = findGroupByName(name);
    return group == nullptr ? 0 : group->debugMask;
}

const vexGroupDef* getGroupDefinitionFromId(unsigned long groupId)
{
    return findGroupDefinition(GROUPS_DEF, groupId);
}

const char* getAttribNameFromId(const vexGroupDef* group, unsigned long attribId)
{
    const vexAttribDef* attrib = getAttribDefinitionFromId(group, attribId);
    return attrib == nullptr ? nullptr : attrib->name;
}

const vexAttribDef* getAttribDefinitionFromId(const vexGroupDef* group, unsigned long attribId)
{
    if (group == nullptr || group->attributes == nullptr)
        return nullptr;
    for (const vexAttribDef* attrib = group->attributes; attrib->id != VEX_END; ++attrib)
        if (attrib->id == attribId)
            return attrib;
    return nullptr;
}

const char* getEnumAsciiValue(const vexGroupDef* group, unsigned long attribId, unsigned long value)
{
    if (group == nullptr || group->attributes == nullptr)
        return nullptr;
    const vexEnumDef* pair = group->attributes->enums;
    for (const vexAttribDef* attrib = group->attributes; attrib->id != VEX_END; ++attrib) {
        if (attrib->id != attribId)
            continue;
        if (pair == nullptr)
            return nullptr;
        for (; pair->value != VEX_END; ++pair)
            if (pair->value == value)
                return pair->text;
    }
    return nullptr;
}
