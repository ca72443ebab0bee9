// Family 6: UTF-8 itself, copied and checked.

#include "codeset/UnicodeText.h"

namespace
{

constexpr auto utf8_to_utf8_r = convert<Utf8Reader, Utf8Writer>;
constexpr auto utf8_to_ucs2_r = convert<Utf8Reader, Ucs2Writer>;
constexpr auto utf8_from_ucs2_r = convert<Ucs2Reader, Utf8Writer>;

} // namespace

const ConverterFamily kUtf8 = {utf8_to_utf8_r, utf8_to_utf8_r, utf8_to_ucs2_r, utf8_from_ucs2_r};
