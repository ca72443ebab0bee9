#include "report/Diff.h"

#include "report/catalog/AttributeIds.h"
#include "tests/unit/report/DiffApply.h"
#include "tests/unit/report/Forms.h"
#include "tests/unit/report/RandomReport.h"

using namespace report;

namespace
{
constexpr uint32_t kPairs = 25;

std::string textOfDiff(const std::string& old, const std::string& now, bool withVolatile = false)
{
    std::string text;
    for (const Change& change : changesOf(old, now, withVolatile))
        text += changeText(change);
    return text;
}

// One row of a group from names and texts; names with a star are marked as keys.
std::string row(const std::string& group, const std::vector<std::pair<std::string, std::string>>& values,
                const char* version = "2")
{
    std::string lines;
    for (const auto& [name, text] : values) {
        const bool isKey = name.back() == '*';
        const std::string element = isKey ? name.substr(0, name.size() - 1) : name;
        lines.append("\n<").append(element).append(isKey ? " IsKey=\"1\">" : ">");
        lines.append(text).append("</").append(element).append(">");
    }
    return xmlRow(group, version, lines);
}

std::string disk(const std::string& wwn, const std::string& serial, const std::string& device,
                 const std::string& model = "m")
{
    return row("Storage", {{"Index", device.substr(device.size() - 1)},
                           {"Model", model},
                           {"SerialNumber", serial},
                           {"DeviceName*", device},
                           {"WWN", wwn}});
}

// A report some rows of which are gone, some new, some changed.
Report changedReport(const Report& before, RandomReport& random)
{
    Report after = before;
    for (GroupRows& group : after.groups) {
        for (Row& row : group.rows)
            if (random.oneIn(2))
                random.change(row, group);
        if (random.oneIn(3))
            group.rows.erase(group.rows.begin() + static_cast<ptrdiff_t>(random.below(group.rows.size())));
        if (random.oneIn(3))
            group.rows.insert(group.rows.begin() + static_cast<ptrdiff_t>(random.below(group.rows.size() + 1)),
                              random.row(*group.group));
    }
    return after;
}
} // namespace

TEST(Diff, ofOneReportIsEmpty)
{
    for (uint32_t seed = 1; seed <= kPairs; ++seed) {
        const Report a = RandomReport(seed).report(6);
        EXPECT_EQ(textOfDiff(xmlOf(a), xmlOf(a), true), "") << seed;
        EXPECT_EQ(textOfDiff(jsonOf(a), jsonOf(a), true), "") << seed;
        EXPECT_EQ(textOfDiff(xmlOf(a), xmlOf(reportOf(jsonOf(a))), true), "") << seed;
    }
}

TEST(Diff, isTheInverseOfTheOtherWay)
{
    size_t changes = 0;
    for (uint32_t seed = 1; seed <= kPairs; ++seed) {
        RandomReport random(seed);
        const Report a = random.report(6), b = changedReport(a, random);
        for (const bool withVolatile : {false, true}) {
            const auto there = changesOf(xmlOf(a), xmlOf(b), withVolatile);
            const auto back = changesOf(xmlOf(b), xmlOf(a), withVolatile);
            EXPECT_EQ(sortedTexts(inverted(there)), sortedTexts(back)) << seed;
            changes += there.size();
        }
    }
    EXPECT_GT(changes, 500u);
}

TEST(Diff, appliedToTheOldReportGivesTheNewOne)
{
    for (uint32_t seed = 1; seed <= kPairs; ++seed) {
        RandomReport random(seed);
        const Report a = random.report(6), b = seed % 3 == 0 ? random.report(6) : changedReport(a, random);
        for (const bool withVolatile : {false, true}) {
            const Report given = applied(reportOf(xmlOf(a)), changesOf(xmlOf(a), xmlOf(b), withVolatile));
            EXPECT_EQ(comparedRows(given, withVolatile), comparedRows(reportOf(xmlOf(b)), withVolatile)) << seed;
        }
    }
}

TEST(Diff, doesNotShiftRowsBehindAnInsertedDevice)
{
    const std::string old = disk("w1", "s1", "/dev/sda") + disk("w2", "s2", "/dev/sdb");
    const std::string now = disk("w0", "s0", "/dev/sda") + disk("w1", "s1", "/dev/sdb") + disk("w2", "s2", "/dev/sdc");
    EXPECT_EQ(textOfDiff(xmlList(old), xmlList(now)),
              "~ Storage[DeviceName=/dev/sda] DeviceName: \"/dev/sda\" -> \"/dev/sdb\"\n"
              "~ Storage[DeviceName=/dev/sdb] DeviceName: \"/dev/sdb\" -> \"/dev/sdc\"\n"
              "+ Storage[DeviceName=/dev/sda]\n");
}

TEST(Diff, takesAReplacedDeviceForAnotherOne)
{
    EXPECT_EQ(textOfDiff(xmlList(disk("w1", "s1", "/dev/sda")), xmlList(disk("w2", "s2", "/dev/sda"))),
              "- Storage[DeviceName=/dev/sda]\n+ Storage[DeviceName=/dev/sda]\n");
}

TEST(Diff, pairsByNoPlaceholder)
{
    const std::string a = disk("", "To be filled by O.E.M.", "/dev/sda", "a"), b = disk("", "S1", "/dev/sda", "a");
    EXPECT_EQ(textOfDiff(xmlList(a), xmlList(b)),
              "~ Storage[DeviceName=/dev/sda] SerialNumber: \"To be filled by O.E.M.\" -> \"S1\"\n");
}

