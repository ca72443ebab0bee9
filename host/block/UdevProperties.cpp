#include "host/block/UdevProperties.h"

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
// udev writes blanks and other odd bytes of labels as \xHH.
std::string unescaped(std::string_view text)
{
    std::string plain;
    while (!text.empty()) {
        const bool isEscape = text.size() >= 4 && text.starts_with("\\x");
        const auto byte = isEscape ? report::parseNumber<uint8_t>(text.substr(2, 2), 16) : std::nullopt;
        plain += byte ? static_cast<char>(*byte) : text[0];
        text.remove_prefix(byte ? 4 : 1);
    }
    return plain;
}
} // namespace

UdevProperties::UdevProperties(const Root& root, const std::string& number) : path_("/run/udev/data/b" + number)
{
    const std::string text = number.empty() ? "" : root.read(path_).value_or("");
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const auto [name, value] = report::keyValue(line, '=');
        if (name.starts_with("E:"))
            values_.insert_or_assign(std::string(name.substr(2)), unescaped(value));
    }
}

MaybeFact UdevProperties::value(const char* name) const
{
    const auto found = values_.find(name);
    return found != values_.end() && !found->second.empty() ? MaybeFact(Fact{found->second, path_}) : std::nullopt;
}
} // namespace host
