#include "host/text/Secrets.h"

#include <algorithm>

#include "report/Text.h"

namespace host
{
namespace
{
constexpr std::string_view kMask = "***";

// Characters of an option's name; a name ends at anything else.
bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
           c == '.';
}

// The part of an option's name that says what it is: behind its dashes and what stands before the last dot.
std::string plainName(std::string_view name)
{
    name.remove_prefix(std::min(name.find_first_not_of('-'), name.size()));
    const size_t dot = name.rfind('.');
    return report::lower(dot == std::string_view::npos ? name : name.substr(dot + 1));
}

bool isSecretName(std::string_view name)
{
    const std::string plain = plainName(name);
    for (const std::string_view word : {"pass", "pwd", "token", "secret"})
        if (plain.find(word) != std::string::npos)
            return true;
    return plain == "key" || plain.ends_with("_key") || plain.ends_with("-key") || plain.ends_with("apikey");
}

// Where the value of the first secret assignment in a word begins ("flags=user=me,password=x" has two more within it),
// or npos. All that follows in the word may belong to it.
size_t secretValue(std::string_view word)
{
    for (size_t equals = word.find('='); equals != std::string_view::npos; equals = word.find('=', equals + 1)) {
        size_t begin = equals;
        while (begin > 0 && isNameCharacter(word[begin - 1]))
            --begin;
        if (isSecretName(word.substr(begin, equals - begin)))
            return equals + 1;
    }
    return std::string_view::npos;
}

// The quote that a hidden part leaves open, so that its end is in a later word; or 0. An apostrophe within a word is
// none.
char openQuote(std::string_view word)
{
    const auto isOdd = [word](char quote) { return std::count(word.begin(), word.end(), quote) % 2 != 0; };
    if (isOdd('"'))
        return '"';
    const bool mayQuote = word.starts_with('\'') || word.find("='") != std::string_view::npos;
    return mayQuote && isOdd('\'') ? '\'' : '\0';
}

// The word with the first secret in it hidden up to its end; a quote that was open before the secret is closed again.
std::string maskAssignment(std::string_view word)
{
    const size_t value = secretValue(word);
    std::string plain = maskUri(word.substr(0, value));
    if (value == std::string_view::npos)
        return plain;
    const char quote = openQuote(word.substr(0, value));
    return plain + std::string(kMask) + (quote != 0 ? std::string(1, quote) : std::string());
}
} // namespace

std::string maskUri(std::string_view text)
{
    constexpr std::string_view kScheme = "://";
    std::string masked;
    for (size_t scheme = text.find(kScheme); scheme != std::string_view::npos; scheme = text.find(kScheme)) {
        const size_t authority = scheme + kScheme.size();
        const size_t end = std::min(text.find_first_of("/?# \t", authority), text.size());
        const size_t at = text.substr(0, end).rfind('@');
        const bool hasUser = at != std::string_view::npos && at >= authority;
        masked += text.substr(0, authority);
        masked += hasUser ? kMask : std::string_view();
        text.remove_prefix(hasUser ? at : authority);
    }
    return masked + std::string(text);
}

std::string maskOptions(std::string_view options)
{
    std::string masked;
    for (const std::string_view option : report::split(options, ','))
        masked += (masked.empty() ? "" : ",") + maskAssignment(option);
    return masked;
}

std::string maskCommandLine(std::string_view line)
{
    std::string masked;
    bool hideNext = false;
    char quote = 0; // of a secret with blanks, whose words are passed over
    for (const std::string_view word : report::words(line)) {
        if (quote != 0) {
            quote = word.find(quote) != std::string_view::npos ? '\0' : quote;
            continue;
        }
        const bool isOption = word.starts_with('-');
        const bool isHidden = hideNext && !isOption;
        masked += masked.empty() ? "" : " ";
        masked += isHidden ? std::string(kMask) : maskAssignment(word);
        quote = isHidden || secretValue(word) != std::string_view::npos ? openQuote(word) : '\0';
        hideNext = isOption && word.find('=') == std::string_view::npos && isSecretName(word);
    }
    return masked;
}
} // namespace host
