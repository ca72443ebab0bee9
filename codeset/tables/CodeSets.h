#pragma once

#include "codeset/TableLayout.h"

// The code sets that are shipped: the table's name, which is what the name rules make of the locale's or the usual
// name, and the name under which the C library converts it.

struct ShippedCodeSet {
    const char* table;
    const char* iconvName;
    Family family;
};

/// What replaces a character that a code set does not have: "?" in ASCII and in EBCDIC, and the substitution character
/// of double-byte EBCDIC.
constexpr unsigned char kAsciiSubstitution = 0x3F;
constexpr unsigned char kEbcdicSubstitution = 0x6F;
constexpr unsigned char kEbcdicDoubleSubstitution[] = {0xFE, 0xFE};

// clang-format off
constexpr ShippedCodeSet kShippedCodeSets[] = {
    // What a scan falls back to when it has no table for the locale.
    { "DEFAULT",     "ISO-8859-1",     Family::AsciiSbcs },
    { "OSDEFAULT",   "ISO-8859-1",     Family::AsciiSbcs },
    // ASCII, the code set of the C locale
    { "ANSIX341968", "ANSI_X3.4-1968", Family::AsciiSbcs },
    // ISO 8859
    { "ISO88591",    "ISO-8859-1",     Family::AsciiSbcs },
    { "ISO88592",    "ISO-8859-2",     Family::AsciiSbcs },
    { "ISO88593",    "ISO-8859-3",     Family::AsciiSbcs },
    { "ISO88594",    "ISO-8859-4",     Family::AsciiSbcs },
    { "ISO88595",    "ISO-8859-5",     Family::AsciiSbcs },
    { "ISO88596",    "ISO-8859-6",     Family::AsciiSbcs },
    { "ISO88597",    "ISO-8859-7",     Family::AsciiSbcs },
    { "ISO88598",    "ISO-8859-8",     Family::AsciiSbcs },
    { "ISO88599",    "ISO-8859-9",     Family::AsciiSbcs },
    { "ISO885910",   "ISO-8859-10",    Family::AsciiSbcs },
    { "ISO885911",   "ISO-8859-11",    Family::AsciiSbcs },
    { "ISO885913",   "ISO-8859-13",    Family::AsciiSbcs },
    { "ISO885914",   "ISO-8859-14",    Family::AsciiSbcs },
    { "ISO885915",   "ISO-8859-15",    Family::AsciiSbcs },
    { "ISO885916",   "ISO-8859-16",    Family::AsciiSbcs },
    // PC code pages
    { "CP437",       "CP437",          Family::AsciiSbcs },
    { "CP737",       "CP737",          Family::AsciiSbcs },
    { "CP775",       "CP775",          Family::AsciiSbcs },
    { "CP850",       "CP850",          Family::AsciiSbcs },
    { "CP852",       "CP852",          Family::AsciiSbcs },
    { "CP855",       "CP855",          Family::AsciiSbcs },
    { "CP857",       "CP857",          Family::AsciiSbcs },
    { "CP858",       "CP858",          Family::AsciiSbcs },
    { "CP860",       "CP860",          Family::AsciiSbcs },
    { "CP861",       "CP861",          Family::AsciiSbcs },
    { "CP862",       "CP862",          Family::AsciiSbcs },
    { "CP863",       "CP863",          Family::AsciiSbcs },
    { "CP864",       "CP864",          Family::AsciiSbcs },
    { "CP865",       "CP865",          Family::AsciiSbcs },
    { "CP866",       "CP866",          Family::AsciiSbcs },
    { "CP869",       "CP869",          Family::AsciiSbcs },
    { "CP874",       "CP874",          Family::AsciiSbcs },
    { "CP1125",      "CP1125",         Family::AsciiSbcs },
    // Windows code pages
    { "CP1250",      "CP1250",         Family::AsciiSbcs },
    { "CP1251",      "CP1251",         Family::AsciiSbcs },
    { "CP1252",      "CP1252",         Family::AsciiSbcs },
    { "CP1253",      "CP1253",         Family::AsciiSbcs },
    { "CP1254",      "CP1254",         Family::AsciiSbcs },
    { "CP1255",      "CP1255",         Family::AsciiSbcs },
    { "CP1256",      "CP1256",         Family::AsciiSbcs },
    { "CP1257",      "CP1257",         Family::AsciiSbcs },
    { "CP1258",      "CP1258",         Family::AsciiSbcs },
    { "CP932",       "CP932",          Family::AsciiDbcs },
    { "CP936",       "CP936",          Family::AsciiDbcs },
    { "CP949",       "CP949",          Family::AsciiDbcs },
    { "CP950",       "CP950",          Family::AsciiDbcs },
    // Other code sets of locales
    { "KOI8R",       "KOI8-R",         Family::AsciiSbcs },
    { "KOI8U",       "KOI8-U",         Family::AsciiSbcs },
    { "KOI8T",       "KOI8-T",         Family::AsciiSbcs },
    { "TIS620",      "TIS-620",        Family::AsciiSbcs },
    { "ARMSCII8",    "ARMSCII-8",      Family::AsciiSbcs },
    { "GEORGIANPS",  "GEORGIAN-PS",    Family::AsciiSbcs },
    { "PT154",       "PT154",          Family::AsciiSbcs },
    { "RK1048",      "RK1048",         Family::AsciiSbcs },
    { "EUCJP",       "EUC-JP",         Family::AsciiMbcs },
    { "EUCJPMS",     "EUC-JP-MS",      Family::AsciiMbcs },
    { "EUCTW",       "EUC-TW",         Family::AsciiMbcs },
    { "EUCKR",       "EUC-KR",         Family::AsciiDbcs },
    { "SHIFTJIS",    "SHIFT_JIS",      Family::AsciiDbcs },
    { "GB2312",      "GB2312",         Family::AsciiDbcs },
    { "GBK",         "GBK",            Family::AsciiDbcs },
    { "BIG5",        "BIG5",           Family::AsciiDbcs },
    { "BIG5HKSCS",   "BIG5-HKSCS",     Family::AsciiDbcs },
    { "GB18030",     "GB18030",        Family::Gb18030 },
    // EBCDIC
    { "IBM037",      "IBM037",         Family::EbcdicSbcs },
    { "IBM273",      "IBM273",         Family::EbcdicSbcs },
    { "IBM277",      "IBM277",         Family::EbcdicSbcs },
    { "IBM278",      "IBM278",         Family::EbcdicSbcs },
    { "IBM280",      "IBM280",         Family::EbcdicSbcs },
    { "IBM284",      "IBM284",         Family::EbcdicSbcs },
    { "IBM285",      "IBM285",         Family::EbcdicSbcs },
    { "IBM290",      "IBM290",         Family::EbcdicSbcs },
    { "IBM297",      "IBM297",         Family::EbcdicSbcs },
    { "IBM420",      "IBM420",         Family::EbcdicSbcs },
    { "IBM424",      "IBM424",         Family::EbcdicSbcs },
    { "IBM500",      "IBM500",         Family::EbcdicSbcs },
    { "IBM870",      "IBM870",         Family::EbcdicSbcs },
    { "IBM871",      "IBM871",         Family::EbcdicSbcs },
    { "IBM875",      "IBM875",         Family::EbcdicSbcs },
    { "IBM1025",     "IBM1025",        Family::EbcdicSbcs },
    { "IBM1026",     "IBM1026",        Family::EbcdicSbcs },
    { "IBM1047",     "IBM1047",        Family::EbcdicSbcs },
    { "IBM1140",     "IBM1140",        Family::EbcdicSbcs },
    { "IBM1141",     "IBM1141",        Family::EbcdicSbcs },
    { "IBM1142",     "IBM1142",        Family::EbcdicSbcs },
    { "IBM1143",     "IBM1143",        Family::EbcdicSbcs },
    { "IBM1144",     "IBM1144",        Family::EbcdicSbcs },
    { "IBM1145",     "IBM1145",        Family::EbcdicSbcs },
    { "IBM1146",     "IBM1146",        Family::EbcdicSbcs },
    { "IBM1147",     "IBM1147",        Family::EbcdicSbcs },
    { "IBM1148",     "IBM1148",        Family::EbcdicSbcs },
    { "IBM1149",     "IBM1149",        Family::EbcdicSbcs },
    { "IBM930",      "IBM930",         Family::EbcdicDbcs },
    { "IBM933",      "IBM933",         Family::EbcdicDbcs },
    { "IBM935",      "IBM935",         Family::EbcdicDbcs },
    { "IBM937",      "IBM937",         Family::EbcdicDbcs },
    { "IBM939",      "IBM939",         Family::EbcdicDbcs },
    { "IBM1364",     "IBM1364",        Family::EbcdicDbcs },
    { "IBM1371",     "IBM1371",        Family::EbcdicDbcs },
    { "IBM1388",     "IBM1388",        Family::EbcdicDbcs },
    { "IBM1390",     "IBM1390",        Family::EbcdicDbcs },
    { "IBM1399",     "IBM1399",        Family::EbcdicDbcs },
};

