#include "report/Redact.h"

#include <algorithm>

#include "report/Check.h"
#include "report/Identity.h"
#include "tests/unit/report/DiffApply.h"
#include "tests/unit/report/Forms.h"
#include "tests/unit/report/RandomReport.h"
#include "tests/unit/report/RedactForms.h"

using namespace report;

namespace
{
constexpr uint32_t kReports = 40;

const std::string kLaptop = fileText(INVHW_SOURCE_DIR "/tests/hosts/laptop/expected.json");

std::string text(const Report& report, const char* group, const char* attribute, size_t row = 0)
{
    const GroupRows* rows = report.find(group);
    const Value* value = rows != nullptr && row < rows->rows.size() ? rows->rows[row].find(attribute) : nullptr;
    return value != nullptr ? valueText(*value) : "(none)";
}

// Identifying values that are long enough to be searched for, with letters and digits enough to be known again.
std::vector<std::string> identifyingTexts(const Report& report)
{
    constexpr size_t kShortest = 8, kFewest = 6;
    std::vector<std::string> texts;
    for (const GroupRows& group : report.groups)
        for (const Row& row : group.rows)
            for (const Value& value : row.values) {
                const std::string own = valueText(value);
                const auto known = std::count_if(own.begin(), own.end(), [](char c) { return isalnum(c) != 0; });
                if (value.attribute->isIdentifying && own.size() >= kShortest && known >= ptrdiff_t{kFewest})
                    texts.push_back(own);
            }
    return texts;
}

std::string allTexts(const Report& report)
{
    std::string all;
    for (const GroupRows& group : report.groups)
        for (const Row& row : group.rows)
            for (const Value& value : row.values)
                all += valueText(value) + '\x01' + value.source + '\x01';
    return all;
}

// The same report as another scan would give it: what is volatile is another one.
Report scannedAgain(const Report& before, RandomReport& random)
{
    Report after = before;
    for (GroupRows& group : after.groups)
        for (Row& row : group.rows)
            for (Value& value : row.values)
                if (value.attribute->isVolatile && !value.attribute->isIdentifying && !isKey(group, value))
                    value.content = random.content(*value.attribute);
    return after;
}
} // namespace

TEST(Redact, leavesNoIdentifyingValue)
{
    size_t values = 0;
    for (uint32_t seed = 1; seed <= kReports; ++seed) {
        RandomReport random(seed);
        Report report = random.report(6);
        const std::vector<std::string> texts = identifyingTexts(report);
        for (GroupRows& group : report.groups) // values also stand within other texts and sources
            for (Row& row : group.rows)
                for (Value& value : row.values) {
                    if (value.name() == "UserID")
                        value.content = uint64_t{1000}; // names of system accounts are not searched for
                    if (!texts.empty() && random.oneIn(4)) {
                        value.source = "/dev/disk/by-id/" + texts[random.below(texts.size())];
                        const bool isText = value.attribute->type == VEX_STRING && value.attribute->words == nullptr;
                        if (isText && !value.attribute->isIdentifying && !isKey(group, value))
                            value.content = "x" + texts[random.below(texts.size())] + "y";
                    }
                }
        for (const std::string& form : {xmlOf(report, true), jsonOf(report, true)}) {
            const std::string all = allTexts(reportOf(redactedText(form)));
            for (const std::string& own : texts)
                ASSERT_EQ(all.find(own), std::string::npos) << seed << ' ' << own;
        }
        values += texts.size();
    }
    EXPECT_GT(values, 500u);
}

TEST(Redact, keepsTheFormThatItReads)
{
    for (uint32_t seed = 1; seed <= kReports; ++seed) {
        const Report report = RandomReport(seed).report(6);
        const std::string xml = redactedText(xmlOf(report, true)), json = redactedText(jsonOf(report, true));
        EXPECT_EQ(jsonOf(reportOf(json), true), json);
        EXPECT_EQ(xmlOf(reportOf(json), true), xml) << seed;
        Checker checker([&](const Finding& finding) {
            ADD_FAILURE() << seed << ' ' << finding.rule->name << ' ' << finding.group << ' ' << finding.attribute
                          << ": " << finding.message;
        });
        ReadProblem problem;
        checker.end(readReportText(json, checker, problem), problem);
    }
}

TEST(Redact, changesNoDiff)
{
    for (uint32_t seed = 1; seed <= kReports; ++seed) {
        RandomReport random(seed);
        const Report a = random.report(6), b = scannedAgain(a, random);
        ASSERT_TRUE(changesOf(jsonOf(a), jsonOf(b), false).empty());
        const auto changes = changesOf(redactedText(jsonOf(a)), redactedText(jsonOf(b)), false);
        EXPECT_TRUE(changes.empty()) << seed << ' ' << changeText(changes[0]);
    }
}

TEST(Redact, keepsEqualValuesEqual)
{
    const Report report = reportOf(redactedText(kLaptop));
    const std::string serial = text(report, "ComponentID", "SerialNumber");
    EXPECT_NE(serial, "PF4XYZ12");
    EXPECT_EQ(text(report, "SMBIOS", "SystemSerialNumber"), serial);
    EXPECT_EQ(text(report, "SystemEnclosure", "SerialNumber"), serial);
    std::string raw = text(report, "SMBIOS", "SystemUUID");
    EXPECT_EQ(uuidOfRaw(raw), text(report, "ComponentID", "SystemUUID"));
    EXPECT_EQ(text(report, "NetworkAdapter", "PermanentAddress"), text(report, "IPAddress", "PermanentMacAddress"));
    EXPECT_EQ(text(report, "IPAddress", "Hostname"), text(report, "UNIXSystemParams", "Hostname"));
    EXPECT_EQ(text(report, "Partition", "FSAccessPoint"),
              "/dev/mapper/" + text(report, "UNIXSystemParams", "Hostname") + "--vg-root");
    std::string luks = text(report, "DiskPartition", "FSUUID", 2);
    std::erase(luks, '-');
    EXPECT_EQ(text(report, "LogicalDrive", "UUID"), "CRYPT-LUKS2-" + luks + "-nvme0n1p3_crypt");
    EXPECT_EQ(text(report, "IPAddress", "Subnet"), "255.255.255.0");
    EXPECT_EQ(text(report, "Route", "Destination"), "0.0.0.0");
}

