// The standard wide-string operations over 16-bit text.

#include "codeset/kst.h"

namespace
{

bool isIn(const kst_wchar* set, kst_wchar c)
{
    return c != 0 && kst_wcschr(set, c) != nullptr;
}

} // namespace

size_t kst_wcslen(const kst_wchar* text)
{
    size_t length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}

size_t kst_wcsnlen(const kst_wchar* text, size_t limit)
{
    size_t length = 0;
    while (length < limit && text[length] != 0)
        ++length;
    return length;
}

kst_wchar* kst_wcscpy(kst_wchar* out, const kst_wchar* text)
{
    kst_wchar* next = out;
    while ((*next++ = *text++) != 0) {
    }
    return out;
}

kst_wchar* kst_wcsncpy(kst_wchar* out, const kst_wchar* text, size_t count)
{
    size_t i = 0;
    for (; i < count && text[i] != 0; ++i)
        out[i] = text[i];
    for (; i < count; ++i)
        out[i] = 0;
    return out;
}

kst_wchar* kst_wcscat(kst_wchar* text, const kst_wchar* tail)
{
    kst_wcscpy(text + kst_wcslen(text), tail);
    return text;
}

kst_wchar* kst_wcsncat(kst_wchar* text, const kst_wchar* tail, size_t count)
{
    kst_wchar* const end = text + kst_wcslen(text);
    const size_t length = kst_wcsnlen(tail, count);
    for (size_t i = 0; i < length; ++i)
        end[i] = tail[i];
    end[length] = 0;
    return text;
}

int kst_wcsncmp(const kst_wchar* left, const kst_wchar* right, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        if (left[i] != right[i] || left[i] == 0)
            return left[i] - right[i];
    return 0;
}

// The results of the searches are as writable as the caller's text, as in the C library.
kst_wchar* kst_wcschr(const kst_wchar* text, kst_wchar c)
{
    while (*text != c && *text != 0)
        ++text;
    return *text == c ? const_cast<kst_wchar*>(text) : nullptr;
}

kst_wchar* kst_wcsrchr(const kst_wchar* text, kst_wchar c)
{
    for (const kst_wchar* end = text + kst_wcslen(text) + 1; end != text;)
        if (*--end == c)
            return const_cast<kst_wchar*>(end);
    return nullptr;
}

size_t kst_wcsspn(const kst_wchar* text, const kst_wchar* set)
{
    size_t length = 0;
    while (isIn(set, text[length]))
        ++length;
    return length;
}

size_t kst_wcscspn(const kst_wchar* text, const kst_wchar* set)
{
    size_t length = 0;
    while (text[length] != 0 && !isIn(set, text[length]))
        ++length;
    return length;
}

kst_wchar* kst_wcspbrk(const kst_wchar* text, const kst_wchar* set)
{
    text += kst_wcscspn(text, set);
    return *text != 0 ? const_cast<kst_wchar*>(text) : nullptr;
}

kst_wchar* kst_wcswcs(const kst_wchar* text, const kst_wchar* part)
{
    const size_t length = kst_wcslen(part);
    for (;; ++text) {
        if (kst_wcsncmp(text, part, length) == 0)
            return const_cast<kst_wchar*>(text);
        if (*text == 0)
            return nullptr;
    }
}

kst_wchar* kst_wcstok(kst_wchar* text, const kst_wchar* separators, kst_wchar** rest)
{
    kst_wchar* const from = text != nullptr ? text : *rest;
    if (from == nullptr)
        return nullptr;
    kst_wchar* const token = from + kst_wcsspn(from, separators);
    kst_wchar* const end = token + kst_wcscspn(token, separators);
    *rest = *end != 0 ? end + 1 : end;
    *end = 0;
    return token != end ? token : nullptr;
}
