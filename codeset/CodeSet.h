#pragma once

#include <cstdint>
#include <memory>

#include "codeset/CodeTable.h"
#include "codeset/kst.h"

/// One direction of a family. Advances both pointers, counts in the handle and returns a kst_result; a null input ends
/// the text.
template <class In, class Out>
using Converter = int (*)(kst_code_set& codeSet, const In*& in, const In* inEnd, Out*& out, Out* outEnd);

/// The four converters of a family.
struct ConverterFamily {
    Converter<unsigned char, unsigned char> toUtf8;
    Converter<unsigned char, unsigned char> fromUtf8;
    Converter<unsigned char, kst_wchar> toUcs2;
    Converter<kst_wchar, unsigned char> fromUcs2;
};

/// A character as the code set spells it.
struct CodeBytes {
    unsigned char length = 0;
    unsigned char bytes[TableLayout::kMaxCodeLength] = {};
};

struct kst_code_set {
    std::shared_ptr<const CodeTable> table; // none for UTF8
    Family family = Family::Utf8;
    char name[TableLayout::kNameSize + 1] = "";
    unsigned long substitutions = 0;
    CodeBytes substitution{1, {'?'}}; // written for a character that the code set does not have
    CodeBytes doubleSubstitution;     // the same within double-byte text of a code set with shift states
    unsigned char shiftState = 0;
    uint32_t tableSize = 0;
    const ConverterFamily* converters = nullptr;
};

extern const ConverterFamily kAsciiSbcs;
extern const ConverterFamily kAsciiDbcs;
extern const ConverterFamily kAsciiMbcs;
extern const ConverterFamily kEbcdicSbcs;
extern const ConverterFamily kEbcdicDbcs;
extern const ConverterFamily kGb18030;
extern const ConverterFamily kUtf8;
extern const ConverterFamily kOsPassThrough;
extern const ConverterFamily kAsciiOnly; // what a null handle does when there is no default code set

/// Opens by the exact name: "UTF8" or a table's.
kst_handle cs_new(const char* name);

/// A handle of its own for the same code set, at the start of a text; null when memory is short.
kst_handle copyCodeSet(const kst_code_set& original);

/// Closes a handle without a look at the defaults.
void deleteCodeSet(kst_handle handle);

/// The handle itself, or for null the default one, which can be null.
kst_handle resolveHandle(kst_handle handle);

/// The handle of the locale's code set; null while kst_init has not opened it yet, or could not.
kst_handle operatingSystemHandle();
