// Any text as a unit file, an init script, and the files of accounts: no crash, texts of one line each, and a file
// without its hashes says the same of every account and nothing else when it loses them again.

#include <cstdint>
#include <cstdlib>

#include "host/accounts/AccountFiles.h"
#include "host/services/InitScripts.h"
#include "host/services/UnitFile.h"

namespace
{
void demand(bool holds)
{
    if (!holds)
        abort();
}

bool isOneLine(std::string_view text)
{
    return text.find('\n') == std::string_view::npos;
}

bool isSame(const host::PasswordState& left, const host::PasswordState& right)
{
    return left.isEmpty == right.isEmpty && left.isLocked == right.isLocked;
}

void checkAccounts(std::string_view text)
{
    const std::string plain = host::withoutHashes(text);
    demand(host::withoutHashes(plain) == plain);
    const auto before = host::parseShadow(text);
    const auto after = host::parseShadow(plain);
    demand(before.size() == after.size());
    for (const auto& [name, shadow] : before)
        demand(isSame(after.at(name).password, shadow.password) && after.at(name).expiry == shadow.expiry);
    host::parsePasswd(text, [](const host::Account& account) {
        demand(!account.name.empty() && isOneLine(account.name) && isOneLine(account.shell));
    });
    host::isLockedOut(text, host::parseLockoutRule(text), 1'000'000);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    host::UnitFile unit;
    host::parseUnitFile(text, unit);
    demand(isOneLine(unit.description) && isOneLine(unit.execStart) && !unit.effectiveType().empty());
    const host::InitScript script = host::parseInitScript(text);
    demand(isOneLine(script.summary) && isOneLine(script.description));
    checkAccounts(text);
    return 0;
}
