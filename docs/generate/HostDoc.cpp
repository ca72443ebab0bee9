#include "docs/generate/HostDocuments.h"
#include "docs/generate/Markdown.h"

#include <string>

#include "com/VexCatalog.h"
#include "com/VexUtil.h"
#include "report/Catalog.h"

namespace
{
using report::Attribute;
using report::catalog;
using report::Group;

constexpr char kIntroduction[] = R"(
# The report of invhwctl

<!-- Made by invhw_host_docs from the host catalog in report/catalog/: change that and build the target update_docs. -->

`invhwctl scan` fills the same catalog from what kernels of today tell. The groups above keep their attributes and
meaning and are version 2 here; they gain attributes, with ids from 1001, and there are groups beyond them, with ids from
101. "Structure type N" is a record of the firmware's table, which the kernel keeps in `/sys/firmware/dmi/tables/DMI`.

All groups report every row. Attributes stand in the order of the tables below; one whose source is missing or empty is left
out of its row.

| Type | Value in XML | Value in JSON |
|---|---|---|
| `VEX_ULONG` | decimal number, 4294967295 for a larger one | number |
| `VEX_ULONG` with values | their text; the decimal number of a value without text | the same, as a string |
| `VEX_ULONG`, yes/no | `Yes` or `No` | `true` or `false` |
| `VEX_UQUAD` | decimal number | number |
| `VEX_FLOAT`, `VEX_DOUBLE` | number with six digits behind a point: `4.000000` | number |
| `VEX_STRING` | UTF-8, cut at "Max" characters; where there are values the text of the source's code | string |
| `VEX_DATETIME` | local time as `YYYY-MM-DD-hh.mm.ss.0000000` | RFC 3339, local time without offset where the zone is not known |

Bytes that are no UTF-8 and characters that XML does not allow are written as U+FFFD. The schema of the XML form is
[invhw-host.xsd](invhw-host.xsd), that of the JSON form [invhw-report.schema.json](invhw-report.schema.json). With
`--sources` a value says which file or call it came from: in XML as the element's attribute `Source`, in JSON in the
row's member `Sources`.

Marks of attributes:

| Mark | Meaning |
|---|---|
| key | one of the attributes that tell the group's rows apart, `IsKey="1"` in XML |
| volatile | differs between two scans of a machine that did not change |
| volatile if dynamic | volatile in rows whose attribute Dynamic is Yes |
| identifying | tells which machine, network or person it was: replaced when a report is redacted |
| identifying if an address | identifying when the name is made of a hardware address, as `enx...` is |
| identifying if it names a host or user | identifying when the path holds the name of a host or user |
| yes/no | has the values Yes and No |
)";

constexpr char kOverviewHeading[] = "Groups of invhwctl";

// A group of both programs has two headings in one document.
std::string headingOf(const Group& group)
{
    return "invhwctl: " + group.name;
}

void append(std::string* list, std::string_view separator, std::string_view text)
{
    if (!list->empty() && !text.empty())
        *list += separator;
    *list += text;
}

std::string namesOf(const Group& group, std::span<const uint32_t> ids, std::string_view separator)
{
    std::string names;
    for (const uint32_t id : ids)
        if (id != 0)
            append(&names, separator, group.find(id)->name);
    return names;
}

void writeOverview(std::ostream& out)
{
    out << "\n## " << kOverviewHeading
        << "\n\n| Id | Group | Element | Version | Keys | Source |\n|---|---|---|---|---|---|\n";
    for (const Group& group : catalog())
        out << "| " << group.id << " | " << linkTo(group.name, headingOf(group)) << " | `" << group.element << "` | "
            << group.version << " | " << namesOf(group, group.keys, ", ") << " | " << cell(group.source) << " |\n";
}

std::string marksOf(const Attribute& attribute)
{
    std::string marks;
    append(&marks, ", ", attribute.isKey ? "key" : "");
    append(&marks, ", ", attribute.isVolatile ? "volatile" : "");
    append(&marks, ", ", attribute.isVolatileIfDynamic ? "volatile if dynamic" : "");
    append(&marks, ", ", attribute.isIdentifying ? "identifying" : "");
    append(&marks, ", ", attribute.isIdentifyingIfAddress ? "identifying if an address" : "");
    append(&marks, ", ", attribute.isIdentifyingIfHostOrUser ? "identifying if it names a host or user" : "");
    append(&marks, ", ", attribute.isYesNo ? "yes/no" : "");
    return marks;
}

const vexEnumDef* valuesOf(const Attribute& attribute)
{
    return attribute.enums != nullptr ? attribute.enums : attribute.codeTexts;
}

// True when the first half of the document has the values already.
bool areOfTheModel(const Group& group, const Attribute& attribute)
{
    const vexGroupDef* model = getGroupDefinitionFromId(group.id);
    const vexAttribDef* row = model == nullptr ? nullptr : getAttribDefinitionFromId(model, attribute.id);
    return row != nullptr && row->enums == valuesOf(attribute);
}

std::string valuesCell(const Group& group, const Attribute& attribute)
{
    std::string words;
    for (const char* const* word = attribute.words; word != nullptr && *word != nullptr; ++word)
        append(&words, ", ", *word);
    if (!words.empty() || valuesOf(attribute) == nullptr || attribute.isYesNo)
        return words;
    return areOfTheModel(group, attribute) ? "as [above](#" + anchor(group.name) + ")" : "below";
}

bool writeAttribute(std::ostream& out, const Group& group, const Attribute& attribute, const IdNames& names)
{
    const std::string_view name = names.find(group.element, attribute.id);
    out << "| " << attribute.id << " | `" << name << "` | " << attribute.name << " | `" << attribute.element << "` | `"
        << getVexAttribTypeAsString(attribute.type) << "` | ";
    if (attribute.maxLength != 0)
        out << attribute.maxLength;
    out << " | " << marksOf(attribute) << " | " << valuesCell(group, attribute) << " | " << attribute.unit << " | "
        << cell(attribute.source) << " |\n";
    return !name.empty();
}

// "by WWN, else Serial Number, else the keys, else their order".
std::string pairingOf(const Group& group)
{
    std::string pairing;
    for (const report::PairingDef& ids : group.pairing)
        append(&pairing, ", else ", namesOf(group, ids.ids, " with "));
    append(&pairing, ", else ", group.keys.empty() ? "" : "the keys");
    append(&pairing, ", else ", "their order");
    return pairing;
}

bool writeGroup(std::ostream& out, const Group& group, const IdNames& names)
{
    out << "\n## " << headingOf(group) << "\n\nGroup " << group.id << ", element `" << group.element << "`, version "
        << group.version << ". Source: " << group.source << ". Rows of two reports are paired by " << pairingOf(group)
        << ".\n\n| Id | Id's name | Attribute | Element | Type | Max | Marks | Values | Unit | Source |\n"
           "|---|---|---|---|---|---|---|---|---|---|\n";
    bool named = true;
    for (const Attribute& attribute : group.attributes)
        named = writeAttribute(out, group, attribute, names) && named;
    for (const Attribute& attribute : group.attributes)
        if (valuesCell(group, attribute) == "below")
            writeValues(out, attribute.name, valuesOf(attribute));
    return named;
}
} // namespace

bool writeHostDoc(std::ostream& out, const IdNames& names)
{
    out << kIntroduction;
    writeOverview(out);
    bool named = true;
    for (const Group& group : catalog())
        named = writeGroup(out, group, names) && named;
    return named;
}
