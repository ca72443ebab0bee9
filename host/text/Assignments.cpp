#include "host/text/Assignments.h"

#include "report/Text.h"

namespace host
{
namespace
{
std::string unquoted(std::string_view value)
{
    const char quote = value.empty() ? '\0' : value.front();
    const bool isQuoted = (quote == '"' || quote == '\'') && value.size() >= 2 && value.back() == quote;
    if (!isQuoted)
        return std::string(value);
    value = value.substr(1, value.size() - 2);
    std::string text;
    for (size_t i = 0; i < value.size(); ++i) {
        if (quote == '"' && value[i] == '\\' && i + 1 < value.size())
            ++i;
        text += value[i];
    }
    return text;
}
} // namespace

std::map<std::string, std::string, std::less<>> parseAssignments(std::string_view text)
{
    std::map<std::string, std::string, std::less<>> values;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const auto [name, value] = report::keyValue(line, '=');
        if (!name.empty() && name.front() != '#')
            values.insert_or_assign(std::string(name), unquoted(value));
    }
    return values;
}
} // namespace host
