#include "docs/generate/HostDocuments.h"
#include "docs/generate/SchemaParts.h"

#include <set>
#include <string>
#include <vector>

#include "report/Catalog.h"

namespace
{
using report::Attribute;
using report::catalog;
using report::Group;

constexpr char kMadeBy[] =
    "Made by invhw_host_docs from the host catalog in report/catalog/: change that and build the target update_docs.";

// Numbers as the program writes them: no sign, no needless 0 before them.
constexpr char kTypes[] = R"xsd(
  <!-- Values, by the type of their attribute. -->
  <xs:simpleType name="ULONG">
    <xs:restriction base="xs:unsignedInt"><xs:pattern value="0|[1-9][0-9]*"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="UQUAD">
    <xs:restriction base="xs:unsignedLong"><xs:pattern value="0|[1-9][0-9]*"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="FLOAT">
    <xs:restriction base="xs:string"><xs:pattern value="-?[0-9]+\.[0-9]{6}"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="DOUBLE">
    <xs:restriction base="FLOAT"/>
  </xs:simpleType>
  <xs:simpleType name="YESNO">
    <xs:restriction base="xs:string"><xs:enumeration value="Yes"/><xs:enumeration value="No"/></xs:restriction>
  </xs:simpleType>
)xsd";

// The file or call that a value came from, with the option for sources.
constexpr char kAttributes[] = R"xsd(
  <xs:attributeGroup name="value">
    <xs:attribute name="Source" type="xs:string"/>
  </xs:attributeGroup>
  <xs:attributeGroup name="key">
    <xs:attributeGroup ref="value"/>
    <xs:attribute name="IsKey" type="xs:string" fixed="1" use="required"/>
  </xs:attributeGroup>
)xsd";

bool hasOwnType(const Attribute& attribute)
{
    return attribute.words != nullptr || (attribute.enums != nullptr && !attribute.isYesNo);
}

// The simple type of an attribute's values.
std::string valueType(const Group& group, const Attribute& attribute)
{
    if (hasOwnType(attribute))
        return group.element + "." + attribute.element;
    if (attribute.isYesNo)
        return "YESNO";
    std::string name = typeName(attribute.type);
    return attribute.maxLength == 0 ? name : name + "." + std::to_string(attribute.maxLength);
}

// The type of its element: the value with the attributes of a key or of another value.
std::string elementType(const Group& group, const Attribute& attribute)
{
    return valueType(group, attribute) + (attribute.isKey ? ".key" : ".value");
}

void writeTextTypes(std::ostream& out)
{
    std::set<uint32_t> lengths;
    for (const Group& group : catalog())
        for (const Attribute& attribute : group.attributes)
            if (attribute.maxLength != 0 && !hasOwnType(attribute))
                lengths.insert(attribute.maxLength);
    for (const uint32_t length : lengths)
        out << "  <xs:simpleType name=\"STRING." << length
            << "\">\n    <xs:restriction base=\"xs:string\"><xs:maxLength value=\"" << length
            << "\"/></xs:restriction>\n  </xs:simpleType>\n";
}

void writeWordType(std::ostream& out, const std::string& name, const char* const* words)
{
    out << "  <xs:simpleType name=\"" << name << "\">\n    <xs:restriction base=\"xs:string\">\n";
    for (; *words != nullptr; ++words)
        out << "      <xs:enumeration value=" << quoted(*words) << "/>\n";
    out << "    </xs:restriction>\n  </xs:simpleType>\n";
}

// The element types that the group's attributes are the first to have.
void writeElementTypes(std::ostream& out, const Group& group, std::set<std::string>* written)
{
    for (const Attribute& attribute : group.attributes) {
        const std::string name = elementType(group, attribute);
        if (!written->insert(name).second)
            continue;
        out << "  <xs:complexType name=\"" << name << "\">\n    <xs:simpleContent><xs:extension base=\""
            << valueType(group, attribute) << "\"><xs:attributeGroup ref=\"" << (attribute.isKey ? "key" : "value")
            << "\"/></xs:extension></xs:simpleContent>\n  </xs:complexType>\n";
    }
}

void writeGroupType(std::ostream& out, const Group& group, std::set<std::string>* written)
{
    out << "\n  <!-- " << group.name << " (" << group.id << ") -->\n";
    for (const Attribute& attribute : group.attributes)
        if (attribute.words != nullptr)
            writeWordType(out, valueType(group, attribute), attribute.words);
        else if (hasOwnType(attribute))
            writeEnumType(out, valueType(group, attribute), attribute.enums);
    writeElementTypes(out, group, written);
    out << "  <xs:complexType name=\"" << group.element << "\">\n    <xs:sequence>\n";
    for (const Attribute& attribute : group.attributes)
        out << "      <xs:element name=\"" << attribute.element << "\" type=\"" << elementType(group, attribute)
            << "\" minOccurs=\"0\"/>\n";
    out << "    </xs:sequence>\n    <xs:attribute name=\"version\" type=\"xs:unsignedInt\" fixed=\"" << group.version
        << "\" use=\"required\"/>\n  </xs:complexType>\n";
}

std::vector<std::string> groupElements()
{
    std::vector<std::string> elements;
    for (const Group& group : catalog())
        elements.push_back(group.element);
    return elements;
}
} // namespace

void writeHostSchema(std::ostream& out)
{
    writeSchemaHead(out, kMadeBy);
    out << kTypes;
    writeDateTimeType(out);
    writeTextTypes(out);
    out << kAttributes;
    writeServiceData(out, groupElements());
    std::set<std::string> written;
    for (const Group& group : catalog())
        writeGroupType(out, group, &written);
    out << "\n</xs:schema>\n";
}
