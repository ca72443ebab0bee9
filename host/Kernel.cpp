#include "host/Kernel.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cctype>
#include <cerrno>

#include "host/Notes.h"
#include "host/kernel/JsonFields.h"
#include "host/record/ErrorNames.h"

namespace host
{
static constexpr int64_t kLastSecond = 253402300799; // 9999-12-31 23:59:59
static constexpr size_t kMostName = 255;

// A text of one of the machine's names: of a link, a node.
static bool isName(const std::string& text)
{
    return !text.empty() && text.size() <= kMostName && text.find('/') == std::string::npos;
}

// Pairs of lower-case hexadecimal digits with colons between them; empty when the text is none.
static std::string hardwareAddressOf(const nlohmann::json& object, const char* name)
{
    std::string text = textOf(object, name);
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = isxdigit(static_cast<unsigned char>(text[i])) != 0 && isupper(text[i]) == 0;
        if (i % 3 == 2 ? text[i] != ':' : !isDigit)
            return {};
    }
    return text.size() % 3 == 2 ? text : std::string();
}

namespace
{
// An internet address as inet_ntop writes it.
struct Internet {
    bool isIPv6 = false;
    std::string text;
    uint8_t mostPrefix() const { return isIPv6 ? 128 : 32; }
};
} // namespace

static std::optional<Internet> internetOf(const nlohmann::json& object, const char* name)
{
    const std::string text = textOf(object, name);
    unsigned char bytes[sizeof(in6_addr)];
    char normal[INET6_ADDRSTRLEN];
    for (const int family : {AF_INET, AF_INET6})
        if (inet_pton(family, text.c_str(), bytes) == 1 && inet_ntop(family, bytes, normal, sizeof normal) != nullptr)
            return Internet{family == AF_INET6, normal};
    return std::nullopt;
}

// Of an array of objects those that parse takes.
template <class T>
static std::vector<T> listOf(const nlohmann::json& array, std::optional<T> (*parse)(const nlohmann::json&))
{
    std::vector<T> list;
    if (!array.is_array())
        return list;
    for (const nlohmann::json& one : array)
        if (std::optional<T> parsed = parse(one))
            list.push_back(std::move(*parsed));
    return list;
}

static std::optional<Link> parseLink(const nlohmann::json& object)
{
    Link link;
    link.index = numberOf<uint32_t>(object, "index");
    link.name = textOf(object, "name");
    link.hardwareType = numberOf<uint16_t>(object, "hardwareType");
    link.flags = numberOf<uint32_t>(object, "flags");
    link.mtu = numberOf<uint32_t>(object, "mtu");
    link.kind = textOf(object, "kind");
    link.address = hardwareAddressOf(object, "address");
    link.permanentAddress = hardwareAddressOf(object, "permanentAddress");
    link.master = numberOf<uint32_t>(object, "master");
    link.parent = numberOf<uint32_t>(object, "parent");
    link.operationalState = textOf(object, "operationalState");
    return link.index != 0 && isName(link.name) ? std::optional(link) : std::nullopt;
}

static std::optional<Address> parseAddress(const nlohmann::json& object)
{
    const std::optional<Internet> internet = internetOf(object, "address");
    const std::optional<uint8_t> prefix = numberIn<uint8_t>(memberOf(object, "prefixLength"));
    Address address;
    address.link = numberOf<uint32_t>(object, "link");
    if (!internet || !prefix || *prefix > internet->mostPrefix() || address.link == 0)
        return std::nullopt;
    address.isIPv6 = internet->isIPv6;
    address.address = internet->text;
    address.prefixLength = *prefix;
    address.scope = numberOf<uint8_t>(object, "scope");
    address.isPermanent = isTrue(object, "isPermanent");
    return address;
}

static std::optional<Route> parseRoute(const nlohmann::json& object)
{
    const std::optional<Internet> destination = internetOf(object, "destination");
    const std::optional<uint8_t> prefix = numberIn<uint8_t>(memberOf(object, "prefixLength"));
    if (!destination || !prefix || *prefix > destination->mostPrefix())
        return std::nullopt;
    Route route;
    route.table = numberOf<uint32_t>(object, "table");
    route.isIPv6 = destination->isIPv6;
    route.destination = destination->text;
    route.prefixLength = *prefix;
    if (const std::optional<Internet> gateway = internetOf(object, "gateway"))
        route.gateway = gateway->text;
    route.link = numberOf<uint32_t>(object, "link");
    route.metric = numberOf<uint32_t>(object, "metric");
    route.type = numberOf<uint8_t>(object, "type");
    route.scope = numberOf<uint8_t>(object, "scope");
    route.flags = numberOf<uint32_t>(object, "flags");
    return route;
}

// A call that failed. A recording may say anything.
static void tellFailure(Notes& notes, const std::string& call, std::string_view argument, const std::string& error)
{
    const int number = errorNumber(error).value_or(EIO);
    const std::string what = call.substr(0, kMostName) + (argument.empty() ? "" : " " + std::string(argument));
    notes.failed(what, number);
}

nlohmann::json Kernel::ask(std::string_view question, std::string_view argument) const
{
    nlohmann::json said = answer(question, argument);
    if (!said.is_object() || !said.contains("error"))
        return said;
    const std::string call = textOf(said, "call");
    if (notes_ != nullptr)
        tellFailure(*notes_, call.empty() ? std::string(question) : call, argument, textOf(said, "error"));
    return nullptr;
}

