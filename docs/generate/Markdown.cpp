#include "docs/generate/Markdown.h"

std::string cell(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '|' || c == '<')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

std::string anchor(std::string_view heading)
{
    std::string name;
    for (const char c : heading) {
        if (c >= 'A' && c <= 'Z')
            name += static_cast<char>(c | 0x20);
        else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_')
            name += c;
        else if (c == ' ')
            name += '-';
    }
    return name;
}

std::string linkTo(std::string_view text, std::string_view heading)
{
    return "[" + std::string(text) + "](#" + anchor(heading) + ")";
}

void writeValues(std::ostream& out, std::string_view attribute, const vexEnumDef* values)
{
    out << "\nValues of " << attribute << ":\n\n| Value | Text |\n|---|---|\n";
    for (; values->value != VEX_END; ++values)
        out << "| " << values->value << " | " << cell(values->text) << " |\n";
}
