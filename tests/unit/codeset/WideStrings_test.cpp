#include <cwchar>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "codeset/kst.h"

namespace
{

// The C library's functions over wchar_t are the model: the same text in both widths, results compared as positions.
struct Pair {
    std::u16string narrow;
    std::wstring wide;
};

Pair randomText(std::mt19937& random)
{
    Pair text;
    for (size_t length = random() % 8; length > 0; --length) {
        text.narrow += static_cast<kst_wchar>(u"ab\u3042\uFFFF"[random() % 4]);
        text.wide += static_cast<wchar_t>(text.narrow.back());
    }
    return text;
}

template <class Unit>
ptrdiff_t position(const Unit* found, const std::basic_string<Unit>& text)
{
    return found == nullptr ? -1 : found - text.data();
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

TEST(WideStrings, searchesAndComparesLikeTheCLibrary)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        const Pair a = randomText(random);
        const Pair b = randomText(random);
        const size_t count = random() % 9;
        const kst_wchar c = u"ab\u3042\0"[random() % 4];
        const wchar_t wideC = static_cast<wchar_t>(c);
        const kst_wchar* na = a.narrow.c_str();
        const kst_wchar* nb = b.narrow.c_str();
        const wchar_t* wa = a.wide.c_str();
        const wchar_t* wb = b.wide.c_str();
        ASSERT_EQ(kst_wcslen(na), wcslen(wa));
        ASSERT_EQ(kst_wcsnlen(na, count), wcsnlen(wa, count));
        ASSERT_EQ(position<kst_wchar>(kst_wcschr(na, c), a.narrow), position<wchar_t>(wcschr(wa, wideC), a.wide));
        ASSERT_EQ(position<kst_wchar>(kst_wcsrchr(na, c), a.narrow), position<wchar_t>(wcsrchr(wa, wideC), a.wide));
        ASSERT_EQ(kst_wcsspn(na, nb), wcsspn(wa, wb));
        ASSERT_EQ(kst_wcscspn(na, nb), wcscspn(wa, wb));
        ASSERT_EQ(position<kst_wchar>(kst_wcspbrk(na, nb), a.narrow), position<wchar_t>(wcspbrk(wa, wb), a.wide));
        ASSERT_EQ(position<kst_wchar>(kst_wcswcs(na, nb), a.narrow), position<wchar_t>(wcsstr(wa, wb), a.wide));
        ASSERT_EQ(sign(kst_wcsncmp(na, nb, count)), sign(wcsncmp(wa, wb, count)));
    }
}

TEST(WideStrings, copiesAndAppendsLikeTheCLibrary)
{
    std::mt19937 random(8);
    for (int round = 0; round < 20000; ++round) {
        const Pair a = randomText(random);
        const Pair b = randomText(random);
        const size_t count = random() % 9;
        kst_wchar narrow[32];
        wchar_t wide[32];
        const auto expectSame = [&] {
            for (size_t i = 0; i < 32; ++i)
                ASSERT_EQ(narrow[i], static_cast<kst_wchar>(wide[i]));
        };
        std::fill_n(narrow, 32, u'#');
        std::fill_n(wide, 32, L'#');
        ASSERT_EQ(kst_wcscpy(narrow, a.narrow.c_str()), narrow);
        wcscpy(wide, a.wide.c_str());
        expectSame();
        ASSERT_EQ(kst_wcscat(narrow, b.narrow.c_str()), narrow);
        wcscat(wide, b.wide.c_str());
        expectSame();
        ASSERT_EQ(kst_wcsncat(narrow, b.narrow.c_str(), count), narrow);
        wcsncat(wide, b.wide.c_str(), count);
        expectSame();
        ASSERT_EQ(kst_wcsncpy(narrow, a.narrow.c_str(), count), narrow);
        wcsncpy(wide, a.wide.c_str(), count);
        expectSame();
    }
}

TEST(WideStrings, tokensAreFoundOneAfterTheOther)
{
    kst_wchar text[] = u",;one,two;;three,";
    kst_wchar* rest = nullptr;
    EXPECT_EQ(std::u16string(kst_wcstok(text, u",;", &rest)), u"one");
    EXPECT_EQ(std::u16string(kst_wcstok(nullptr, u",", &rest)), u"two;;three") << "the separators may change";
    EXPECT_EQ(kst_wcstok(nullptr, u",;", &rest), nullptr);
    EXPECT_EQ(kst_wcstok(nullptr, u",;", &rest), nullptr) << "the end stays the end";
    kst_wchar separatorsOnly[] = u";;";
    EXPECT_EQ(kst_wcstok(separatorsOnly, u";", &rest), nullptr);
    rest = nullptr;
    EXPECT_EQ(kst_wcstok(nullptr, u";", &rest), nullptr) << "no text at all";
}

TEST(WideStrings, nothingBehindTheLimitIsRead)
{
    const kst_wchar unterminated[] = {u'a', u'b'};
    EXPECT_EQ(kst_wcsnlen(unterminated, 2), 2u);
    EXPECT_EQ(kst_wcsncmp(unterminated, unterminated, 2), 0);
    kst_wchar out[3] = u"";
    kst_wcsncat(out, unterminated, 2);
    EXPECT_EQ(std::u16string(out), u"ab");
}

} // namespace
