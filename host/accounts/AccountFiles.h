#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

// The files of local accounts (passwd(5), shadow(5), faillock(8)), each as text or bytes. What a password or its hash
// is never leaves this: only what follows from it.

namespace host
{
/// What a password field lets its user do.
struct PasswordState {
    bool isEmpty = false;  // no password is asked
    bool isLocked = false; // nothing that anybody types matches: locked, or never set
};
PasswordState passwordState(std::string_view field);

/// An account of /etc/passwd. Texts are views of the file's text.
struct Account {
    std::string_view name;
    std::string_view fullName; // GECOS up to its first comma
    std::string_view home, shell;
    std::optional<uint32_t> userId, groupId;
    std::optional<PasswordState> password; // absent: it stands in /etc/shadow
};

/// Calls take for each account. Lines of another form, and those that name accounts of a network ("+", "-name"), are
/// left out.
void parsePasswd(std::string_view text, const std::function<void(const Account& account)>& take);

/// What /etc/shadow says of an account, days since 1970; absent where a field is empty or none.
struct Shadow {
    PasswordState password;
    std::optional<int64_t> minimumAge, maximumAge; // days
    std::optional<int64_t> expiry;                 // the account is none from this day on

    bool isExpired(int64_t today) const { return expiry && *expiry > 0 && today >= *expiry; }
    /// A password that must be older than it may be can never be changed.
    bool isChangeable() const;
    bool expires() const;
};

/// By name; of a name that comes twice the first line counts, as for whoever logs in.
std::map<std::string_view, Shadow> parseShadow(std::string_view text);

/// A passwd or shadow file without its hashes, which says the same of every account.
std::string withoutHashes(std::string_view text);

/// When failed log-ins lock an account, seconds (/etc/security/faillock.conf).
struct LockoutRule {
    uint64_t failures = 3;
    uint64_t interval = 900;
    uint64_t unlockAfter = 600; // 0: never
    bool countsForRoot = false;
};
LockoutRule parseLockoutRule(std::string_view text);

/// Whether the failures that a tally file holds (/run/faillock/NAME) lock its account now, seconds since 1970 UTC.
bool isLockedOut(std::string_view tally, const LockoutRule& rule, uint64_t now);
} // namespace host
