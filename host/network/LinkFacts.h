#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/Kernel.h"

// Facts of the network that more than one group tells.

namespace host
{
class Root;

/// The names of links by their index.
std::map<uint32_t, std::string> linkNames(const std::vector<Link>& links);

/// "IPv4" or "IPv6".
inline const char* familyName(bool isIPv6)
{
    return isIPv6 ? "IPv6" : "IPv4";
}

/// Where names are resolved: the servers in order, and the domain that is searched first.
struct Resolver {
    std::vector<std::string> servers;
    std::string domain;
    std::string source;
};

/// resolv.conf(5); where it names a stub on this machine only, the file of the service behind the stub.
Resolver readResolver(const Root& root);

/// The text of a resolv.conf file.
Resolver parseResolver(std::string_view text);
} // namespace host
