// The restartable conversions give what the one-shot ones give, however input and output are cut.

#include <functional>
#include <random>

#include "codeset/tables/CodeSets.h"
#include "tests/unit/codeset/CodeSetFixture.h"

namespace
{

struct Sample {
    const char* table;
    std::string text; // in the code set: known, unknown and, at the end, incomplete characters
    std::string utf8; // characters that it has and has not, broken and incomplete sequences
};

const std::string kMixedUtf8 =
    "a\xC3\xA9\xE3\x81\x82z\xED\xA0\x80\xF0\x9F\x98\x80\xE4\xB8\x80\xE4\xB8\x81\xFF!\xE3\x81";

const Sample kSamples[] = {
    {"ISO88597", "ab\xE1\xAE\xF9z", kMixedUtf8 + "\xCE\xB1"},
    {"GBK", "a\xB0\xA1\xFF\x80z\xB0\xA1\xB0", kMixedUtf8},
    {"SHIFTJIS", "a\xB1\x82\xA0\x85\x40z\x82", kMixedUtf8},
    {"EUCJP", "a\x8E\xB1\xA4\xA2\x8F\xB0\xA1\x8F\xFE\xFEz\x8F\xB0", kMixedUtf8},
    {"EUCTW", "a\xA4\xA1\x8E\xA2\xA1\xA1\x8E\xA3\xA1\xA1z\x8E\xA2\xA1", kMixedUtf8},
    {"GB18030", "a\xB0\xA1\x81\x30\x81\x30\x95\x32\x82\x36\xFFz\x81\x30\x81", kMixedUtf8},
    {"IBM500", std::string("\x81\xC1\x15\x00\xFF", 5), kMixedUtf8},
    {"IBM939", "\xC1\x0E\x42\xC1\x43\x81\x01\x0F\xC2\xFF\x0E\x42\xC2\x41", kMixedUtf8},
    {"UTF8", kMixedUtf8, kMixedUtf8},
};

// The result of one conversion and how many characters it replaced.
template <class Unit>
struct Result {
    std::basic_string<Unit> text;
    unsigned long substituted;
    bool operator==(const Result&) const = default;
};

template <class Text>
using UnitOf = typename Text::value_type;

// Converts with pieces of the lengths that the two functions give (at least 1 and 4).
template <class Out, class In, class Function>
Result<Out> inPieces(kst_handle handle, Function function, const std::basic_string<In>& text,
                     const std::function<size_t()>& inLength, const std::function<size_t()>& outLength)
{
    const unsigned long before = kst_get_subst_count(handle);
    std::basic_string<Out> result;
    size_t given = 0;
    std::basic_string<In> pending;
    for (bool more = true; more;) {
        const size_t next = std::min(inLength(), text.size() - given);
        pending += text.substr(given, next);
        given += next;
        for (;;) {
            std::basic_string<Out> buffer(outLength(), Out());
            const In* src = pending.data();
            Out* dst = buffer.data();
            size_t left = pending.size();
            size_t room = buffer.size();
            const int outcome = function(handle, &src, &left, &dst, &room);
            EXPECT_EQ(left, static_cast<size_t>(pending.data() + pending.size() - src));
            EXPECT_EQ(room, static_cast<size_t>(buffer.data() + buffer.size() - dst));
            EXPECT_TRUE(outcome != KST_DONE || left == 0);
            pending.erase(0, pending.size() - left);
            result.append(buffer, 0, buffer.size() - room);
            if (outcome != KST_OUTPUT_FULL)
                break;
        }
        more = given < text.size();
    }
    Out last[1];
    Out* dst = last;
    size_t room = 1;
    EXPECT_EQ(function(handle, nullptr, nullptr, &dst, &room), KST_DONE);
    result.append(last, 1 - room);
    return {result, kst_get_subst_count(handle) - before};
}

template <class Out, class In, class OneShot>
Result<Out> inOne(kst_handle handle, OneShot function, const std::basic_string<In>& text)
{
    const unsigned long before = kst_get_subst_count(handle);
    std::basic_string<Out> buffer(text.size() * 6 + 8, Out());
    const size_t length = function(handle, text.data(), static_cast<long>(text.size()), buffer.data(), buffer.size());
    return {buffer.substr(0, length), kst_get_subst_count(handle) - before};
}

// Every cut of the input in two, with output pieces of every length up to 9, and every pair of regular lengths.
template <class Out, class In, class OneShot, class Function>
void expectSameForEverySplit(kst_handle handle, OneShot oneShot, Function function, const std::basic_string<In>& text)
{
    const Result<Out> whole = inOne<Out>(handle, oneShot, text);
    for (size_t room = 4; room < 10; ++room) {
        for (size_t cut = 1; cut < text.size(); ++cut) {
            size_t calls = 0;
            const auto inLength = [&] { return calls++ == 0 ? cut : text.size(); };
            ASSERT_EQ(inPieces<Out>(handle, function, text, inLength, [&] { return room; }), whole)
                << kst_get_cs_name(handle) << ", cut at " << cut << ", room for " << room;
        }
        for (size_t piece = 1; piece <= 5; ++piece)
            ASSERT_EQ(inPieces<Out>(
                          handle, function, text, [&] { return piece; }, [&] { return room; }),
                      whole)
                << kst_get_cs_name(handle) << ", pieces of " << piece << ", room for " << room;
    }
}

template <class Out, class In, class OneShot, class Function>
void expectSameForRandomSplits(kst_handle handle, OneShot oneShot, Function function, const std::basic_string<In>& text)
{
    std::mt19937 random(static_cast<unsigned>(text.size()));
    const Result<Out> whole = inOne<Out>(handle, oneShot, text);
    for (int round = 0; round < 20; ++round) {
        const auto inLength = [&] { return 1 + random() % 300; };
        const auto outLength = [&] { return 4 + random() % 300; };
        ASSERT_EQ(inPieces<Out>(handle, function, text, inLength, outLength), whole) << kst_get_cs_name(handle);
    }
}

template <class Text>
Text repeated(const Text& text, int times)
{
    Text result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

using RestartTest = CodeSetTest;

const std::u16string kMixedUcs2 = u"a\u00E9\u3042z\xD800\u4E00\u4E01\uFFFF!\u03B1";

TEST_F(RestartTest, everySplitOfShortTexts)
{
    for (const Sample& sample : kSamples) {
        const Handle handle(sample.table);
        ASSERT_NE(handle.handle, nullptr) << sample.table;
        expectSameForEverySplit<char>(handle, kst_to_utf8, kst_to_utf8_r, sample.text);
        expectSameForEverySplit<char>(handle, kst_from_utf8, kst_from_utf8_r, sample.utf8);
        expectSameForEverySplit<kst_wchar>(handle, kst_to_ucs2, kst_to_ucs2_r, sample.text);
        expectSameForEverySplit<char>(handle, kst_from_ucs2, kst_from_ucs2_r, kMixedUcs2);
    }
}

TEST_F(RestartTest, randomSplitsOfLongTexts)
{
    for (const Sample& sample : kSamples) {
        const Handle handle(sample.table);
        ASSERT_NE(handle.handle, nullptr) << sample.table;
        expectSameForRandomSplits<char>(handle, kst_to_utf8, kst_to_utf8_r, repeated(sample.text, 200));
        expectSameForRandomSplits<char>(handle, kst_from_utf8, kst_from_utf8_r, repeated(sample.utf8, 200));
        expectSameForRandomSplits<kst_wchar>(handle, kst_to_ucs2, kst_to_ucs2_r, repeated(sample.text, 200));
        expectSameForRandomSplits<char>(handle, kst_from_ucs2, kst_from_ucs2_r, repeated(kMixedUcs2, 200));
    }
}

TEST_F(RestartTest, anOutputThatIsTooSmallForOneCharacterTakesNothing)
{
    const Handle handle("EUCJP");
    const std::string text = "\xA4\xA2";
    char buffer[2];
    const char* src = text.data();
    char* dst = buffer;
    size_t left = 2;
    size_t room = 2;
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_OUTPUT_FULL);
    EXPECT_EQ(src, text.data());
    EXPECT_EQ(dst, buffer);
    EXPECT_EQ(left, 2u);
    EXPECT_EQ(room, 2u);
}

TEST_F(RestartTest, anUnknownCharacterIsCountedOnceWhenItsSubstitutionWaitsForRoom)
{
    const Handle handle("IBM939");
    const std::string text = "\xE3\x81\x82\xF0\x9F\x98\x80"; // one that it has, one that it has not
    char buffer[5];
    const char* src = text.data();
    char* dst = buffer;
    size_t left = text.size();
    size_t room = sizeof buffer;
    EXPECT_EQ(kst_from_utf8_r(handle, &src, &left, &dst, &room), KST_OUTPUT_FULL);
    EXPECT_EQ(left, 4u);
    EXPECT_EQ(kst_get_subst_count(handle), 0u);
    dst = buffer;
    room = sizeof buffer;
    EXPECT_EQ(kst_from_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    EXPECT_EQ(std::string(buffer, dst), "\xFE\xFE");
    EXPECT_EQ(kst_get_subst_count(handle), 1u);
}

TEST_F(RestartTest, shiftStateLivesFromCallToCallAndANullInputEndsIt)
{
    const Handle handle("IBM939");
    const std::string parts[] = {"\x0E\x42", "\x42\xC1\x0F\xC1"};
    char buffer[16];
    char* dst = buffer;
    size_t room = sizeof buffer;
    const char* src = parts[0].data();
    size_t left = 2;
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_INCOMPLETE);
    EXPECT_EQ(left, 1u);
    src = parts[1].data();
    left = parts[1].size();
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    EXPECT_EQ(std::string(buffer, dst), "\xEF\xBC\xA1"
                                        "A"); // the full-width letter, then the plain one

    src = "\x0E";
    left = 1;
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    src = nullptr;
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    dst = buffer;
    src = "\xC1";
    left = 1;
    EXPECT_EQ(kst_to_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    EXPECT_EQ(std::string(buffer, dst), "A");
}

TEST_F(RestartTest, endingShiftedTextNeedsRoomForTheShiftIn)
{
    const Handle handle("IBM939");
    const char* src = "\xE3\x81\x82";
    size_t left = 3;
    char buffer[4];
    char* dst = buffer;
    size_t room = sizeof buffer;
    EXPECT_EQ(kst_from_utf8_r(handle, &src, &left, &dst, &room), KST_DONE);
    EXPECT_EQ(room, 1u) << "left for the shift in";
    size_t none = 0;
    EXPECT_EQ(kst_from_utf8_r(handle, nullptr, nullptr, &dst, &none), KST_OUTPUT_FULL);
    EXPECT_EQ(kst_from_utf8_r(handle, nullptr, nullptr, &dst, &room), KST_DONE);
    EXPECT_EQ(buffer[3], '\x0F');
    EXPECT_EQ(kst_from_utf8_r(handle, nullptr, nullptr, &dst, &room), KST_DONE) << "nothing is left to end";
    EXPECT_EQ(room, 0u);
}

} // namespace
