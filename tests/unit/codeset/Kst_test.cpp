// The service: one-shot conversions, defaults, handles and settings.

#include "codeset/kst.h"

#include <cstring>
#include <memory>

#include "tests/unit/codeset/CodeSetFixture.h"
#include "tests/unit/codeset/SmallTables.h"

namespace
{

using KstTest = CodeSetTest;

TEST_F(KstTest, nulTerminatedTextIsTerminatedAndCutToTheOutput)
{
    char out[8] = "#######";
    EXPECT_EQ(kst_to_utf8(nullptr, "abc", -1, out, 4), 4u);
    EXPECT_STREQ(out, "abc");
    EXPECT_EQ(out[4], '#');
    EXPECT_EQ(kst_to_utf8(nullptr, "abc", -1, out, 3), 3u);
    EXPECT_STREQ(out, "ab");
    EXPECT_EQ(kst_to_utf8(nullptr, "abc", -1, out, 1), 1u);
    EXPECT_STREQ(out, "");
}

TEST_F(KstTest, anOutputOfNothingStaysUntouched)
{
    char out = '#';
    kst_wchar wide = u'#';
    EXPECT_EQ(kst_to_utf8(nullptr, "abc", -1, &out, 0), 0u);
    EXPECT_EQ(kst_from_utf8(nullptr, "abc", 3, &out, 0), 0u);
    EXPECT_EQ(kst_to_ucs2(nullptr, "abc", -1, &wide, 0), 0u);
    EXPECT_EQ(kst_from_ucs2(nullptr, u"abc", -1, &out, 0), 0u);
    EXPECT_EQ(out, '#');
    EXPECT_EQ(wide, u'#');
}

TEST_F(KstTest, countedTextUsesTheWholeOutputAndHasNoTerminator)
{
    const Handle handle("UTF8");
    char out[8] = "#######";
    EXPECT_EQ(kst_to_utf8(handle, "a\0c", 3, out, 3), 3u);
    EXPECT_EQ(memcmp(out, "a\0c#", 4), 0);
    EXPECT_EQ(kst_to_utf8(handle, "abc", 0, out, 3), 0u);
}

TEST_F(KstTest, outputIsCutAtACharacter)
{
    const Handle handle("ISO88591");
    char out[8];
    EXPECT_EQ(kst_to_utf8(handle, "a\xE9", -1, out, 3), 2u);
    EXPECT_STREQ(out, "a");
    EXPECT_EQ(kst_to_utf8(handle, "a\xE9", -1, out, 4), 4u);
    EXPECT_STREQ(out, "a\xC3\xA9");
    kst_wchar wide[2];
    EXPECT_EQ(kst_to_ucs2(handle, "a\xE9", -1, wide, 2), 2u) << "counts characters";
    EXPECT_EQ(std::u16string(wide), u"a");
}

TEST_F(KstTest, shiftedTextThatIsCutStillEndsInTheInitialState)
{
    const Handle handle("IBM939");
    const std::string text = "\xE3\x81\x82\xE3\x81\x84"; // two double-byte characters
    for (size_t size = 1; size < 8; ++size) {
        char out[8];
        const size_t length = kst_from_utf8(handle, text.c_str(), -1, out, size);
        EXPECT_EQ(length, size < 5 ? 1u : size < 7 ? 5u : 7u) << size;
        EXPECT_EQ(out[length - 1], '\0');
        EXPECT_TRUE(length == 1 || out[length - 2] == '\x0F');
    }
}

TEST_F(KstTest, oneShotConversionsStartAndEndInTheInitialState)
{
    const Handle handle("IBM939");
    EXPECT_EQ(toUtf8(handle, "\x0E\x42\xC1"), "\xEF\xBC\xA1");
    EXPECT_EQ(toUtf8(handle, "\xC1"), "A");
    const char* src = "\x0E";
    size_t left = 1;
    char buffer[4];
    char* dst = buffer;
    size_t room = sizeof buffer;
    kst_to_utf8_r(handle, &src, &left, &dst, &room);
    EXPECT_EQ(toUtf8(handle, "\xC1"), "A") << "whatever was before";
}

TEST_F(KstTest, nullTextIsEmpty)
{
    char out[4] = "###";
    EXPECT_EQ(kst_to_utf8(nullptr, nullptr, -1, out, 4), 1u);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(kst_from_ucs2(nullptr, nullptr, 5, out, 4), 0u);
}

TEST_F(KstTest, aWideTextEndsAtItsTerminator)
{
    char out[4] = "###";
    EXPECT_EQ(kst_from_ucs2(nullptr, u"ab", -1, out, 4), 3u);
    EXPECT_STREQ(out, "ab");
}

TEST_F(KstTest, aLatin1ByteBecomesTwo)
{
    setenv("KST_CODESET", "iso-8859-1", 1);
    EXPECT_EQ(toUtf8(nullptr, "\xE9"), "\xC3\xA9");
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ISO88591");
}

TEST_F(KstTest, theDefaultIsTheLocalesCodeSet)
{
    EXPECT_EQ(toUtf8(nullptr, "a\xE9"), "a?") << "the C locale has ASCII only";
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ANSIX341968");
    EXPECT_EQ(kst_get_subst_count(nullptr), 1u);
    EXPECT_STREQ(kst_os_cs_name(), "ANSIX341968");
    kst_uninit();
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_EQ(toUtf8(nullptr, "a\xC3\xA9"), "a\xC3\xA9");
    EXPECT_STREQ(kst_os_cs_name(), "UTF8");
}

TEST_F(KstTest, theDefaultAndTheOperatingSystemsHandleShareOneTable)
{
    const kst_handle initial = kst_get_def_cs();
    kst_set_def_cs(nullptr);
    EXPECT_NE(kst_get_def_cs(), initial);
    EXPECT_EQ(kst_cs_table(kst_get_def_cs()), kst_cs_table(initial));
    toUtf8(initial, "\xE9");
    EXPECT_EQ(kst_get_subst_count(nullptr), 0u) << "each counts for itself";
    kst_uninit();
    setenv("KST_CODESET", "IBM037", 1);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "IBM037");
    kst_set_def_cs(nullptr);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ANSIX341968") << "another one when the setting names another one";
}

