// One machine, scanned in several locales: the same bytes are other texts in each, and every report is UTF-8.

#include <cstdlib>
#include <gtest/gtest.h>

#include "FakeMachine.h"
#include "codeset/kst.h"

// The folder with the machine and with the reports, which INVHW_RECORD=1 writes anew: <locale>.xml.
static const std::string kFolder = INVHW_SCAN_TESTS "/locales";

static bool isUtf8(const std::string& text)
{
    const kst_handle utf8 = kst_cs_new("UTF8");
    std::string copy(text.size(), '\0');
    const size_t length = kst_to_utf8(utf8, text.data(), static_cast<long>(text.size()), copy.data(), copy.size());
    const bool valid = length == text.size() && kst_get_subst_count(utf8) == 0;
    kst_cs_free(utf8);
    return valid;
}

class LocalesScan : public ::testing::TestWithParam<const char*>
{
};

TEST_P(LocalesScan, reportIsTheExpectedOneAndUtf8)
{
    const std::string locale = GetParam();
    FakeMachine machine = FakeMachine::open(kFolder + "/machine");
    machine.env("LC_ALL", locale);
    const ScanResult result = machine.scan();
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(isUtf8(result.report));
    const std::string expectedFile = kFolder + "/" + locale + ".xml";
    if (getenv("INVHW_RECORD") != nullptr)
        writeTextFile(expectedFile, result.report);
    EXPECT_EQ(result.report, readTextFile(expectedFile));
}

INSTANTIATE_TEST_SUITE_P(Locales, LocalesScan,
                         ::testing::Values("C", "de_DE.ISO-8859-1", "ja_JP.eucJP", "zh_CN.GB18030", "en_US.UTF-8"),
                         [](const auto& parameter) { return std::string(parameter.param).substr(0, 2); });

static ScanResult scanIn(const std::string& locale, const std::string& name = "", const std::string& value = "")
{
    FakeMachine machine = FakeMachine::open(kFolder + "/machine");
    machine.env("LC_ALL", locale);
    if (!name.empty())
        machine.env(name, value);
    return machine.scan();
}

TEST(LocalesScan, codeSetOfTheSettingWins)
{
    const ScanResult result = scanIn("de_DE.ISO-8859-1", "KST_CODESET", "KOI8-R");
    ASSERT_TRUE(result.ended()) << result.errors;
    EXPECT_TRUE(isUtf8(result.report));
    EXPECT_NE(result.report, readTextFile(kFolder + "/de_DE.ISO-8859-1.xml"));
    EXPECT_NE(result.report.find("/mnt/Эber"), std::string::npos) << "FC is a Cyrillic letter there";
}

TEST(LocalesScan, withoutAnyTableTheAsciiCharactersAreReported)
{
    const ScanResult plain = scanIn("C", "BINDIR", "/nowhere");
    ASSERT_TRUE(plain.ended()) << plain.errors;
    EXPECT_EQ(plain.report, readTextFile(kFolder + "/C.xml"));
    const ScanResult latin = scanIn("de_DE.ISO-8859-1", "BINDIR", "/nowhere");
    ASSERT_TRUE(latin.ended()) << latin.errors;
    EXPECT_EQ(latin.value("Partition", 3, "FSMountPoint"), "/mnt/?ber");
    EXPECT_EQ(latin.value("OperatingSystem", 0, "Name"), "Red Hat Linux release 9 (?? & <Shrike>) ");
}

TEST(LocalesScan, anotherNameOfACodeSetIsFoundInTheShippedAliases)
{
    const std::string latin1 = readTextFile(kFolder + "/de_DE.ISO-8859-1.xml");
    const std::string expected = scanIn("de_DE.ISO-8859-1", "KST_CODESET", "ISO-8859-2").report;
    ASSERT_NE(expected, latin1);
    for (const char* name : {"latin2", "LATIN-2"}) {
        const ScanResult result = scanIn("de_DE.ISO-8859-1", "KST_CODESET", name);
        ASSERT_TRUE(result.ended()) << result.errors;
        EXPECT_EQ(result.report, expected) << name;
    }
}

// The user's folder has no aliases; what is found in the program's own is the default table.
TEST(LocalesScan, aSettingOfTheTableFolderWins)
{
    FakeMachine machine = FakeMachine::open(kFolder + "/machine");
    machine.env("LC_ALL", "de_DE.ISO-8859-1").env("KST_CODESET", "latin2").env("KSTDIR", "/nowhere");
    EXPECT_EQ(machine.scan().report, readTextFile(kFolder + "/de_DE.ISO-8859-1.xml"));
}
