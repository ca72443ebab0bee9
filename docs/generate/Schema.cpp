#include "docs/generate/Documents.h"
#include "docs/generate/SchemaParts.h"

#include <string>
#include <vector>

#include "com/VexCatalog.h"

namespace
{
constexpr char kMadeBy[] =
    "Made by invhw_docs from the catalog in com/catalog/: change that and build the target update_docs.";

// The decimal separator is the locale's.
constexpr char kTypes[] = R"xsd(
  <!-- Values, by the type of their attribute. -->
  <xs:simpleType name="UCHAR">
    <xs:restriction base="xs:string"><xs:pattern value="0x[0-9A-F]{2}"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="USHORT">
    <xs:restriction base="xs:unsignedShort"/>
  </xs:simpleType>
  <xs:simpleType name="ULONG">
    <xs:annotation><xs:documentation>2^31 and above as negative numbers</xs:documentation></xs:annotation>
    <xs:restriction base="xs:int"/>
  </xs:simpleType>
  <xs:simpleType name="UQUAD">
    <xs:annotation><xs:documentation>the low 32 bits, signed</xs:documentation></xs:annotation>
    <xs:restriction base="xs:int"/>
  </xs:simpleType>
  <xs:simpleType name="FLOAT">
    <xs:restriction base="xs:string"><xs:pattern value="-?([0-9]+[.,][0-9]{6}|inf|nan)"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="DOUBLE">
    <xs:restriction base="FLOAT"/>
  </xs:simpleType>
  <xs:simpleType name="STRING">
    <xs:restriction base="xs:string"/>
  </xs:simpleType>
  <xs:simpleType name="OCTETSTRING">
    <xs:restriction base="xs:string"><xs:length value="0"/></xs:restriction>
  </xs:simpleType>
)xsd";

// Enumeration texts apply to numbers only; a text attribute that has an enumeration may hold anything.
bool hasEnumType(const vexAttribDef& attrib)
{
    return attrib.enums != nullptr && attrib.type == VEX_ULONG;
}

// The name of an attribute's value type; an enumeration has a type of its own.
std::string valueType(const vexGroupDef& group, const vexAttribDef& attrib)
{
    if (hasEnumType(attrib))
        return elementName(group.name) + "." + elementName(attrib.name);
    return typeName(attrib.type);
}

std::vector<std::string> groupElements()
{
    std::vector<std::string> elements;
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        elements.push_back(elementName(group->name));
    return elements;
}

void writeElement(std::ostream& out, const vexGroupDef& group, const vexAttribDef& attrib)
{
    out << "      <xs:element name=\"" << elementName(attrib.name) << "\" minOccurs=\"0\"";
    if (!isKey(&group, attrib.id)) {
        out << " type=\"" << valueType(group, attrib) << "\"/>\n";
        return;
    }
    out << ">\n        <xs:complexType>\n          <xs:simpleContent>\n            <xs:extension base=\""
        << valueType(group, attrib)
        << "\">\n              <xs:attribute name=\"IsKey\" type=\"xs:string\" fixed=\"1\" use=\"required\"/>\n"
           "            </xs:extension>\n          </xs:simpleContent>\n        </xs:complexType>\n      "
           "</xs:element>\n";
}

// Any attribute may be absent, and they stand in the collector's order, not the catalog's.
void writeGroupType(std::ostream& out, const vexGroupDef& group)
{
    out << "\n  <!-- " << group.name << " (" << group.id << ") -->\n";
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        if (hasEnumType(*attrib))
            writeEnumType(out, valueType(group, *attrib), attrib->enums);
    out << "  <xs:complexType name=\"" << elementName(group.name) << "\">\n    <xs:all>\n";
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        writeElement(out, group, *attrib);
    out << "    </xs:all>\n    <xs:attribute name=\"version\" type=\"xs:int\" use=\"required\"/>\n  "
           "</xs:complexType>\n";
}
} // namespace

void writeSchema(std::ostream& out)
{
    writeSchemaHead(out, kMadeBy);
    out << kTypes;
    writeDateTimeType(out);
    writeServiceData(out, groupElements());
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        writeGroupType(out, *group);
    out << "\n</xs:schema>\n";
}