TEST_F(KstTest, aFallbackIsNotShared)
{
    setenv("BINDIR", "", 1);
    setenv("KST_CODESET", "ANSIX341968", 1);
    setenv("KSTDIR", folder.c_str(), 1);
    write("DEFAULT", SmallTables::header(Family::AsciiSbcs, "D").bytes());
    write("OSDEFAULT", SmallTables::header(Family::AsciiSbcs, "O").bytes());
    EXPECT_STREQ(kst_get_cs_name(nullptr), "D");
    kst_set_def_cs(nullptr);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "O");
}

TEST_F(KstTest, anEmptySettingIsNone)
{
    setenv("KST_CODESET", "", 1);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ANSIX341968");
}

TEST_F(KstTest, aSettingThatIsAPathLosesItsSeparators)
{
    write("T", SmallTables::singleByte());
    setenv("KST_CODESET", "./T", 1);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "SMALLSB") << "the name T, in the current directory";
    kst_uninit();
    setenv("KST_CODESET", (folder + "/T").c_str(), 1);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "DEFAULT");
}

TEST_F(KstTest, withoutATableOfTheNameTheFallbacksServe)
{
    setenv("KST_CODESET", "no such code set", 1);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "DEFAULT");
    EXPECT_EQ(toUtf8(nullptr, "\xE9"), "\xC3\xA9") << "Latin-1";
    kst_set_def_cs(nullptr);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ANSIX341968");
    kst_uninit();
    setenv("BINDIR", folder.c_str(), 1);
    write("DEFAULT", SmallTables::header(Family::AsciiSbcs, "MYDEFAULT").bytes());
    write("OSDEFAULT", SmallTables::header(Family::AsciiSbcs, "MYOSDEFAULT").bytes());
    EXPECT_STREQ(kst_get_cs_name(nullptr), "MYDEFAULT");
    kst_set_def_cs(nullptr);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "MYOSDEFAULT");
}

TEST_F(KstTest, withoutAnyTableAsciiIsNotLost)
{
    setenv("BINDIR", folder.c_str(), 1);
    EXPECT_EQ(kst_get_def_cs(), nullptr);
    EXPECT_EQ(toUtf8(nullptr, "plain text & more\xC3\xA9."), "plain text & more??.");
    EXPECT_EQ(fromUtf8(nullptr, "a\xC3\xA9."), "a??.");
    EXPECT_EQ(toUcs2(nullptr, "a\xE9!"), u"a?!");
    EXPECT_EQ(fromUcs2(nullptr, u"a\u00E9!"), "a?!");
    EXPECT_EQ(kst_get_subst_count(nullptr), 0u) << "counted nowhere";
    char out[4];
    EXPECT_EQ(kst_to_utf8(nullptr, "abc\xE9", -1, out, 4), 4u);
    EXPECT_STREQ(out, "abc");
    EXPECT_STREQ(kst_get_cs_name(nullptr), "");
    EXPECT_EQ(kst_cs_table(nullptr), nullptr);
    EXPECT_EQ(kst_dup_handle(nullptr), nullptr);
    EXPECT_STREQ(kst_os_cs_name(), "ANSIX341968");
    kst_cs_free(nullptr);
    kst_set_def_cs(nullptr);
    EXPECT_EQ(kst_get_def_cs(), nullptr);
    const std::unique_ptr<char, void (*)(void*)> text(kst_tou_alloc(nullptr, "a\xE9", -1, nullptr), kst_free);
    EXPECT_STREQ(text.get(), "a?");
}

TEST_F(KstTest, initialisesOnce)
{
    EXPECT_EQ(kst_init(), 0);
    const kst_handle before = kst_get_def_cs();
    setenv("KST_CODESET", "UTF8", 1);
    EXPECT_EQ(kst_init(), 0);
    EXPECT_EQ(kst_get_def_cs(), before);
    kst_uninit();
    EXPECT_EQ(kst_init(), 0);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "UTF8");
}

