#pragma once

#include <cstdint>

/// The characters of EBCDIC code page 037, by byte.
extern const uint16_t def_eb_to_ucs[256];

/// 1 for the bytes that are the same graphic character in every EBCDIC code page: the invariant character set. Its
/// lower-case letters are left out, since the Japanese pages with katakana have them elsewhere.
extern const unsigned char invar_eb_to_ucs[256];
