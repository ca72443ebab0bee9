#include "report/catalog/AttributeIds.h"
#include "tests/unit/report/Forms.h"

using namespace report;

namespace
{
Value known(uint32_t group, uint32_t attribute, Content content, std::string source = "")
{
    return {findGroup(group)->find(attribute), {}, std::move(content), std::move(source), false};
}

Value unknown(const char* element, Content content, bool isKey = false)
{
    return {nullptr, element, std::move(content), "", isKey};
}

GroupRows groupOf(uint32_t id, std::vector<Row> rows)
{
    const Group* group = findGroup(id);
    return {group, {}, group->version, std::move(rows)};
}

Report sample()
{
    Report report{"invhwctl 5.0.0", DateTime{2026, 11, 21, 11, 35, 34, 3600}, {}};
    report.groups.push_back(groupOf(
        GROUP_STORAGE,
        {{{known(GROUP_STORAGE, STORAGE_INDEX, uint64_t{1}), known(GROUP_STORAGE, STORAGE_TYPE, uint64_t{0x1F}),
           known(GROUP_STORAGE, STORAGE_MODEL, std::string("A&B <\"]]>"), "/sys/block/sda/device/model"),
           known(GROUP_STORAGE, STORAGE_DEVICE_NAME, std::string("/dev/sda"), "/sys/block/sda"),
           known(GROUP_STORAGE, STORAGE_SIZE_BYTES, UINT64_MAX), known(GROUP_STORAGE, STORAGE_ROTATIONAL, uint64_t{0}),
           known(GROUP_STORAGE, STORAGE_REMOVABLE, uint64_t{1})}},
         {{known(GROUP_STORAGE, STORAGE_TYPE, uint64_t{9999}), known(GROUP_STORAGE, STORAGE_MODEL, std::string())}}}));
    report.groups.push_back(groupOf(GROUP_LPAR, {})); // no rows: not written
    report.groups.push_back({nullptr,
                             "Future",
                             7,
                             {{{unknown("Name", std::string("x"), true), unknown("N", uint64_t{5})}},
                              {{unknown("Name", std::string("y"))}}}});
    return report;
}
} // namespace

TEST(XmlWriter, writesARowAnElementWithKeysAndTexts)
{
    const std::string type = enumText(findGroup(GROUP_STORAGE)->find(STORAGE_TYPE)->enums, 0x1F);
    EXPECT_EQ(xmlOf(sample()),
              "\n<serviceDataList>"
              "\n\n\t<serviceData>\n\t\t<name>Storage</name>\n\t\t<value>\n\t\t\t<Storage version=\"2\">"
              "\n\t\t\t\t<Index>1</Index>"
              "\n\t\t\t\t<Type>" +
                  type +
                  "</Type>"
                  "\n\t\t\t\t<Model>A&amp;B &lt;\"]]&gt;</Model>"
                  "\n\t\t\t\t<DeviceName IsKey=\"1\">/dev/sda</DeviceName>"
                  "\n\t\t\t\t<SizeBytes>18446744073709551615</SizeBytes>"
                  "\n\t\t\t\t<Rotational>No</Rotational>"
                  "\n\t\t\t\t<Removable>Yes</Removable>"
                  "\n\t\t\t</Storage>\n\t\t</value>\n\t</serviceData>"
                  "\n\n\t<serviceData>\n\t\t<name>Storage</name>\n\t\t<value>\n\t\t\t<Storage version=\"2\">"
                  "\n\t\t\t\t<Type>9999</Type>"
                  "\n\t\t\t\t<Model></Model>"
                  "\n\t\t\t</Storage>\n\t\t</value>\n\t</serviceData>"
                  "\n\n\t<serviceData>\n\t\t<name>Future</name>\n\t\t<value>\n\t\t\t<Future version=\"7\">"
                  "\n\t\t\t\t<Name IsKey=\"1\">x</Name>\n\t\t\t\t<N>5</N>"
                  "\n\t\t\t</Future>\n\t\t</value>\n\t</serviceData>"
                  "\n\n\t<serviceData>\n\t\t<name>Future</name>\n\t\t<value>\n\t\t\t<Future version=\"7\">"
                  "\n\t\t\t\t<Name>y</Name>"
                  "\n\t\t\t</Future>\n\t\t</value>\n\t</serviceData>"
                  "\n\n</serviceDataList>");
}