/// Other names of tables, after the name rules.
struct CodeSetAlias {
    const char* name;
    const char* table;
};

/// Files that lead to a table, for names that locales use: they are found where no aliases file is.
constexpr CodeSetAlias kRedirects[] = {
    { "USASCII",     "ANSIX341968" },
    { "SJIS",        "SHIFTJIS" },
    { "UHC",         "CP949" },
    { "WINDOWS31J",  "CP932" },
    { "EUCCN",       "GB2312" },
};

/// The lines of the aliases file.
constexpr CodeSetAlias kAliases[] = {
    { "ASCII",       "ANSIX341968" },
    { "ISO646US",    "ANSIX341968" },
    { "LATIN1",      "ISO88591" },
    { "LATIN2",      "ISO88592" },
    { "LATIN5",      "ISO88599" },
    { "LATIN9",      "ISO885915" },
    { "IBM437",      "CP437" },
    { "IBM850",      "CP850" },
    { "IBM852",      "CP852" },
    { "IBM866",      "CP866" },
    { "IBM943",      "CP932" },
    { "IBM1386",     "CP936" },
    { "MS936",       "CP936" },
    { "MS949",       "CP949" },
    { "MS950",       "CP950" },
    { "WINDOWS1250", "CP1250" },
    { "WINDOWS1251", "CP1251" },
    { "WINDOWS1252", "CP1252" },
    { "WINDOWS1253", "CP1253" },
    { "WINDOWS1254", "CP1254" },
    { "WINDOWS1255", "CP1255" },
    { "WINDOWS1256", "CP1256" },
    { "WINDOWS1257", "CP1257" },
    { "WINDOWS1258", "CP1258" },
    { "UJIS",        "EUCJP" },
    { "CP037",       "IBM037" },
    { "CP273",       "IBM273" },
    { "CP500",       "IBM500" },
    { "CP1047",      "IBM1047" },
    { "CP1140",      "IBM1140" },
    { "CP930",       "IBM930" },
    { "CP939",       "IBM939" },
};
// clang-format on
