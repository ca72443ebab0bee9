// Family 1: one byte a character, ASCII below 0x80.

#include "codeset/Sbcs.h"

namespace
{

using Reader = SbcsReader<true>;
using Writer = SbcsWriter<true>;

constexpr auto ascii_sbcs_to_utf8_r = convert<Reader, Utf8Writer>;
constexpr auto ascii_sbcs_from_utf8_r = convert<Utf8Reader, Writer>;
constexpr auto ascii_sbcs_to_ucs2_r = convert<Reader, Ucs2Writer>;
constexpr auto ascii_sbcs_from_ucs2_r = convert<Ucs2Reader, Writer>;

} // namespace

const ConverterFamily kAsciiSbcs = {ascii_sbcs_to_utf8_r, ascii_sbcs_from_utf8_r, ascii_sbcs_to_ucs2_r,
                                    ascii_sbcs_from_ucs2_r};
