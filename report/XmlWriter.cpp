#include "report/Writer.h"

#include <string_view>

namespace report
{
namespace
{
// Only what XML demands: "&", "<", and ">" where it would end a CDATA section. Attribute values also hide their quote,
// and the blanks that a reader would take for others.
void appendEscaped(std::string& out, std::string_view text, bool inAttribute)
{
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&')
            out += "&amp;";
        else if (text[i] == '<')
            out += "&lt;";
        else if (text[i] == '>' && i >= 2 && text[i - 1] == ']' && text[i - 2] == ']')
            out += "&gt;";
        else if (text[i] == '"' && inAttribute)
            out += "&quot;";
        else if ((text[i] == '\t' || text[i] == '\n' || text[i] == '\r') && inAttribute)
            (out.append("&#") += std::to_string(int{text[i]})) += ';';
        else
            out += text[i];
    }
}
} // namespace

void XmlWriter::begin(const Header&)
{
    out_ << "\n<serviceDataList>";
}

void XmlWriter::addValue(const GroupRows& group, const Value& value)
{
    text_.append("\n\t\t\t\t<").append(value.name());
    if (isKey(group, value))
        text_ += " IsKey=\"1\"";
    if (sources_ && !value.source.empty()) {
        text_ += " Source=\"";
        appendEscaped(text_, value.source, true);
        text_ += '"';
    }
    text_ += '>';
    appendEscaped(text_, valueText(value), false);
    text_.append("</").append(value.name()) += '>';
}

void XmlWriter::row(const GroupRows& group, const Row& row)
{
    const std::string_view name = group.name();
    text_.clear();
    for (const Value& value : row.values)
        addValue(group, value);
    out_ << "\n\n\t<serviceData>\n\t\t<name>" << name << "</name>\n\t\t<value>\n\t\t\t<" << name << " version=\""
         << group.version << "\">" << text_ << "\n\t\t\t</" << name << ">\n\t\t</value>\n\t</serviceData>";
}

void XmlWriter::end()
{
    out_ << "\n\n</serviceDataList>";
}
} // namespace report