int64_t Kernel::clock() const
{
    const int64_t seconds = numberIn<int64_t>(ask("clock", "")).value_or(0);
    return seconds >= 0 && seconds <= kLastSecond ? seconds : 0;
}

uint32_t Kernel::userId() const
{
    return numberIn<uint32_t>(ask("userId", "")).value_or(kNoUser);
}

uint32_t Kernel::pageSize() const
{
    return numberIn<uint32_t>(ask("pageSize", "")).value_or(0);
}

KernelNames Kernel::names() const
{
    const nlohmann::json names = ask("names", "");
    return {textOf(names, "system"), textOf(names, "node"), textOf(names, "release"), textOf(names, "version"),
            textOf(names, "machine")};
}

std::vector<Link> Kernel::links() const
{
    return listOf(ask("links", ""), parseLink);
}

std::vector<Address> Kernel::addresses() const
{
    return listOf(ask("addresses", ""), parseAddress);
}

std::vector<Route> Kernel::routes() const
{
    return listOf(ask("routes", ""), parseRoute);
}

std::optional<LinkDriver> Kernel::linkDriver(std::string_view link) const
{
    const nlohmann::json driver = ask("linkDriver", link);
    if (!driver.is_object())
        return std::nullopt;
    return LinkDriver{textOf(driver, "driver"), textOf(driver, "firmwareVersion"), textOf(driver, "busAddress"),
                      numberIn<uint8_t>(memberOf(driver, "port"))};
}

std::optional<FileSystemSize> Kernel::fileSystemSize(std::string_view mountPoint) const
{
    const nlohmann::json size = ask("fileSystemSize", mountPoint);
    const std::optional<uint64_t> total = numberIn<uint64_t>(memberOf(size, "totalBytes"));
    if (!total)
        return std::nullopt;
    FileSystemSize sizes;
    sizes.totalBytes = *total;
    sizes.freeBytes = std::min(numberOf<uint64_t>(size, "freeBytes"), *total);
    sizes.availableBytes = std::min(numberOf<uint64_t>(size, "availableBytes"), sizes.freeBytes);
    sizes.inodes = numberOf<uint64_t>(size, "inodes");
    sizes.freeInodes = numberOf<uint64_t>(size, "freeInodes");
    return sizes;
}

bool Kernel::isSilent(std::string_view mountPoint) const
{
    return !mayHang(mountPoint) && isTrue(ask("fileSystemSize", mountPoint), "isSilent");
}

std::optional<BlockContent> Kernel::blockContent(std::string_view device) const
{
    const nlohmann::json content = ask("blockContent", device);
    if (!content.is_object())
        return std::nullopt;
    return BlockContent{textOf(content, "type"), textOf(content, "label"), textOf(content, "uuid"),
                        textOf(content, "partitionTable")};
}

// The question's argument is "LEAF:SUBLEAF" in hexadecimal.
std::optional<CpuidLeaf> Kernel::cpuid(uint32_t leaf, uint32_t subleaf) const
{
    char argument[32];
    snprintf(argument, sizeof argument, "%x:%x", leaf, subleaf);
    const nlohmann::json registers = ask("cpuid", argument);
    CpuidLeaf values{};
    if (!registers.is_array() || registers.size() != values.size())
        return std::nullopt;
    for (size_t i = 0; i < values.size(); ++i) {
        const std::optional<uint32_t> value = numberIn<uint32_t>(registers[i]);
        if (!value)
            return std::nullopt;
        values[i] = *value;
    }
    return values;
}

static std::optional<Service> parseService(const nlohmann::json& object)
{
    Service service{textOf(object, "name"),        textOf(object, "description"),   textOf(object, "activeState"),
                    textOf(object, "subState"),    textOf(object, "unitFileState"), textOf(object, "type"),
                    textOf(object, "commandLine"), textOf(object, "user")};
    return isName(service.name) ? std::optional(std::move(service)) : std::nullopt;
}

std::optional<std::vector<Service>> Kernel::services() const
{
    const nlohmann::json services = answer("services", "");
    return services.is_array() ? std::optional(listOf(services, parseService)) : std::nullopt;
}

std::optional<KeyboardRepeat> Kernel::keyboardRepeat(std::string_view node) const
{
    const nlohmann::json repeat = ask("keyboardRepeat", node);
    if (!repeat.is_object())
        return std::nullopt;
    return KeyboardRepeat{numberOf<uint32_t>(repeat, "delay"), numberOf<uint32_t>(repeat, "period")};
}

std::optional<NvmeHealth> Kernel::nvmeHealth(std::string_view node) const
{
    const nlohmann::json log = ask("nvmeHealth", node);
    if (!log.is_object())
        return std::nullopt;
    const auto number = [&log](const char* name) { return numberIn<uint64_t>(memberOf(log, name)); };
    return NvmeHealth{number("criticalWarning"), number("temperature"),      number("availableSpare"),
                      number("percentageUsed"),  number("dataUnitsWritten"), number("powerOnHours")};
}

// Seconds since 1970 UTC, 0 left out: it stands where a file system has no time.
static std::optional<int64_t> secondsOf(const nlohmann::json& answer)
{
    const std::optional<int64_t> seconds = numberIn<int64_t>(answer);
    return seconds && *seconds > 0 && *seconds <= kLastSecond ? seconds : std::nullopt;
}

std::optional<int64_t> Kernel::birthTime(std::string_view path) const
{
    return secondsOf(ask("birthTime", path));
}

std::optional<int64_t> Kernel::modificationTime(std::string_view path) const
{
    return secondsOf(ask("modificationTime", path));
}
} // namespace host
