#pragma once

#include <cstddef>

// Converts text between named code sets, UTF-8 and UCS-2.
//
// A code set is used through a handle. Every function that takes a handle accepts null and then uses the default code
// set, after kst_init if that has not run yet. The default is the code set that the environment variable KST_CODESET
// names, else that of the locale. When no table is found even for the fallback "DEFAULT", a null handle converts ASCII
// only: every other byte becomes "?".
//
// Counts of UCS-2 text are counts of 16-bit characters, all others count bytes. Characters that the target does not
// have are replaced, by "?" towards Unicode and by the code set's own substitution character from Unicode, and counted
// in the handle. Characters above U+FFFF have no UCS-2 form.
//
// A handle remembers the shift state of its conversion, so two threads must not use one handle at a time; the default
// code sets and the settings belong to the process.

struct kst_code_set;
using kst_handle = kst_code_set*;

/// A character of UCS-2 text; texts end with 0.
using kst_wchar = char16_t;

/// What the restartable conversions return.
enum kst_result {
    KST_DONE = 0,        ///< the input is used up
    KST_OUTPUT_FULL = 1, ///< the next character does not fit into the output
    KST_INCOMPLETE = 2   ///< the input ends within a character, which was not consumed
};

// --- One-shot conversions ---

/// Converts src to UTF-8 in dst, which src must not overlap. srcLen counts bytes; a negative one means that src is
/// NUL-terminated, and then dst is terminated as well. dstLen is the size of dst in bytes. Text that does not fit is
/// cut at a character, an incomplete character at the end of src is left out. Returns the bytes written, with the
/// terminator; 0 when dstLen is 0. What dst holds behind them is not defined.
size_t kst_to_utf8(kst_handle handle, const char* src, long srcLen, char* dst, size_t dstLen);
/// Converts UTF-8 to the code set, else like kst_to_utf8. A sequence that is no UTF-8 counts as one unknown character
/// up to the byte that breaks it. Text of a code set with shift states ends in the initial state.
size_t kst_from_utf8(kst_handle handle, const char* src, long srcLen, char* dst, size_t dstLen);
/// Converts src to UCS-2, else like kst_to_utf8; dstLen and the result count characters.
size_t kst_to_ucs2(kst_handle handle, const char* src, long srcLen, kst_wchar* dst, size_t dstLen);
/// Converts UCS-2 to the code set, else like kst_from_utf8; srcLen counts characters.
size_t kst_from_ucs2(kst_handle handle, const kst_wchar* src, long srcLen, char* dst, size_t dstLen);

// --- Restartable conversions ---

/// Converts as much as fits, advances *src and *dst and decreases *srcLeft and *dstLeft by what was consumed and
/// produced, and returns a kst_result. Shift states live on in the handle from call to call; src or *src null puts the
/// handle back into the initial state.
int kst_to_utf8_r(kst_handle handle, const char** src, size_t* srcLeft, char** dst, size_t* dstLeft);
/// The same from UTF-8. With src or *src null it also writes the byte, if one is needed, that ends shifted text; room
/// for that byte is always left by the call before. KST_OUTPUT_FULL when dst has no room for it.
int kst_from_utf8_r(kst_handle handle, const char** src, size_t* srcLeft, char** dst, size_t* dstLeft);
/// Like kst_to_utf8_r, to UCS-2.
int kst_to_ucs2_r(kst_handle handle, const char** src, size_t* srcLeft, kst_wchar** dst, size_t* dstLeft);
/// Like kst_from_utf8_r, from UCS-2.
int kst_from_ucs2_r(kst_handle handle, const kst_wchar** src, size_t* srcLeft, char** dst, size_t* dstLeft);

// --- Conversions into new memory ---

/// Converts src (srcLen as for kst_to_utf8) to UTF-8 in new memory that the caller frees with kst_free. The text is
/// NUL-terminated; *length, if length is not null, is set to its bytes without the terminator. Null without memory.
char* kst_tou_alloc(kst_handle handle, const char* src, long srcLen, size_t* length);
/// The same from UTF-8 to the code set.
char* kst_fromu_alloc(kst_handle handle, const char* src, long srcLen, size_t* length);
/// Frees what kst_tou_alloc and kst_fromu_alloc returned; null is allowed.
void kst_free(void* text);

