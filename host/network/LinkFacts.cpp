#include "host/network/LinkFacts.h"

#include <algorithm>

#include "host/Root.h"
#include "report/Text.h"

namespace host
{
namespace
{
bool isStub(const std::string& server)
{
    return server.starts_with("127.") || server == "::1";
}

bool isBehindStub(const Resolver& resolver)
{
    return std::all_of(resolver.servers.begin(), resolver.servers.end(), isStub);
}
} // namespace

std::map<uint32_t, std::string> linkNames(const std::vector<Link>& links)
{
    std::map<uint32_t, std::string> names;
    for (const Link& link : links)
        names[link.index] = link.name;
    return names;
}

Resolver parseResolver(std::string_view text)
{
    Resolver resolver;
    std::string_view line;
    while (report::takeLine(text, line)) {
        const std::vector<std::string_view> words = report::words(line);
        if (words.size() < 2)
            continue;
        if (words[0] == "nameserver")
            resolver.servers.emplace_back(words[1]);
        else if (words[0] == "search" || words[0] == "domain")
            resolver.domain = words[1]; // the last of the lines counts
    }
    return resolver;
}

Resolver readResolver(const Root& root)
{
    constexpr const char* kPaths[] = {"/etc/resolv.conf", "/run/systemd/resolve/resolv.conf",
                                      "/run/NetworkManager/resolv.conf"};
    Resolver first;
    for (const char* path : kPaths) {
        Resolver resolver = parseResolver(root.read(path).value_or(""));
        resolver.source = path;
        if (!isBehindStub(resolver))
            return resolver;
        if (first.source.empty())
            first = resolver;
    }
    return first;
}
} // namespace host
