// PC System Params: the names that a network of PCs knows this one by, and who is logged in.

#include "host/Collectors.h"
#include "host/Kernel.h"
#include "host/Root.h"
#include "host/network/LinkFacts.h"
#include "host/text/Assignments.h"
#include "report/Text.h"
#include "report/catalog/AttributeIds.h"

namespace host
{
namespace
{
// The first session's user that the session manager knows (its files are private to it in form, but have kept it since
// it began).
MaybeFact loggedInUser(const Root& root)
{
    constexpr const char* kUsers = "/run/systemd/users";
    for (const std::string& id : root.list(kUsers)) {
        const std::string path = std::string(kUsers) + '/' + id;
        const auto values = parseAssignments(root.read(path, Root::kLineLimit).value_or(""));
        const auto name = values.find("NAME");
        const auto state = values.find("STATE");
        if (name != values.end() && state != values.end() && (state->second == "active" || state->second == "online"))
            return Fact{name->second, path};
    }
    return std::nullopt;
}

MaybeFact domain(const Root& root)
{
    MaybeFact kernel = root.fact("/proc/sys/kernel/domainname");
    if (kernel && kernel->value != "(none)")
        return kernel;
    const Resolver resolver = readResolver(root);
    return resolver.domain.empty() ? std::nullopt : MaybeFact(Fact{resolver.domain, resolver.source});
}

// "workgroup = NAME" of the global section.
MaybeFact workgroup(const Root& root)
{
    constexpr const char* kPath = "/etc/samba/smb.conf";
    const std::string text = root.read(kPath).value_or("");
    bool isGlobal = true;
    std::string_view rest = text;
    std::string_view line;
    while (report::takeLine(rest, line)) {
        const std::string_view trimmed = report::trimmed(line);
        if (trimmed.starts_with('['))
            isGlobal = report::lower(trimmed) == "[global]";
        const auto [key, value] = report::keyValue(trimmed, '=');
        if (isGlobal && report::lower(key) == "workgroup" && !value.empty())
            return Fact{std::string(value), kPath};
    }
    return std::nullopt;
}
} // namespace

void collectPCSystemParams(const Machine& machine, Collection& collection)
{
    RowBuilder row(GROUP_PC_SYSTEM_PARAMS);
    row.text(PC_SYSTEM_PARAMS_COMPUTER_NAME, machine.kernel.names().node, "uname");
    row.text(PC_SYSTEM_PARAMS_USER_NAME, loggedInUser(machine.root));
    row.text(PC_SYSTEM_PARAMS_DOMAIN_NAME, domain(machine.root));
    row.text(PC_SYSTEM_PARAMS_WORKGROUP_NAME, workgroup(machine.root));
    if (!row.isEmpty())
        collection.add(std::move(row));
}
} // namespace host
