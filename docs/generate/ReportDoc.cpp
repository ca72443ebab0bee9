#include "docs/generate/AttribSources.h"
#include "docs/generate/Documents.h"

#include <iomanip>
#include <string>

#include "com/VexCatalog.h"
#include "com/VexUtil.h"

namespace
{
constexpr char kIntroduction[] = R"(# The report: groups and attributes

<!-- Made by invhw_docs from the catalog in com/catalog/ and the table of sources in docs/generate/: change those and
     build the target update_docs. -->

A report is one `serviceDataList` element. It holds one `serviceData` element a row, with the group's element name in
`name` and the row in `value`. Groups with keys report every row and mark the keys with `IsKey="1"`; groups without
keys report one row. An attribute without a value is left out of its row unless its source says that it may be empty.

| Type | Value in the report |
|---|---|
| `VEX_ULONG` | the text of an enumeration, where the value has one; else a decimal number, 2^31 and above as a negative one |
| `VEX_STRING` | text in UTF-8; "Max" is the length in characters that readers should make room for, not a limit of the report |
| `VEX_FLOAT` | a number with six decimals |
| `VEX_DATETIME` | local time as `YYYY-MM-DD-hh.mm.ss.0000000` |

The schema of the report is [invhw-report.xsd](invhw-report.xsd).

Two texts of Partition's FS Type are written raw, which the contract of the report keeps: "UNIX-AT&T System V/386 | SCO
UNIX" (0x63, file system "s5") and "Minix < 1.4b" (0x80). A report with one of them is not well-formed XML. A reader that
may meet one escapes them before it parses:

    sed -e 's/>UNIX-AT&T System/>UNIX-AT\&amp;T System/' -e 's/>Minix < 1\.4b/>Minix \&lt; 1.4b/' report.xml
)";

// A text for a table's cell: "|" would end it, "<" would begin markup.
std::string cell(const char* text)
{
    std::string escaped;
    for (; *text != '\0'; ++text) {
        if (*text == '|' || *text == '<')
            escaped += '\\';
        escaped += *text;
    }
    return escaped;
}

// Heading anchors as Markdown viewers make them: lower case, a hyphen for a blank.
std::string anchor(const char* heading)
{
    std::string name;
    for (; *heading != '\0'; ++heading)
        name +=
            *heading == ' ' ? '-' : static_cast<char>(*heading >= 'A' && *heading <= 'Z' ? *heading | 0x20 : *heading);
    return name;
}

bool isCollected(const vexGroupDef& group)
{
    return attribSource(group.id, group.attributes->id) != nullptr;
}

void writeOverview(std::ostream& out)
{
    out << "\n## Groups\n\n| Id | Group | Element | Keys | Log mask | Collected |\n|---|---|---|---|---|---|\n";
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        out << "| " << group->id << " | [" << group->name << "](#" << anchor(group->name) << ") | `"
            << elementName(group->name) << "` | ";
        for (uint32_t i = 0; i < group->numKeys; ++i)
            out << (i == 0 ? "" : ", ") << getAttribNameFromId(group, group->keys[i]);
        out << " | 0x" << std::hex << group->debugMask << std::dec << " | " << (isCollected(*group) ? "yes" : "no")
            << " |\n";
    }
}

void writeAttribute(std::ostream& out, const vexGroupDef& group, const vexAttribDef& attrib)
{
    out << "| " << attrib.id << " | " << attrib.name << " | `" << elementName(attrib.name) << "` | `"
        << getVexAttribTypeAsString(attrib.type) << "` | ";
    if (attrib.maxLength != 0)
        out << attrib.maxLength;
    out << " | " << (isKey(&group, attrib.id) ? "yes" : "") << " | " << (attrib.enums == nullptr ? "" : "below")
        << " |";
    const char* source = attribSource(group.id, attrib.id);
    if (source != nullptr)
        out << " " << attribUnit(group.id, attrib.id) << " | " << cell(source) << " |";
    out << "\n";
}

void writeEnumeration(std::ostream& out, const vexAttribDef& attrib)
{
    out << "\nValues of " << attrib.name << ":\n\n| Value | Text |\n|---|---|\n";
    for (const vexEnumDef* pair = attrib.enums; pair->value != VEX_END; ++pair)
        out << "| " << pair->value << " | " << cell(pair->text) << " |\n";
}

void writeGroup(std::ostream& out, const vexGroupDef& group)
{
    const bool collected = isCollected(group);
    out << "\n## " << group.name << "\n\nGroup " << group.id << ", element `" << elementName(group.name)
        << "`, version " << group.version << (collected ? "." : ". No collector on this platform: never in a report.")
        << "\n\n| Id | Attribute | Element | Type | Max | Key | Values |" << (collected ? " Unit | Source |" : "")
        << "\n|---|---|---|---|---|---|---|" << (collected ? "---|---|" : "") << "\n";
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        writeAttribute(out, group, *attrib);
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        if (attrib->enums != nullptr)
            writeEnumeration(out, *attrib);
}
} // namespace

void writeReportDoc(std::ostream& out)
{
    out << kIntroduction;
    writeOverview(out);
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        writeGroup(out, *group);
}
