// User Account Info: a row an account that stands in the machine's own files. Of passwords nothing is told but what
// follows for whoever would log in.

#include <unordered_set>

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/accounts/AccountFiles.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
constexpr const char* kPasswd = "/etc/passwd";
constexpr const char* kShadow = "/etc/shadow";
constexpr const char* kTallies = "/run/faillock";
constexpr size_t kMostBytes = size_t{64} << 20; // hundreds of thousands of accounts

const char* yesOrNo(bool value)
{
    return value ? "Yes" : "No";
}

// What is known of the accounts besides /etc/passwd.
class Accounts
{
public:
    explicit Accounts(const Machine& machine)
        : machine_(machine), shadowText_(machine.root.read(kShadow, kMostBytes)),
          shadows_(parseShadow(shadowText_ ? *shadowText_ : std::string_view())),
          clock_(static_cast<uint64_t>(machine.kernel.clock())), node_(machine.kernel.names().node)
    {
        for (const std::string& name : machine.root.list(kTallies))
            tallies_.insert(name);
        hasTallies_ = machine.root.exists(kTallies);
        if (hasTallies_)
            rule_ = parseLockoutRule(machine.root.read("/etc/security/faillock.conf").value_or(""));
    }

    RowBuilder row(const Account& account) const;

private:
    std::optional<bool> isLockedOut(const Account& account) const;
    void addPassword(const Account& account, RowBuilder& row) const;

    const Machine& machine_;
    std::optional<std::string> shadowText_;
    std::map<std::string_view, Shadow> shadows_;
    uint64_t clock_;
    std::string node_;
    bool hasTallies_ = false;
    std::unordered_set<std::string> tallies_;
    LockoutRule rule_;
};

// Absent where nobody counts failures, or the count may not be read.
std::optional<bool> Accounts::isLockedOut(const Account& account) const
{
    const std::string name(account.name);
    if (!hasTallies_ || name.find('/') != std::string::npos)
        return std::nullopt;
    if (tallies_.count(name) == 0 || (account.userId == 0U && !rule_.countsForRoot))
        return false;
    const std::optional<std::string> tally = machine_.root.read(std::string(kTallies) + '/' + name);
    return tally ? std::optional(host::isLockedOut(*tally, rule_, clock_)) : std::nullopt;
}

void Accounts::addPassword(const Account& account, RowBuilder& row) const
{
    constexpr int64_t kDay = 86400;
    const auto found = shadows_.find(account.name);
    const Shadow* shadow = found != shadows_.end() ? &found->second : nullptr;
    std::optional<PasswordState> password = account.password;
    if (!password && shadow != nullptr)
        password = shadow->password;
    if (!password)
        return;
    const char* source = account.password ? kPasswd : kShadow;
    const bool isExpired = shadow != nullptr && clock_ != 0 && shadow->isExpired(static_cast<int64_t>(clock_) / kDay);
    row.text(USER_ACCOUNT_INFO_DISABLED, yesOrNo(password->isLocked || isExpired), source);
    row.text(USER_ACCOUNT_INFO_PASSWORD_REQUIRED, yesOrNo(!password->isEmpty), source);
    if (shadow == nullptr)
        return;
    row.text(USER_ACCOUNT_INFO_PASSWORD_CHANGEABLE, yesOrNo(shadow->isChangeable()), kShadow);
    row.text(USER_ACCOUNT_INFO_PASSWORD_EXPIRES, yesOrNo(shadow->expires()), kShadow);
}

RowBuilder Accounts::row(const Account& account) const
{
    RowBuilder row(GROUP_USER_ACCOUNT_INFO);
    row.text(USER_ACCOUNT_INFO_USER_NAME, account.name, kPasswd);
    row.text(USER_ACCOUNT_INFO_DOMAIN, node_, "uname");
    row.text(USER_ACCOUNT_INFO_DESCRIPTION, account.fullName, kPasswd);
    addPassword(account, row);
    const std::optional<bool> lockedOut = isLockedOut(account);
    if (lockedOut)
        row.text(USER_ACCOUNT_INFO_LOCKOUT, yesOrNo(*lockedOut), kTallies);
    if (const report::Value* disabled = row.row().find(USER_ACCOUNT_INFO_DISABLED)) {
        const bool isDisabled = std::get<std::string>(disabled->content) == yesOrNo(true);
        row.text(USER_ACCOUNT_INFO_STATUS,
                 isDisabled                  ? "Disabled"
                 : lockedOut.value_or(false) ? "Locked Out"
                                             : "Enabled",
                 disabled->source);
    }
    row.number(USER_ACCOUNT_INFO_USER_ID, account.userId, kPasswd);
    row.number(USER_ACCOUNT_INFO_GROUP_ID, account.groupId, kPasswd);
    row.text(USER_ACCOUNT_INFO_HOME, account.home, kPasswd);
    row.text(USER_ACCOUNT_INFO_SHELL, account.shell, kPasswd);
    return row;
}
} // namespace

void collectUserAccountInfo(const Machine& machine, Collection& collection)
{
    const std::optional<std::string> text = machine.root.read(kPasswd, kMostBytes);
    if (!text)
        return;
    const Accounts accounts(machine);
    std::unordered_set<std::string_view> known;
    parsePasswd(*text, [&](const Account& account) {
        if (known.insert(account.name).second)
            collection.add(accounts.row(account));
        else
            collection.notes().note(std::string(kPasswd) + ": an account comes again");
    });
}
} // namespace host