TEST(Diff, leavesOutWhatIsVolatile)
{
    const auto memory = [](const char* free) {
        return xmlList(row("Memory", {{"TotalPhysical", "7"}, {"FreePhysical", free}}));
    };
    EXPECT_EQ(textOfDiff(memory("1"), memory("2")), "");
    EXPECT_EQ(textOfDiff(memory("1"), memory("2"), true), "~ Memory FreePhysical: \"1\" -> \"2\"\n");
}

TEST(Diff, leavesOutAddressesThatWereGivenForATime)
{
    const auto address = [](const char* text, const char* dynamic) {
        return xmlList(row("IPAddress", {{"Index", "1"},
                                         {"Address*", text},
                                         {"Interface*", "eth0"},
                                         {"PrefixLength*", "24"},
                                         {"Dynamic", dynamic}}));
    };
    EXPECT_EQ(textOfDiff(address("10.0.0.1", "Yes"), address("10.0.0.2", "Yes")), "");
    EXPECT_EQ(textOfDiff(address("10.0.0.1", "Yes"), address("10.0.0.2", "Yes"), true),
              "~ IPAddress[Interface=eth0,PrefixLength=24] Address: \"10.0.0.1\" -> \"10.0.0.2\"\n");
    EXPECT_EQ(textOfDiff(address("10.0.0.1", "No"), address("10.0.0.2", "No")),
              "- IPAddress[Address=10.0.0.1,Interface=eth0,PrefixLength=24]\n"
              "+ IPAddress[Address=10.0.0.2,Interface=eth0,PrefixLength=24]\n");
}

TEST(Diff, neverComparesIndex)
{
    const auto slot = [](const char* index, const char* name) {
        return row("MemoryModules", {{"Index*", index}, {"SocketName", name}, {"BankName", "B"}});
    };
    EXPECT_EQ(textOfDiff(xmlList(slot("1", "A") + slot("2", "B")), xmlList(slot("1", "B") + slot("2", "A")), true), "");
}

TEST(Diff, comparesTheTwoProgramsByWhatBothTell)
{
    const std::string first = xmlList(row("IPAddress",
                                          {{"Index*", "1"},
                                           {"Address", "10.0.0.1"},
                                           {"Hostname", ""},
                                           {"PermanentMacAddress", "02:AB:00:00:00:01"},
                                           {"Subnet", "255.0.0.0"}},
                                          "1") +
                                      row("Lpar", {{"NodeCapacity", "1,000000"}}, "1"));
    const std::string second =
        xmlList(row("IPAddress", {{"Index", "2"},
                                  {"Address*", "10.0.0.1"},
                                  {"Hostname", "h"},
                                  {"PermanentMacAddress", "02:ab:00:00:00:01"},
                                  {"Subnet", "255.255.0.0"},
                                  {"Interface*", "eth0"},
                                  {"PrefixLength*", "16"}}) +
                row("Lpar", {{"NodeCapacity", "1.000000"}}) + row("Sensor", {{"Chip*", "c"}}, "1"));
    EXPECT_EQ(textOfDiff(first, second), "~ IPAddress[#1] Subnet: \"255.0.0.0\" -> \"255.255.0.0\"\n");
}

TEST(Diff, comparesGroupsThatItDoesNotKnowByTheirMarks)
{
    const std::string a = row("Gadget", {{"A*", "1"}, {"B", "x"}}), b = row("Gadget", {{"A*", "2"}, {"B", "x"}});
    const std::string changed = row("Gadget", {{"A*", "2"}, {"B", "y"}, {"C", "z"}});
    EXPECT_EQ(textOfDiff(xmlList(a + b), xmlList(changed + a)), "~ Gadget[A=2] B: \"x\" -> \"y\"\n"
                                                                "~ Gadget[A=2] C: absent -> \"z\"\n");
}

TEST(Diff, namesARowByItsNumberWhereItsKeyIsNotItsOwn)
{
    const auto gadget = [](const char* text) { return row("Gadget", {{"A*", "1"}, {"B", text}}); };
    EXPECT_EQ(textOfDiff(xmlList(gadget("a") + gadget("b")), xmlList(gadget("n") + gadget("b") + gadget("c"))),
              "~ Gadget[A=1,#1] B: \"a\" -> \"n\"\n+ Gadget[A=1,#3]\n");
    EXPECT_EQ(textOfDiff(xmlList(gadget("a") + gadget("b")), xmlList(gadget("b") + gadget("n"))),
              "~ Gadget[A=1,#1->#2] B: \"a\" -> \"n\"\n");
}

TEST(Diff, keepsAChangeOnItsLine)
{
    const std::string a = row("Gadget", {{"A*", "x,]\n"}, {"B", "\"\\\n\r\t\xC2\x9B\xE2\x80\xAE\xC3\xBC"}});
    const std::string b = row("Gadget", {{"A*", "x,]\n"}, {"B", ""}});
    EXPECT_EQ(textOfDiff(xmlList(a), xmlList(b)),
              "~ Gadget[A=\"x,]\\n\"] B: \"\\\"\\\\\\n\\r\\t\\u009B\\u202E\xC3\xBC\" -> \"\"\n");
}

TEST(Diff, isQuickForManyRows)
{
    std::string a, b;
    constexpr int kRows = 30000;
    for (int i = 0; i < kRows; ++i) {
        const std::string same = row("Gadget", {{"A*", "1"}, {"B", std::to_string(i)}});
        a += same;
        b += i == 7 ? row("Gadget", {{"A*", "1"}, {"B", "x"}}) : same;
    }
    EXPECT_EQ(textOfDiff(xmlList(a), xmlList(b)), "~ Gadget[A=1,#8] B: \"7\" -> \"x\"\n");
}