TEST(Redact, makesMachineKeysOfThePseudonyms)
{
    const Report report = reportOf(redactedText(kLaptop));
    const GroupRows& rows = *report.find("MachineIdentity");
    ASSERT_EQ(rows.rows.size(), 4u);
    const std::string values[] = {
        text(report, "ComponentID", "SystemUUID"), text(report, "ComponentID", "SerialNumber"),
        text(report, "OperatingSystem", "MachineID"), text(report, "NetworkAdapter", "PermanentAddress")};
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(text(report, "MachineIdentity", "MachineKey", i),
                  machineKey(text(report, "MachineIdentity", "Basis", i), values[i]));
}

TEST(Redact, doesNotSearchForWordsAndSystemAccounts)
{
    const auto account = [](const char* name, const char* id, const char* home) {
        return xmlRow("UserAccountInfo", "2",
                      std::string("\n<UserName IsKey=\"1\">") + name + "</UserName>\n<UserID>" + id +
                          "</UserID>\n<Home>" + home + "</Home>");
    };
    const std::string xml = xmlList(account("root", "0", "/root") + account("postgres", "113", "/var/lib/postgres") +
                                    account("lovelace", "1000", "/home/lovelace") +
                                    xmlRow("SoftwarePackages", "2", "\n<Name>postgresql root lovelace-tools</Name>") +
                                    xmlRow("ServiceInfo", "2", "\n<StartName>postgres</StartName>"));
    const Report report = reportOf(redactedText(xml));
    const std::string person = text(report, "UserAccountInfo", "UserName", 2);
    EXPECT_EQ(person.size(), 8u);
    EXPECT_NE(person, "lovelace");
    EXPECT_EQ(text(report, "UserAccountInfo", "Home", 2), "/home/" + person);
    EXPECT_EQ(text(report, "SoftwarePackages", "Name"), "postgresql root " + person + "-tools");
    EXPECT_NE(text(report, "UserAccountInfo", "UserName", 1), "postgres");
    EXPECT_EQ(text(report, "ServiceInfo", "StartName"), text(report, "UserAccountInfo", "UserName", 1));
    EXPECT_EQ(text(report, "UserAccountInfo", "Home", 1), "/var/lib/" + text(report, "UserAccountInfo", "UserName", 1));
}

TEST(Redact, takesHostsAndAccountsOutOfMounts)
{
    const auto mount = [](const char* source, const char* point) {
        return xmlRow("Partition", "2",
                      std::string("\n<FSAccessPoint IsKey=\"1\">") + source +
                          "</FSAccessPoint>\n<FSMountPoint IsKey=\"1\">" + point + "</FSMountPoint>");
    };
    const std::string xml = xmlList(mount("filer.example.net:/export", "/srv") + mount("//filer/share", "/home/ada") +
                                    mount("192.0.2.7:/x", "/run/media/ada/STICK") + mount("/dev/sda1", "/boot"));
    const Report report = reportOf(redactedText(xml));
    EXPECT_TRUE(text(report, "Partition", "FSAccessPoint", 0).ends_with(":/export"));
    for (const char* own : {"filer", "example", "ada", "192.0.2.7"})
        EXPECT_EQ(allTexts(report).find(own), std::string::npos) << own;
    EXPECT_TRUE(text(report, "Partition", "FSMountPoint", 2).ends_with("/STICK"));
    EXPECT_EQ(text(report, "Partition", "FSAccessPoint", 3), "/dev/sda1");
    EXPECT_EQ(text(report, "Partition", "FSAccessPoint", 1).substr(2, 5),
              text(report, "Partition", "FSAccessPoint", 0).substr(0, 5));
}

TEST(Redact, findsAddressesInNamesOfInterfaces)
{
    const std::string xml = xmlList(xmlRow("NetworkAdapter", "2",
                                           "\n<PermanentAddress>a0:b3:39:11:22:33</PermanentAddress>"
                                           "\n<Interface IsKey=\"1\" Source=\"/sys/class/net/enxa0b339112233\">"
                                           "enxa0b339112233</Interface>"));
    const Report report = reportOf(redactedText(xml));
    std::string address = text(report, "NetworkAdapter", "PermanentAddress");
    std::erase(address, ':');
    EXPECT_EQ(text(report, "NetworkAdapter", "Interface"), "enx" + address);
    EXPECT_EQ(report.groups[0].rows[0].find("Interface")->source, "/sys/class/net/enx" + address);
}

TEST(Redact, keepsWhatIdentifiesNothing)
{
    const std::string xml = xmlList(xmlRow("Partition", "2", "\n<Options>rw,relatime,mode=755,user=ada</Options>") +
                                    xmlRow("SystemEnclosure", "2", "\n<SerialNumber>None</SerialNumber>") +
                                    xmlRow("PCSystemParams", "2", "\n<ComputerName>localhost</ComputerName>"));
    const std::string made = redactedText(xml);
    EXPECT_NE(made.find(">rw,relatime,mode=755,user="), std::string::npos) << made;
    EXPECT_EQ(made.find("ada<"), std::string::npos);
    EXPECT_NE(made.find(">None<"), std::string::npos);
    EXPECT_NE(made.find(">localhost<"), std::string::npos);
}
