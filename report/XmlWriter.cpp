#include "report/Writer.h"

#include <string_view>

namespace report
{
namespace
{
// Only what XML demands: "&", "<", and ">" where it would end a CDATA section. Attribute values also hide their quote,
// and the blanks that a reader would take for others.
void writeEscaped(std::ostream& out, std::string_view text, bool inAttribute)
{
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&')
            out << "&amp;";
        else if (text[i] == '<')
            out << "&lt;";
        else if (text[i] == '>' && i >= 2 && text[i - 1] == ']' && text[i - 2] == ']')
            out << "&gt;";
        else if (text[i] == '"' && inAttribute)
            out << "&quot;";
        else if ((text[i] == '\t' || text[i] == '\n' || text[i] == '\r') && inAttribute)
            out << "&#" << int{text[i]} << ';';
        else
            out << text[i];
    }
}
} // namespace

void XmlWriter::begin(const Header&)
{
    out_ << "\n<serviceDataList>";
}

void XmlWriter::value(const GroupRows& group, const Value& value)
{
    out_ << "\n\t\t\t\t<" << value.name();
    if (isKey(group, value))
        out_ << " IsKey=\"1\"";
    if (sources_ && !value.source.empty()) {
        out_ << " Source=\"";
        writeEscaped(out_, value.source, true);
        out_ << '"';
    }
    out_ << '>';
    writeEscaped(out_, valueText(value), false);
    out_ << "</" << value.name() << '>';
}

void XmlWriter::row(const GroupRows& group, const Row& row)
{
    const std::string_view name = group.name();
    out_ << "\n\n\t<serviceData>\n\t\t<name>" << name << "</name>\n\t\t<value>\n\t\t\t<" << name << " version=\""
         << group.version << "\">";
    for (const Value& rowValue : row.values)
        value(group, rowValue);
    out_ << "\n\t\t\t</" << name << ">\n\t\t</value>\n\t</serviceData>";
}

void XmlWriter::end()
{
    out_ << "\n\n</serviceDataList>";
}
} // namespace report
