#include "report/CycloneDx.h"

#include <functional>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>

#include "report/PackageUrl.h"
#include "report/catalog/AttributeIds.h"
#include "tests/unit/report/Forms.h"
#include "tests/unit/report/RandomReport.h"

using namespace report;
using nlohmann::json;

namespace
{
std::string bomText(const std::string& text)
{
    BomHead head;
    ReadProblem problem;
    EXPECT_EQ(readReportText(text, head, problem), ReadResult::WHOLE) << problemText("text", problem);
    std::ostringstream components, dependencies, out;
    BomParts parts(head, components, dependencies);
    readReportText(text, parts, problem);
    parts.end();
    beginBom(head, parts, out);
    out << components.str();
    middleOfBom(out);
    out << dependencies.str();
    endBom(out);
    return out.str();
}

Row packageRow(std::initializer_list<std::pair<uint32_t, const char*>> values)
{
    Row row;
    for (const auto& [id, text] : values)
        row.values.push_back(
            {findGroup(uint32_t{GROUP_SOFTWARE_PACKAGES})->find(id), {}, std::string(text), {}, false});
    return row;
}

std::string urlOf(const char* manager, const char* name, const char* version, const char* revision,
                  const char* architecture, const Distribution& distribution)
{
    return packageUrl(packageRow({{SOFTWARE_PACKAGES_MANAGER, manager},
                                  {SOFTWARE_PACKAGES_NAME, name},
                                  {SOFTWARE_PACKAGES_VERSION, version},
                                  {SOFTWARE_PACKAGES_REVISION, revision},
                                  {SOFTWARE_PACKAGES_ARCHITECTURE, architecture}}),
                      distribution);
}
} // namespace

TEST(PackageUrl, isAsItsTypeHasIt)
{
    const Distribution debian{"debian", "12"}, none;
    EXPECT_EQ(urlOf("dpkg", "libstdc++6", "1:12.2.0~rc1", "14+b1", "amd64", debian),
              "pkg:deb/debian/libstdc%2B%2B6@1:12.2.0~rc1-14%2Bb1?arch=amd64&distro=debian-12");
    EXPECT_EQ(urlOf("dpkg", "curl", "7", "", "", none), "pkg:deb/curl@7");
    EXPECT_EQ(urlOf("rpm", "ImageMagick", "2:7.1", "3.fc40", "x86_64", {"fedora", "40"}),
              "pkg:rpm/fedora/ImageMagick@7.1-3.fc40?arch=x86_64&distro=fedora-40&epoch=2");
    EXPECT_EQ(urlOf("apk", "musl", "1.2.4-r2", "", "x86_64", {"alpine", "3.19.1"}),
              "pkg:apk/alpine/musl@1.2.4-r2?arch=x86_64&distro=alpine-3.19.1");
    EXPECT_EQ(urlOf("pacman", "pacman", "6.0.2-9", "", "any", {"arch", ""}), "pkg:alpm/arch/pacman@6.0.2-9?arch=any");
    EXPECT_EQ(urlOf("snap", "core22", "20240111", "", "", debian), "pkg:generic/core22@20240111");
    EXPECT_EQ(urlOf("dpkg", "", "1", "", "", debian), "");
    EXPECT_EQ(percentEncoded("a/b c@?#%\xC3\xA4~:"), "a%2Fb%20c%40%3F%23%25%C3%A4~:");
}

TEST(CycloneDx, hasPartsFirmwareDriversAndPackages)
{
    const json bom = json::parse(bomText(
        R"({"format": "invhw-report", "formatVersion": 1, "program": "invhwctl 5.0.0", "date": "2026-11-21T11:35:34Z",
"versions": {"ComponentID": 2, "MemoryModules": 2, "OperatingSystem": 2, "Storage": 2, "NetworkAdapter": 2, "SoftwarePackages": 2, "KernelModule": 1},
"groups": {"ComponentID": [{"Manufacturer": "ACME", "Product": "X1", "SerialNumber": "S"}],
"MemoryModules": [{"Index": 1, "ModuleSizeMB": 0}, {"Index": 2, "ModuleSizeMB": 1024, "PartNumber": "P"}],
"OperatingSystem": [{"PrettyName": "Debian 12", "DistributionID": "debian", "VersionID": "12"}],
"Storage": [{"Index": 1, "Model": "M", "DeviceName": "/dev/sda", "WWN": "w1", "FirmwareRevision": "F", "Driver": "nvme", "PowerOnHours": 5}, {"DeviceName": "/dev/sdb", "WWN": "w1"}],
"NetworkAdapter": [{"Interface": "eth0", "Kind": "Physical", "Model": "N", "Driver": "nvme"}, {"Interface": "br0", "Kind": "Bridge"}],
"SoftwarePackages": [{"PackageID": "a:amd64", "Name": "a", "Version": "1", "Manager": "dpkg", "Category": "contrib/libs"}, {"Name": "b", "Version": "2", "Manager": "dpkg"}, {"Version": "3"}],
"KernelModule": [{"Name": "nvme", "Version": "1.0"}, {"Name": "ext4"}]}})"));
    EXPECT_EQ(bom["metadata"]["timestamp"], "2026-11-21T11:35:34Z");
    EXPECT_EQ(bom["metadata"]["component"]["name"], "ACME X1");
    std::string parts;
    for (const json& component : bom["components"])
        parts += component["type"].get<std::string>() + ' ' + component["bom-ref"].get<std::string>() + ' ' +
                 component.value("version", "-") + '\n';
    EXPECT_EQ(parts, "device MemoryModules/2 -\n"
                     "operating-system OperatingSystem 12\n"
                     "device Storage/w1 -\n"
                     "device Storage/w1#2 -\n"
                     "device NetworkAdapter/eth0 -\n"
                     "library pkg:deb/debian/a@1?distro=debian-12 1\n"
                     "application pkg:deb/debian/b@2?distro=debian-12 2\n"
                     "device-driver Driver/nvme 1.0\n");
    EXPECT_EQ(bom["components"][2]["components"][0]["version"], "F");
    EXPECT_EQ(bom["components"][2]["properties"].dump().find("PowerOnHours"), std::string::npos);
    EXPECT_EQ(bom["dependencies"].size(), 2U);
}

TEST(CycloneDx, hasUniqueReferencesAndTheSameNumberForTheSameReport)
{
    std::set<std::string> numbers;
    for (uint32_t seed = 0; seed < 30; ++seed) {
        const std::string text = jsonOf(RandomReport(seed).report(), true);
        const std::string first = bomText(text);
        EXPECT_EQ(first, bomText(text));
        const json bom = json::parse(first);
        std::set<std::string> references;
        size_t count = 0;
        const std::function<void(const json&)> add = [&](const json& component) {
            ++count;
            references.insert(component["bom-ref"].get<std::string>());
            for (const json& inner : component.value("components", json::array()))
                add(inner);
        };
        add(bom["metadata"]["component"]);
        for (const json& component : bom["components"])
            add(component);
        EXPECT_EQ(references.size(), count) << seed;
        numbers.insert(bom["serialNumber"].get<std::string>());
    }
    EXPECT_EQ(numbers.size(), 30U);
}
