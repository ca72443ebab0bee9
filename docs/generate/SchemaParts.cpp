#include "docs/generate/SchemaParts.h"

#include <set>

// Element names are unqualified: the report names no namespace.
void writeSchemaHead(std::ostream& out, std::string_view madeBy)
{
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- " << madeBy
        << " -->\n"
           R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">

  <xs:element name="serviceDataList">
    <xs:complexType>
      <xs:sequence>
        <xs:element name="serviceData" type="serviceData" minOccurs="0" maxOccurs="unbounded"/>
      </xs:sequence>
    </xs:complexType>
  </xs:element>
)";
}

void writeServiceData(std::ostream& out, const std::vector<std::string>& elements)
{
    out << "\n  <xs:complexType name=\"serviceData\">\n    <xs:sequence>\n"
           "      <xs:element name=\"name\" type=\"groupName\"/>\n"
           "      <xs:element name=\"value\">\n        <xs:complexType>\n          <xs:choice>\n";
    for (const std::string& element : elements)
        out << "            <xs:element name=\"" << element << "\" type=\"" << element << "\"/>\n";
    out << "          </xs:choice>\n        </xs:complexType>\n      </xs:element>\n"
           "    </xs:sequence>\n  </xs:complexType>\n"
           "\n  <xs:simpleType name=\"groupName\">\n    <xs:restriction base=\"xs:string\">\n";
    for (const std::string& element : elements)
        out << "      <xs:enumeration value=\"" << element << "\"/>\n";
    out << "    </xs:restriction>\n  </xs:simpleType>\n";
}

std::string quoted(std::string_view text)
{
    std::string escaped = "\"";
    for (const char c : text) {
        switch (c) {
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
            escaped += c;
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

void writeEnumType(std::ostream& out, std::string_view name, const vexEnumDef* values)
{
    out << "  <xs:simpleType name=\"" << name << "\">\n    <xs:union memberTypes=\"ULONG\">\n"
        << "      <xs:simpleType>\n        <xs:restriction base=\"xs:string\">\n";
    std::set<std::string_view> written; // two values may have one text
    for (; values->value != VEX_END; ++values)
        if (written.insert(values->text).second)
            out << "          <xs:enumeration value=" << quoted(values->text) << "/>\n";
    out << "        </xs:restriction>\n      </xs:simpleType>\n    </xs:union>\n  </xs:simpleType>\n";
}

void writeDateTimeType(std::ostream& out)
{
    out << R"xsd(  <xs:simpleType name="DATETIME">
    <xs:annotation><xs:documentation>local time; empty where it has none</xs:documentation></xs:annotation>
    <xs:restriction base="xs:string">
      <xs:pattern value="([0-9]{4}-[0-9]{2}-[0-9]{2}-[0-9]{2}\.[0-9]{2}\.[0-9]{2}\.0{7})?"/>
    </xs:restriction>
  </xs:simpleType>
)xsd";
}