TEST_F(KstTest, theDefaultHandleCanBeSetAndClosed)
{
    const kst_handle greek = kst_cs_new("ISO-8859-7");
    ASSERT_NE(greek, nullptr);
    kst_set_def_cs(greek);
    EXPECT_EQ(kst_get_def_cs(), greek);
    EXPECT_EQ(toUtf8(nullptr, "\xE1"), "\xCE\xB1");
    kst_cs_free(greek);
    EXPECT_STREQ(kst_get_cs_name(nullptr), "ANSIX341968");
    kst_cs_free(kst_get_def_cs());
    EXPECT_EQ(toUtf8(nullptr, "a"), "a") << "the service keeps its own handles";
}

TEST_F(KstTest, aCopyHasItsOwnStateAndOutlivesTheOriginal)
{
    const kst_handle original = kst_cs_new("IBM939");
    ASSERT_NE(original, nullptr);
    const char* src = "\x0E";
    size_t left = 1;
    char buffer[8];
    char* dst = buffer;
    size_t room = sizeof buffer;
    toUtf8(original, "\x0E\xFD\xFD");
    EXPECT_EQ(kst_get_subst_count(original), 1u);
    kst_to_utf8_r(original, &src, &left, &dst, &room);
    const kst_handle copy = kst_dup_handle(original);
    kst_cs_free(original);
    EXPECT_EQ(kst_get_subst_count(copy), 0u);
    src = "\xC1";
    left = 1;
    EXPECT_EQ(kst_to_utf8_r(copy, &src, &left, &dst, &room), KST_DONE);
    EXPECT_EQ(std::string(buffer, dst), "A") << "not in the shift state of the original";
    EXPECT_EQ(memcmp(static_cast<const char*>(kst_cs_table(copy)) + 8, "ucv", 3), 0);
    kst_cs_free(copy);
}

TEST_F(KstTest, noNameIsNoCodeSet)
{
    EXPECT_EQ(kst_cs_new(nullptr), nullptr);
    EXPECT_EQ(kst_cs_new(""), nullptr);
}

TEST_F(KstTest, conversionsIntoNewMemoryGrowAsNeeded)
{
    const Handle gb("GB18030");
    const Handle ebcdic("IBM939");
    std::string text;
    std::string mixed;
    for (int i = 0; i < 1000; ++i) {
        text += "\x95\x32\x82\x36"; // U+20000: four bytes
        mixed += "a\xE3\x81\x82";   // shifts before and after every character
    }
    size_t length = 0;
    const auto own = [](char* memory) { return std::unique_ptr<char, void (*)(void*)>(memory, kst_free); };
    auto result = own(kst_tou_alloc(gb, text.data(), static_cast<long>(text.size()), &length));
    EXPECT_EQ(std::string(result.get(), length), toUtf8(gb, text));
    EXPECT_EQ(strlen(result.get()), length);
    auto back = own(kst_fromu_alloc(gb, result.get(), -1, &length));
    EXPECT_EQ(std::string(back.get(), length), text);
    result = own(kst_fromu_alloc(ebcdic, mixed.c_str(), -1, &length));
    EXPECT_EQ(std::string(result.get(), length), fromUtf8(ebcdic, mixed));
    EXPECT_EQ(length, 5000u);
    result = own(kst_tou_alloc(gb, nullptr, -1, &length));
    EXPECT_STREQ(result.get(), "");
    EXPECT_EQ(length, 0u);
    result = own(kst_tou_alloc(gb, "a\x81", -1, nullptr));
    EXPECT_STREQ(result.get(), "a") << "an incomplete character is left out";
}

TEST_F(KstTest, settingsLiveInTheEnvironment)
{
    EXPECT_STREQ(kst_get_dir(), "");
    kst_set_dir("/one");
    kst_set_dir("/two");
    EXPECT_STREQ(getenv("KSTDIR"), "/two");
    EXPECT_STREQ(kst_get_dir(), "/two");
    setenv("KSTDIR", "/three", 1);
    EXPECT_STREQ(kst_get_dir(), "/three");
    kst_set_dir(nullptr);
    EXPECT_STREQ(kst_get_dir(), "");

    unsetenv("NLSPATH");
    EXPECT_STREQ(kst_get_nlspath(), "");
    kst_prepend_nlspath("/a/%N");
    EXPECT_STREQ(kst_get_nlspath(), "/a/%N");
    kst_prepend_nlspath("/b/%N");
    EXPECT_STREQ(getenv("NLSPATH"), "/b/%N:/a/%N");
    kst_prepend_nlspath("");
    EXPECT_STREQ(kst_get_nlspath(), "/b/%N:/a/%N");
    kst_set_nlspath("/c");
    EXPECT_STREQ(kst_get_nlspath(), "/c");
}

} // namespace
