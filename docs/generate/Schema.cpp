#include "docs/generate/Documents.h"

#include <set>
#include <string>

#include "com/VexCatalog.h"

namespace
{
// Element names are unqualified: the report names no namespace. The decimal separator is the locale's.
constexpr char kHead[] = R"xsd(<?xml version="1.0" encoding="UTF-8"?>
<!-- Made by invhw_docs from the catalog in com/catalog/: change that and build the target update_docs. -->
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">

  <xs:element name="serviceDataList">
    <xs:complexType>
      <xs:sequence>
        <xs:element name="serviceData" type="serviceData" minOccurs="0" maxOccurs="unbounded"/>
      </xs:sequence>
    </xs:complexType>
  </xs:element>

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
  <xs:simpleType name="DATETIME">
    <xs:annotation><xs:documentation>local time; empty where it has none</xs:documentation></xs:annotation>
    <xs:restriction base="xs:string">
      <xs:pattern value="([0-9]{4}-[0-9]{2}-[0-9]{2}-[0-9]{2}\.[0-9]{2}\.[0-9]{2}\.0{7})?"/>
    </xs:restriction>
  </xs:simpleType>
)xsd";

// A text for an attribute value of the schema.
std::string quoted(const char* text)
{
    std::string escaped = "\"";
    for (; *text != '\0'; ++text) {
        switch (*text) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += *text;
        }
    }
    return escaped + '"';
}

const char* typeName(uint32_t type)
{
    static constexpr const char* const names[] = {"UCHAR",  "USHORT", "ULONG",       "UQUAD",   "FLOAT",
                                                  "DOUBLE", "STRING", "OCTETSTRING", "DATETIME"};
    return names[type - VEX_UCHAR];
}

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

void writeServiceData(std::ostream& out)
{
    out << "\n  <xs:complexType name=\"serviceData\">\n    <xs:sequence>\n"
           "      <xs:element name=\"name\" type=\"groupName\"/>\n"
           "      <xs:element name=\"value\">\n        <xs:complexType>\n          <xs:choice>\n";
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group) {
        const std::string name = elementName(group->name);
        out << "            <xs:element name=\"" << name << "\" type=\"" << name << "\"/>\n";
    }
    out << "          </xs:choice>\n        </xs:complexType>\n      </xs:element>\n"
           "    </xs:sequence>\n  </xs:complexType>\n";
}

void writeGroupNames(std::ostream& out)
{
    out << "\n  <xs:simpleType name=\"groupName\">\n    <xs:restriction base=\"xs:string\">\n";
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        out << "      <xs:enumeration value=\"" << elementName(group->name) << "\"/>\n";
    out << "    </xs:restriction>\n  </xs:simpleType>\n";
}

// The texts of an enumeration, or the number where a value has no text.
void writeEnumType(std::ostream& out, const vexGroupDef& group, const vexAttribDef& attrib)
{
    out << "  <xs:simpleType name=\"" << valueType(group, attrib) << "\">\n    <xs:union memberTypes=\"ULONG\">\n"
        << "      <xs:simpleType>\n        <xs:restriction base=\"xs:string\">\n";
    std::set<std::string> written; // two values may have one text
    for (const vexEnumDef* pair = attrib.enums; pair->value != VEX_END; ++pair)
        if (written.insert(pair->text).second)
            out << "          <xs:enumeration value=" << quoted(pair->text) << "/>\n";
    out << "        </xs:restriction>\n      </xs:simpleType>\n    </xs:union>\n  </xs:simpleType>\n";
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
            writeEnumType(out, group, *attrib);
    out << "  <xs:complexType name=\"" << elementName(group.name) << "\">\n    <xs:all>\n";
    for (const vexAttribDef* attrib = group.attributes; attrib->id != VEX_END; ++attrib)
        writeElement(out, group, *attrib);
    out << "    </xs:all>\n    <xs:attribute name=\"version\" type=\"xs:int\" use=\"required\"/>\n  "
           "</xs:complexType>\n";
}
} // namespace

void writeSchema(std::ostream& out)
{
    out << kHead;
    writeServiceData(out);
    writeGroupNames(out);
    for (const vexGroupDef* group = GROUPS_DEF; group->id != VEX_END; ++group)
        writeGroupType(out, *group);
    out << "\n</xs:schema>\n";
}
