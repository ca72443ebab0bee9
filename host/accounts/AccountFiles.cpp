#include "host/accounts/AccountFiles.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "report/Text.h"

namespace host
{
namespace
{
constexpr std::string_view kInShadow = "x";

// A number of a field that may be empty; -1 stands for an empty one, too.
std::optional<int64_t> daysOf(std::string_view field)
{
    const std::optional<int64_t> days = report::parseNumber<int64_t>(field);
    return days && *days >= 0 ? days : std::nullopt;
}

bool isOfNetwork(std::string_view name)
{
    return name.starts_with('+') || name.starts_with('-');
}
} // namespace

// Every hash is longer than the oldest kind's thirteen characters, or as long; "!" before one locks it.
PasswordState passwordState(std::string_view field)
{
    constexpr size_t kShortestHash = 13;
    PasswordState state;
    state.isEmpty = field.empty();
    state.isLocked = !field.empty() && (field.front() == '!' || field.front() == '*' || field.size() < kShortestHash);
    return state;
}

void parsePasswd(std::string_view text, const std::function<void(const Account& account)>& take)
{
    constexpr size_t kFields = 7;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::vector<std::string_view> fields = report::split(line, ':');
        if (fields.size() != kFields || fields[0].empty() || fields[0].front() == '#' || isOfNetwork(fields[0]))
            continue;
        Account account;
        account.name = fields[0];
        if (fields[1] != kInShadow)
            account.password = passwordState(fields[1]);
        account.userId = report::parseNumber<uint32_t>(fields[2]);
        account.groupId = report::parseNumber<uint32_t>(fields[3]);
        account.fullName = fields[4].substr(0, fields[4].find(','));
        account.home = fields[5];
        account.shell = report::trimmed(fields[6]);
        take(account);
    }
}

bool Shadow::isChangeable() const
{
    return !minimumAge || !maximumAge || *minimumAge <= *maximumAge;
}

bool Shadow::expires() const
{
    constexpr int64_t kNever = 99999;
    return maximumAge && *maximumAge < kNever;
}

std::map<std::string_view, Shadow> parseShadow(std::string_view text)
{
    enum Field { Name, Password, LastChange, Minimum, Maximum, Warning, Inactive, Expiry, Fields };
    std::map<std::string_view, Shadow> shadows;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::vector<std::string_view> fields = report::split(line, ':');
        if (fields.size() < Fields || fields[Name].empty())
            continue;
        Shadow shadow;
        shadow.password = passwordState(fields[Password]);
        shadow.minimumAge = daysOf(fields[Minimum]);
        shadow.maximumAge = daysOf(fields[Maximum]);
        shadow.expiry = daysOf(fields[Expiry]);
        shadows.try_emplace(fields[Name], shadow);
    }
    return shadows;
}

std::string withoutHashes(std::string_view text)
{
    constexpr std::string_view kLocked = "!", kSomeHash = "-------------"; // as long as the shortest one
    std::string plain;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const size_t begin = std::min(line.find(':'), line.size() - 1) + 1;
        const std::string_view field = line.substr(begin, line.substr(begin).find(':'));
        const PasswordState state = passwordState(field);
        const bool isPlain = state.isEmpty || field == kInShadow || line.empty();
        plain.append(line.substr(0, begin)).append(isPlain ? field : state.isLocked ? kLocked : kSomeHash);
        plain.append(line.substr(begin + field.size())) += '\n';
    }
    return plain;
}

LockoutRule parseLockoutRule(std::string_view text)
{
    LockoutRule rule;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::string_view trimmed = report::trimmed(line);
        const auto [name, value] = report::keyValue(trimmed, '=');
        const std::optional<uint64_t> number = report::parseNumber(value);
        if (trimmed == "even_deny_root")
            rule.countsForRoot = true;
        else if (name == "unlock_time" && value == "never")
            rule.unlockAfter = 0;
        else if (name == "unlock_time" && number)
            rule.unlockAfter = *number;
        else if (name == "deny" && number)
            rule.failures = *number;
        else if (name == "fail_interval" && number)
            rule.interval = *number;
    }
    return rule;
}

// Records of 64 bytes in the machine's own order of bytes: 52 of where it came from, two flags of 16 bits, a time.
bool isLockedOut(std::string_view tally, const LockoutRule& rule, uint64_t now)
{
    constexpr size_t kRecord = 64, kFlags = 54, kTime = 56;
    constexpr uint16_t kValid = 1;
    std::vector<uint64_t> times;
    for (; tally.size() >= kRecord; tally.remove_prefix(kRecord)) {
        uint16_t flags;
        uint64_t time;
        memcpy(&flags, tally.data() + kFlags, sizeof flags);
        memcpy(&time, tally.data() + kTime, sizeof time);
        if ((flags & kValid) != 0 && time <= now)
            times.push_back(time);
    }
    if (times.empty() || rule.failures == 0)
        return false;
    const uint64_t latest = *std::max_element(times.begin(), times.end());
    const auto counts = [&](uint64_t time) { return latest - time < rule.interval; };
    const auto failures = static_cast<uint64_t>(std::count_if(times.begin(), times.end(), counts));
    return failures >= rule.failures && (rule.unlockAfter == 0 || now - latest <= rule.unlockAfter);
}
} // namespace host
