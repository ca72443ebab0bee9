#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace report
{
/// What is searched for in texts, and what stands there instead. Letters match in either case, and a replacement of the
/// same length takes the case over.
///
/// Short texts are in everything: what has one or two characters, or is a number of fewer than six digits, is not
/// searched for. Three characters are found where they are a whole part of a path or of an address ("/home/ada",
/// "ada@host"), four to seven characters and numbers of fewer than twelve digits where they are a word, between
/// characters that are no letters and digits. Longer ones are found anywhere.
class Dictionary
{
public:
    static constexpr size_t kMostPatterns = 1'000'000;
    static constexpr size_t kLongestPattern = 512; // bytes

    /// Adds a text and the forms that file names and unit names give it: a "-" as "\x2d", a blank as "_" and as "\x20".
    /// Of a text that is there already the first replacement stays. False when there are too many.
    bool add(std::string_view text, std::string_view replacement);

    /// The same of a network address: none of a longer one's ends is taken for it.
    bool addAddress(std::string_view text, std::string_view replacement);

    /// Makes what was added findable.
    void finish();

    /// The text with every find replaced; where several begin at one place the longest counts. Steps grow with the
    /// text's length times the depth in which patterns begin with patterns, which is seldom more than two.
    std::string replaced(std::string_view text) const;

private:
    enum Place : uint8_t { PART, WORD, ADDRESS, ANYWHERE };
    struct Pattern {
        std::string text;
        std::string replacement; // not escaped
        Place place = ANYWHERE;
        char escaped = 0; // the character that the text writes as the form says
        std::string_view form;
        uint32_t shorter = kNone; // the longest other pattern that this one begins with
    };
    static constexpr uint32_t kNone = UINT32_MAX;
    static constexpr size_t kShortest = 3;

    bool addPattern(Pattern pattern);
    static std::string replacementFor(const Pattern& pattern, std::string_view found);
    const Pattern* find(std::string_view lowerText, size_t at) const;
    static bool isAt(Place place, std::string_view text, size_t at, size_t length);

    std::vector<Pattern> patterns_; // sorted by text when finished
    std::bitset<65536> starts_;     // hashes of the first three bytes of patterns
};
} // namespace report
