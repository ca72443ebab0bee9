#include "docs/generate/AttribSources.h"
#include "docs/generate/Documents.h"
#include "docs/generate/Markdown.h"

#include <iomanip>
#include <string>

#include "com/VexCatalog.h"
#include "com/VexUtil.h"

namespace
{
constexpr char kIntroduction[] = R"(# The report: groups and attributes

<!-- Made by invhw_docs from the catalog in com/catalog/ and the table of sources in docs/generate/: change those and
     build the target update_docs. -->

This half describes what `invhw` writes; that of `invhwctl scan` follows under
[The report of invhwctl](#the-report-of-invhwctl).

A report is one `serviceDataList` element. It holds one `serviceData` element a row, with the group's element name in
`name` and the row in `value`. Groups with keys report every row and mark the keys with `IsKey="1"`; groups without
keys report one row. An attribute without a value is left out of its row unless its source says that it may be empty.
"Id's name" is the attribute's name in the sources: where it is searched for, the line is found that adds the value.

| Type | Value in the report |
|---|---|
| `VEX_ULONG` | the text of an enumeration, where the value has one; else a decimal number, 2^31 and above as a negative one |
| `VEX_STRING` | text in UTF-8; "Max" is the length in characters that readers should make room for, not a limit of the report |
| `VEX_FLOAT` | a number with six decimals behind the decimal separator of the scan's locale: `4.000000` or `4,000000` |
| `VEX_DATETIME` | local time as `YYYY-MM-DD-hh.mm.ss.0000000`; empty for a time that has no local time |

A text ends before the first byte that is no character of the scan's locale, and is empty when that is its first byte or
when there is no table of the locale's code set.

The schema of the report is [invhw-report.xsd](invhw-report.xsd).

## Reports that are not well-formed

Texts of the machine are written with `&` and `<` escaped and else as they are, which the contract of the report keeps.
A text that holds `]]>`, a control character, U+FFFE or U+FFFF makes a report that is not well-formed XML. So do two texts
of Partition's FS Type, which are written raw: "UNIX-AT&T System V/386 | SCO UNIX" (0x63, file system "s5") and
"Minix < 1.4b" (0x80). A reader that may meet one of them escapes or drops them before it parses, with GNU sed:

    LC_ALL=C sed -e 's/>UNIX-AT&T System/>UNIX-AT\&amp;T System/' -e 's/>Minix < 1\.4b/>Minix \&lt; 1.4b/' \
        -e 's/]]>/]]\&gt;/g' -e 's/[\x01-\x08\x0B\x0C\x0E-\x1F]//g' -e 's/\xEF\xBF[\xBE\xBF]//g' report.xml
)";

bool isCollected(const vexGroupDef& group)
{
    return attribSource(group.id, group.attributes->id) != nullptr;
}

void writeOverview(std::ostream& out)
{
    out << "\n## Groups\n\n| Id | Group | Element | Keys | Log mask | Collected |\n|---|---|---|---|---|---|\n";
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        out << "| " << group->id << " | " << linkTo(group->name, group->name) << " | `" << elementName(group->name)
            << "` | ";
        for (uint32_t i = 0; i < group->numKeys; ++i)
            out << (i == 0 ? "" : ", ") << getAttribNameFromId(group, group->keys[i]);
        out << " | 0x" << std::hex << group->debugMask << std::dec << " | " << (isCollected(*group) ? "yes" : "no")
            << " |\n";
    }
}

void writeAttribute(std::ostream& out, const vexGroupDef& group, const vexAttribDef& attrib)
{
    const char* source = attribSource(group.id, attrib.id);
    out << "| " << attrib.id << " | ";
    if (source != nullptr)
        out << "`" << attribIdName(group.id, attrib.id) << "` | ";
    out << attrib.name << " | `" << elementName(attrib.name) << "` | `" << getVexAttribTypeAsString(attrib.type)
        << "` | ";
    if (attrib.maxLength != 0)
        out << attrib.maxLength;
    out << " | " << (isKey(&group, attrib.id) ? "yes" : "") << " | " << (attrib.enums == nullptr ? "" : "below")
        << " |";
    if (source != nullptr)
        out << " " << attribUnit(group.id, attrib.id) << " | " << cell(source) << " |";
    out << "\n";
}

void writeGroup(std::ostream& out, const vexGroupDef& group)
{
    const bool collected = isCollected(group);
    out << "\n## " << group.name << "\n\nGroup " << group.id << ", element `" << elementName(group.name)
        << "`, version " << group.version << (collected ? "." : ". No collector on this platform: never in a report.")
        << "\n\n| Id |" << (collected ? " Id's name |" : "") << " Attribute | Element | Type | Max | Key | Values |"
        << (collected ? " Unit | Source |" : "") << "\n|---|---|---|---|---|---|---|"
        << (collected ? "---|---|---|" : "") << "\n";
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        writeAttribute(out, group, *attrib);
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        if (attrib->enums != nullptr)
            writeValues(out, attrib->name, attrib->enums);
}
} // namespace

void writeReportDoc(std::ostream& out)
{
    out << kIntroduction;
    writeOverview(out);
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        writeGroup(out, *group);
}