// --- The service ---

/// Opens the default code set (KST_CODESET, else the locale's, else "DEFAULT") and the operating system's (the
/// locale's, else "OSDEFAULT"); calls setlocale(LC_ALL, ""). Done once, later calls do nothing. Returns 0.
int kst_init();
/// Closes the default code sets; the next use initialises again. Handles of kst_cs_new stay open.
void kst_uninit();

// --- Handles ---

/// Opens a code set. "DOS", "WIN" and "OS" are the locale's; case and all but letters and digits are ignored, and the
/// aliases file is consulted. A name with "/" or "\" is a path and taken as it is. Returns null when there is no sound
/// table of that name. The caller closes the handle with kst_cs_free.
kst_handle kst_cs_new(const char* name);
/// Closes a handle. Closing the default handle makes the one that kst_init opened the default again; the handles that
/// kst_init opened, and null, are left alone.
void kst_cs_free(kst_handle handle);
/// A new handle for the same code set, in the initial shift state, nothing counted. The caller closes it. Null when
/// there is no default code set or no memory.
kst_handle kst_dup_handle(kst_handle handle);

/// The bytes of the handle's table file, owned by the handle; null for UTF8, which has none.
const void* kst_cs_table(kst_handle handle);
/// The code set's name as its table tells it, owned by the handle; empty when there is no default code set.
const char* kst_get_cs_name(kst_handle handle);
/// The name under which the table of the locale's code set is looked for; owned by the service.
const char* kst_os_cs_name();
/// How many characters were replaced so far because they had no mapping.
unsigned long kst_get_subst_count(kst_handle handle);

/// Makes handle the default, which stays the caller's; null selects the operating system's.
void kst_set_def_cs(kst_handle handle);
/// The default handle; null when no table was found.
kst_handle kst_get_def_cs();

// --- Settings, all kept in the process environment ---

/// Sets the table directory, KSTDIR.
void kst_set_dir(const char* dir);
/// The table directory, or an empty text.
const char* kst_get_dir();
/// Sets the search path of message catalogs, NLSPATH.
void kst_set_nlspath(const char* path);
/// Puts path before the search path, with ":" between if that is not empty.
void kst_prepend_nlspath(const char* path);
/// The search path of message catalogs, or an empty text.
const char* kst_get_nlspath();

// --- Wide strings: the standard operations over zero-terminated 16-bit text ---

size_t kst_wcslen(const kst_wchar* text);
/// The length, but at most limit, beyond which nothing is read.
size_t kst_wcsnlen(const kst_wchar* text, size_t limit);
kst_wchar* kst_wcscat(kst_wchar* text, const kst_wchar* tail);
/// Appends at most count characters of tail and a terminator.
kst_wchar* kst_wcsncat(kst_wchar* text, const kst_wchar* tail, size_t count);
kst_wchar* kst_wcscpy(kst_wchar* out, const kst_wchar* text);
/// Writes exactly count characters: the text, cut without terminator or filled up with zeros.
kst_wchar* kst_wcsncpy(kst_wchar* out, const kst_wchar* text, size_t count);
/// Compares at most count characters as unsigned numbers: below, equal to or above 0.
int kst_wcsncmp(const kst_wchar* left, const kst_wchar* right, size_t count);
/// The first c, which may be the terminator, or null.
kst_wchar* kst_wcschr(const kst_wchar* text, kst_wchar c);
/// The last c, which may be the terminator, or null.
kst_wchar* kst_wcsrchr(const kst_wchar* text, kst_wchar c);
/// The length of the beginning that holds only characters of set.
size_t kst_wcsspn(const kst_wchar* text, const kst_wchar* set);
/// The length of the beginning that holds no character of set.
size_t kst_wcscspn(const kst_wchar* text, const kst_wchar* set);
/// The first character that is in set, or null.
kst_wchar* kst_wcspbrk(const kst_wchar* text, const kst_wchar* set);
/// The first occurrence of part in text, or null; an empty part is found at the beginning.
kst_wchar* kst_wcswcs(const kst_wchar* text, const kst_wchar* part);
/// The next token between characters of separators. text is null to go on in the text that *rest remembers.
kst_wchar* kst_wcstok(kst_wchar* text, const kst_wchar* separators, kst_wchar** rest);
