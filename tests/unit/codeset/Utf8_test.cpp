// The built-in UTF-8 code set: a checked copy.

#include "tests/unit/codeset/CodeSetFixture.h"

namespace
{

using Utf8Test = CodeSetTest;

TEST_F(Utf8Test, everyCharacterIsCopied)
{
    const Handle handle("UTF-8");
    EXPECT_EQ(kst_cs_table(handle), nullptr);
    EXPECT_STREQ(kst_get_cs_name(handle), "UTF8");
    for (uint32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF)
            continue;
        const std::string text = utf8(c);
        ASSERT_EQ(toUtf8(handle, text), text);
        ASSERT_EQ(fromUtf8(handle, text), text);
        if (c < 0x10000) {
            ASSERT_EQ(toUcs2(handle, text), std::u16string(1, static_cast<kst_wchar>(c)));
            ASSERT_EQ(fromUcs2(handle, std::u16string(1, static_cast<kst_wchar>(c))), text);
        }
    }
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
}

TEST_F(Utf8Test, brokenSequencesAreOneUnknownCharacterUpToTheByteThatBreaksThem)
{
    const Handle handle("UTF8");
    const struct {
        const char* text;
        const char* result;
        unsigned long substituted;
    } cases[] = {
        {"a\x80z", "a?z", 1}, // a trail byte alone
        {"a\xBF\xBFz", "a??z", 2},
        {"\xC3z", "?z", 1}, // cut short by another character
        {"\xE3\x81z", "?z", 1},
        {"\xF0\x9F\x98z", "?z", 1},
        {"\xC0\x80\xC1\xBF", "????", 4}, // overlong forms
        {"\xE0\x80\x80\xE0\x9F\xBF", "??????", 6},
        {"\xF0\x80\x80\x80\xF0\x8F\xBF\xBF", "????????", 8},
        {"\xED\xA0\x80\xED\xBF\xBF", "??????", 6},           // surrogates
        {"\xF4\x90\x80\x80\xF5\x80\x80\x80", "????????", 8}, // beyond U+10FFFF
        {"\xFE\xFF", "??", 2},
        {"\xE3\xE3\x81\x82", "?\xE3\x81\x82", 1}, // the breaking byte begins a character
    };
    for (const auto& c : cases) {
        const unsigned long before = kst_get_subst_count(handle);
        EXPECT_EQ(toUtf8(handle, c.text), c.result);
        EXPECT_EQ(kst_get_subst_count(handle) - before, c.substituted) << c.result;
    }
}

TEST_F(Utf8Test, everyIncompleteSequenceIsLeftToTheCaller)
{
    const Handle handle("UTF8");
    for (const std::string& text :
         {std::string("\xC3"), std::string("\xE3"), std::string("\xE3\x81"), std::string("\xE0\xA0"),
          std::string("\xF0"), std::string("\xF0\x9F"), std::string("\xF4\x8F\xBF")}) {
        char buffer[8];
        const char* src = text.data();
        char* dst = buffer;
        size_t left = text.size();
        size_t room = sizeof buffer;
        EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_INCOMPLETE);
        EXPECT_EQ(left, text.size());
        EXPECT_EQ(room, sizeof buffer);
        EXPECT_EQ(toUtf8(handle, "a" + text), "a") << "one-shot leaves it out";
    }
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
}

TEST_F(Utf8Test, charactersAboveFFFFHaveNoUcs2Form)
{
    const Handle handle("UTF8");
    EXPECT_EQ(toUcs2(handle, "a\xF0\x9F\x98\x80z"), u"a?z");
    EXPECT_EQ(kst_get_subst_count(handle), 1u);
    EXPECT_EQ(fromUcs2(handle, u"a\xD83D\xDE00z"), "a??z") << "surrogates are no characters";
    EXPECT_EQ(kst_get_subst_count(handle), 3u);
}

TEST_F(Utf8Test, longAsciiRunsAreCopiedAtEveryAlignment)
{
    const Handle handle("UTF8");
    for (size_t start = 0; start < 17; ++start) {
        for (size_t length = 0; length < 40; ++length) {
            std::string text(start, 'x');
            text += "\xC3\xA9";
            text += std::string(length, 'y') + "\xE3\x81\x82" + std::string(length, 'z');
            ASSERT_EQ(toUtf8(handle, text), text);
            const std::u16string wide = toUcs2(handle, text);
            ASSERT_EQ(wide.size(), start + 2 * length + 2);
            ASSERT_EQ(fromUcs2(handle, wide), text);
        }
    }
}

} // namespace
