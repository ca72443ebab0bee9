#include <filesystem>

#include "host/Scan.h"
#include "tests/unit/report/Forms.h"

using namespace report;

// What a scan writes, of every recorded machine, comes back with the same bytes in both forms, with sources and
// without.
TEST(ScanRoundTrip, givesTheBytesOfEveryScanAgain)
{
    size_t rows = 0;
    for (const auto& machine : std::filesystem::directory_iterator(INVHW_SOURCE_DIR "/tests/machines")) {
        if (!std::filesystem::is_directory(machine.path() / "root"))
            continue;
        SCOPED_TRACE(machine.path());
        host::ScanOptions options;
        options.root = machine.path() / "root";
        Report scanned;
        std::string reason;
        ASSERT_TRUE(host::scan(options, scanned, reason)) << reason;
        rows += rowsOf(scanned);
        for (const bool sources : {false, true}) {
            const std::string xml = xmlOf(scanned, sources), json = jsonOf(scanned, sources);
            const Report ofXml = reportOf(xml), ofJson = reportOf(json);
            EXPECT_EQ(xmlOf(ofXml, sources), xml);
            EXPECT_EQ(xmlOf(ofJson, sources), xml);
            EXPECT_EQ(jsonOf(ofJson, sources), json);
            EXPECT_EQ(xmlOf(reportOf(jsonOf(ofXml, sources)), sources), xml);
        }
    }
    EXPECT_GT(rows, 500u);
}