TEST(XmlWriter, escapesWhatXmlDemandsAlone)
{
    const struct {
        const char *text, *expected;
    } cases[] = {
        {"&amp;", "&amp;amp;"},
        {"a > b", "a > b"},
        {">", ">"},
        {"]>", "]>"},
        {"]]>", "]]&gt;"},
        {"]]]>>", "]]]&gt;>"},
        {"' \"", "' \""},
        {"<![CDATA[x]]>", "&lt;![CDATA[x]]&gt;"},
        {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
    };
    for (const auto& c : cases) {
        Report report;
        report.groups.push_back({nullptr, "G", 1, {{{unknown("E", std::string(c.text))}}}});
        EXPECT_NE(xmlOf(report).find(std::string("<E>") + c.expected + "</E>"), std::string::npos) << xmlOf(report);
    }
}

TEST(XmlWriter, writesSourcesOnlyWhereAskedAndTold)
{
    const std::string text = xmlOf(sample(), true);
    EXPECT_NE(text.find("<Index>1<"), std::string::npos);
    EXPECT_NE(text.find("<Model Source=\"/sys/block/sda/device/model\">A"), std::string::npos);
    EXPECT_NE(text.find("<DeviceName IsKey=\"1\" Source=\"/sys/block/sda\">/dev/sda<"), std::string::npos);
    EXPECT_EQ(xmlOf(sample()).find("Source"), std::string::npos);
}

// A reader of XML makes blanks of tabs and line ends in an attribute's value, unless they are written as references.
TEST(XmlWriter, escapesSourcesAsAttributesNeedIt)
{
    Value value = unknown("E", std::string("x"));
    value.source = "/a\"b'&<>]]>\t\n\r";
    Report report;
    report.groups.push_back({nullptr, "G", 1, {{{value}}}});
    EXPECT_NE(xmlOf(report, true).find("<E Source=\"/a&quot;b'&amp;&lt;>]]&gt;&#9;&#10;&#13;\">x</E>"),
              std::string::npos)
        << xmlOf(report, true);
}

TEST(XmlWriter, ofNothingWritesAnEmptyList)
{
    EXPECT_EQ(xmlOf({}), "\n<serviceDataList>\n\n</serviceDataList>");
}

TEST(JsonWriter, writesTypedValuesInOrder)
{
    const std::string type = enumText(findGroup(GROUP_STORAGE)->find(STORAGE_TYPE)->enums, 0x1F);
    EXPECT_EQ(jsonOf(sample()),
              "{\n\"format\": \"invhw-report\",\n\"formatVersion\": 1,\n\"program\": \"invhwctl 5.0.0\",\n"
              "\"date\": \"2026-11-21T11:35:34+01:00\",\n\"versions\": {\"Storage\":2,\"Future\":7},\n\"groups\": {\n"
              "\"Storage\": [\n"
              "{\"Index\":1,\"Type\":\"" +
                  type +
                  "\",\"Model\":\"A&B <\\\"]]>\",\"DeviceName\":\"/dev/sda\","
                  "\"SizeBytes\":18446744073709551615,\"Rotational\":false,\"Removable\":true},\n"
                  "{\"Type\":\"9999\",\"Model\":\"\"}\n],\n"
                  "\"Future\": [\n"
                  "{\"Name\":\"x\",\"N\":5,\"$key\":[\"Name\"]},\n"
                  "{\"Name\":\"y\"}\n]\n}\n}\n");
}

TEST(JsonWriter, writesSourcesOnlyWhereAskedAndTold)
{
    const std::string text = jsonOf(sample(), true);
    EXPECT_NE(text.find("\"Removable\":true,\"Sources\":{\"Model\":\"/sys/block/sda/device/model\","
                        "\"DeviceName\":\"/sys/block/sda\"}},\n{\"Type\":\"9999\",\"Model\":\"\"}"),
              std::string::npos)
        << text;
    EXPECT_EQ(jsonOf(sample()).find("Sources"), std::string::npos);
}

TEST(JsonWriter, ofNothingWritesAllItsMembers)
{
    EXPECT_EQ(jsonOf({}), "{\n\"format\": \"invhw-report\",\n\"formatVersion\": 1,\n\"program\": \"\",\n"
                          "\"versions\": {},\n\"groups\": {}\n}\n");
}

TEST(JsonWriter, escapesControlCharactersAndReplacesWhatIsNoUtf8)
{
    Value value = unknown("E", std::string("tab\t line\n \"q\" \\ \x7F"));
    value.source = "/a\xFF";
    Report report{"p\xFF", {}, {}};
    report.groups.push_back({nullptr, "G", 1, {{{value}}}});
    const std::string text = jsonOf(report, true);
    EXPECT_NE(text.find("{\"E\":\"tab\\t line\\n \\\"q\\\" \\\\ \x7F\",\"Sources\":{\"E\":\"/a\xEF\xBF\xBD\"}}"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\"program\": \"p\xEF\xBF\xBD\""), std::string::npos);
}

TEST(ValueText, isWhatTheXmlFormSays)
{
    const auto real = [](double number) { return valueText(known(GROUP_LPAR, LPAR_NODE_CAPACITY, number)); };
    EXPECT_EQ(real(0), "0.000000");
    EXPECT_EQ(real(-2.5), "-2.500000");
    EXPECT_EQ(real(0.0000004), "0.000000");
    EXPECT_EQ(real(1e300).size(), 301u + 7u);
    EXPECT_EQ(valueText(known(GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_BOOT_TIME, DateTime{2026, 1, 2, 3, 4, 5, 3600})),
              "2026-01-02-03.04.05.0000000");
    EXPECT_EQ(valueText(known(GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_TYPE, uint64_t{37})), "LINUX");
    EXPECT_EQ(valueText(known(GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_TYPE, uint64_t{12345})), "12345");
    EXPECT_EQ(valueText(unknown("E", UINT64_MAX)), "18446744073709551615");
}

TEST(Rfc3339, tellsTheOffsetWhereItIsKnown)
{
    const auto text = [](std::optional<int32_t> offset) {
        return rfc3339({2026, 11, 21, 11, 35, 4, offset}).substr(19);
    };
    EXPECT_EQ(rfc3339({26, 1, 2, 3, 4, 5, {}}), "0026-01-02T03:04:05");
    EXPECT_EQ(text({}), "");
    EXPECT_EQ(text(0), "Z");
    EXPECT_EQ(text(3600), "+01:00");
    EXPECT_EQ(text(-12600), "-03:30");
    EXPECT_EQ(text(50400), "+14:00");
}
