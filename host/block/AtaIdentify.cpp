#include "host/block/AtaIdentify.h"

#include "report/Text.h"

namespace host
{
std::optional<AtaIdentify> AtaIdentify::parse(std::string_view text)
{
    AtaIdentify identify;
    size_t count = 0;
    for (const std::string_view word : report::words(text)) {
        const auto value = report::parseNumber<uint16_t>(word, 16);
        if (!value || count == kWords)
            return std::nullopt;
        identify.words_[count++] = *value;
    }
    return count == kWords ? std::optional<AtaIdentify>(identify) : std::nullopt;
}

std::string AtaIdentify::string(size_t first, size_t count) const
{
    std::string text;
    for (size_t i = first; i < first + count; ++i) {
        text += static_cast<char>(words_[i] >> 8);
        text += static_cast<char>(words_[i] & 0xFF);
    }
    return std::string(report::trimmed(std::string_view(text).substr(0, text.find('\0'))));
}
} // namespace host
