// Family 8: one byte a character, every byte looked up.

#include "codeset/Sbcs.h"

using Reader = SbcsReader<false>;
using Writer = SbcsWriter<false>;

static constexpr auto ebcdic_sbcs_to_utf8_r = convert<Reader, Utf8Writer>;
static constexpr auto ebcdic_sbcs_from_utf8_r = convert<Utf8Reader, Writer>;
static constexpr auto ebcdic_sbcs_to_ucs2_r = convert<Reader, Ucs2Writer>;
static constexpr auto ebcdic_sbcs_from_ucs2_r = convert<Ucs2Reader, Writer>;

const ConverterFamily kEbcdicSbcs = {ebcdic_sbcs_to_utf8_r, ebcdic_sbcs_from_utf8_r, ebcdic_sbcs_to_ucs2_r,
                                     ebcdic_sbcs_from_ucs2_r};
