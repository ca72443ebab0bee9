#include "report/redact/Values.h"

#include <algorithm>

#include "report/Identity.h"
#include "report/Text.h"
#include "report/Writer.h"
#include "report/catalog/AttributeIds.h"
#include "report/redact/Forms.h"

namespace report
{
namespace
{
// What names no host and no domain of its own.
constexpr std::string_view kKeptNames[] = {"localhost", "localdomain", "localhost.localdomain", "(none)", "workgroup"};

// Names that are replaced where they identify, and not searched for in other texts, where they are words like others.
constexpr std::string_view kEverydayWords[] = {
    "admin",  "boot", "computer", "data",   "debian",  "default", "desktop", "disk",    "fedora",      "guest",
    "home",   "host", "laptop",   "linux",  "machine", "none",    "nobody",  "redhat",  "root",        "router",
    "server", "suse", "system",   "ubuntu", "unknown", "user",    "users",   "windows", "workstation",
};

// Options of every file system (fs/namespace.c and mount(8)) and parameters of every kernel, which identify nothing.
constexpr std::string_view kOptions[] = {
    "ro",         "rw",    "nosuid",   "nodev",  "noexec",      "sync",     "dirsync", "noatime",
    "nodiratime", "quiet", "relatime", "splash", "strictatime", "lazytime", "discard", "remount-ro",
};

// Folders that hold others of all accounts.
constexpr std::string_view kFolders[] = {"home", "root", "var", "lib", "usr", "run", "srv", "opt", "export", "users"};

template <size_t N>
bool isAmong(std::string_view text, const std::string_view (&words)[N])
{
    return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

// Replaces every piece between separators, which stay.
template <typename Made>
std::string piecewise(std::string_view text, std::string_view separators, const Made& made)
{
    std::string result;
    while (!text.empty()) {
        const size_t end = std::min(text.find_first_of(separators), text.size());
        if (end != 0)
            result += made(text.substr(0, end), result);
        text.remove_prefix(end);
        const size_t next = std::min(text.find_first_not_of(separators), text.size());
        result += text.substr(0, next);
        text.remove_prefix(next);
    }
    return result;
}

std::string hostPseudonym(const Pseudonyms& pseudonyms, std::string_view name)
{
    if (isAmong(lower(name), kKeptNames))
        return std::string(name);
    if (const auto address = pseudonyms.address(name))
        return *address;
    return piecewise(name, ".", [&](std::string_view label, const std::string&) { return pseudonyms.word(label); });
}

std::string homePseudonym(const Pseudonyms& pseudonyms, std::string_view path)
{
    const size_t last = path.find_last_not_of('/');
    return piecewise(path, "/", [&](std::string_view part, const std::string& before) {
        const bool isLast = before.size() + part.size() > last;
        return !isLast && isAmong(part, kFolders) ? std::string(part) : pseudonyms.word(part);
    });
}

// What stands behind the scheme: hosts, queues, serial numbers. A port's number stays.
std::string uriPseudonym(const Pseudonyms& pseudonyms, const Dictionary& dictionary, std::string_view uri)
{
    constexpr size_t kLongestPort = 5;
    const size_t scheme = uri.find(':');
    const size_t begin = scheme == uri.npos ? 0 : scheme + 1;
    return std::string(uri.substr(0, begin)) +
           piecewise(uri.substr(begin), "/?&=:@[]", [&](std::string_view part, const std::string& before) {
               const bool isPort = before.ends_with(':') && part.size() <= kLongestPort && parseNumber(part);
               if (isPort)
                   return std::string(part);
               if (std::string found = dictionary.replaced(part); found != part)
                   return found;
               return part.find('.') != part.npos ? hostPseudonym(pseudonyms, part) : pseudonyms.value(part);
           });
}

// "root=UUID=... quiet": names stay, and of their values what is known is replaced as elsewhere.
std::string listPseudonym(const Pseudonyms& pseudonyms, const Dictionary& dictionary, std::string_view list)
{
    constexpr size_t kLongestNumber = 5;
    return piecewise(list, " ,\t\n\r", [&](std::string_view item, const std::string&) {
        const size_t equals = item.rfind('=');
        const size_t begin = equals == item.npos || equals + 1 == item.size() ? 0 : equals + 1;
        const std::string_view text = item.substr(begin);
        if (isAmong(text, kOptions) || (text.size() <= kLongestNumber && parseNumber(text)))
            return std::string(item);
        std::string found = dictionary.replaced(text);
        return std::string(item.substr(0, begin)) + (found != text ? found : pseudonyms.value(text));
    });
}

// "CRYPT-LUKS2-0d9f...-name", "LVM-...", "mpath-3600508...": what is long identifies.
std::string mapperPseudonym(const Pseudonyms& pseudonyms, std::string_view id)
{
    constexpr size_t kShortest = 16;
    constexpr size_t kPages[] = {17, 33}; // characters of a SCSI name with its type in front (page 0x83, NAA)
    if (!uuidDigits(id).empty())
        return pseudonyms.value(id);
    std::string result = piecewise(id, "-", [&](std::string_view piece, const std::string&) {
        if (piece.size() < kShortest)
            return std::string(piece);
        const bool hasType =
            piece[0] == '3' && std::find(std::begin(kPages), std::end(kPages), piece.size()) != std::end(kPages);
        return hasType ? "3" + pseudonyms.value(piece.substr(1)) : pseudonyms.value(piece);
    });
    return result != id ? result : pseudonyms.value(id);
}

// The host in "host:/path" and "//host/share"; empty where there is none.
std::string_view hostOfMount(std::string_view source)
{
    if (source.starts_with("//"))
        return source.substr(2, std::min(source.find('/', 2), source.size()) - 2);
    const size_t end = source.find(":/");
    return end == source.npos || source.starts_with('/') ? std::string_view() : source.substr(0, end);
}

// The account in "/home/account" and "/run/media/account".
std::string_view accountOfMount(std::string_view path)
{
    for (const std::string_view folder : {"/home/", "/run/media/"})
        if (path.starts_with(folder))
            return path.substr(folder.size(), std::min(path.find('/', folder.size()), path.size()) - folder.size());
    return {};
}

std::string mountPseudonym(const Pseudonyms& pseudonyms, const Dictionary& dictionary, std::string_view path)
{
    const std::string_view host = hostOfMount(path), account = accountOfMount(path);
    const std::string_view part = host.empty() ? account : host;
    if (part.empty())
        return dictionary.replaced(path);
    const auto begin = static_cast<size_t>(part.data() - path.data());
    return std::string(path.substr(0, begin)) +
           (host.empty() ? pseudonyms.word(account) : hostPseudonym(pseudonyms, host)) +
           dictionary.replaced(path.substr(begin + part.size()));
}

// "enxa0b339112233": the address behind the kind of link; empty of other names.
std::string_view addressInName(std::string_view name)
{
    constexpr size_t kDigits = 12, kLongestKind = 4;
    if (name.size() <= kDigits || name.size() > kDigits + kLongestKind)
        return {};
    const std::string_view kind = name.substr(0, name.size() - kDigits), digits = name.substr(kind.size());
    const bool isKind = std::all_of(kind.begin(), kind.end(), [](char c) { return c >= 'a' && c <= 'z'; });
    const bool areDigits = digits.find_first_not_of("0123456789abcdef") == digits.npos;
    return isKind && areDigits ? digits : std::string_view();
}

std::string interfacePseudonym(const Pseudonyms& pseudonyms, const Dictionary& dictionary, std::string_view name)
{
    const std::string_view digits = addressInName(name);
    const auto address = digits.empty() ? std::nullopt : pseudonyms.hardwareAddress(digits);
    return address ? std::string(name.substr(0, name.size() - digits.size())) + *address : dictionary.replaced(name);
}

// A network's address is told from a host's by its prefix length.
std::string destinationPseudonym(const Pseudonyms& pseudonyms, const Row& row, std::string_view text)
{
    const Value* length = row.find(uint32_t{ROUTE_PREFIX_LENGTH});
    const std::string network = std::string(text) + "/" + (length != nullptr ? valueText(*length) : "");
    const auto address = pseudonyms.address(network);
    return address ? address->substr(0, address->find('/')) : pseudonyms.value(text);
}

// Accounts of the system and its services: they tell what is installed, not who. Their numbers are below those of
// persons, or those that systemd gives out for a time and "nobody" has (systemd's UIDS-GIDS).
bool isSystemAccount(const Row& row)
{
    constexpr uint64_t kFirstPerson = 1000, kFirstDynamic = 61184, kLastDynamic = 65535;
    const Value* id = row.find(uint32_t{USER_ACCOUNT_INFO_USER_ID});
    const auto* number = id != nullptr ? std::get_if<uint64_t>(&id->content) : nullptr;
    return number != nullptr && (*number < kFirstPerson || (*number >= kFirstDynamic && *number <= kLastDynamic));
}
} // namespace

void IdentifyingValues::gatherText(std::string_view text, std::string_view pseudonym)
{
    if (!isAmong(lower(text), kEverydayWords) && !isAmong(lower(text), kKeptNames) && !isPlaceholder(text))
        isFull_ = !dictionary_.add(text, pseudonym) || isFull_;
}

// The forms of an address: with colons, with dashes, bare.
void IdentifyingValues::gatherHardwareAddress(std::string_view text)
{
    std::string from = lower(text), to = *pseudonyms_.hardwareAddress(from);
    const auto isSeparator = [](char c) { return c == ':' || c == '-'; };
    for (const char separator : {':', '-'}) {
        std::replace_if(from.begin(), from.end(), isSeparator, separator);
        std::replace_if(to.begin(), to.end(), isSeparator, separator);
        gatherText(from, to);
    }
    std::erase(from, '-');
    std::erase(to, '-');
    gatherText(from, to);
}

void IdentifyingValues::gatherUuid(const std::string& digits)
{
    for (const std::string& from : {digits, swappedUuidDigits(digits)}) {
        gatherText(from, *pseudonyms_.uuid(from));
        gatherText(dashedUuid(from), *pseudonyms_.uuid(dashedUuid(from)));
    }
}

// What is found of a value in other texts: all forms that its kind has.
void IdentifyingValues::gatherIdentifier(std::string_view text)
{
    const std::string_view inner = identifierIn(text);
    if (isPlaceholder(inner))
        return;
    if (const auto address = pseudonyms_.address(inner)) {
        const auto own = [](std::string_view both) { return both.substr(0, both.find('/')); };
        isFull_ = !dictionary_.addAddress(own(inner), own(*address)) || isFull_;
    } else if (pseudonyms_.hardwareAddress(inner)) {
        gatherHardwareAddress(inner);
    } else if (const std::string digits = uuidDigits(inner); !digits.empty()) {
        gatherUuid(digits);
    } else {
        gatherText(inner, pseudonyms_.word(inner));
    }
}

void IdentifyingValues::gatherHost(std::string_view name, bool isDomain)
{
    if (pseudonyms_.address(name)) {
        gatherIdentifier(name);
        return;
    }
    gatherText(name, hostPseudonym(pseudonyms_, name));
    const size_t point = name.find('.');
    if (isDomain || point == name.npos)
        return;
    gatherText(name.substr(0, point), hostPseudonym(pseudonyms_, name.substr(0, point)));
    gatherText(name.substr(point + 1), hostPseudonym(pseudonyms_, name.substr(point + 1)));
}

void IdentifyingValues::gatherIdentity(const char* basis, std::string_view text)
{
    const std::string_view value = trimmed(text);
    const bool isAsWritten = std::string_view(basis) == IDENTITY_SERIAL_NUMBER;
    const std::string pseudonym = pseudonyms_.value(value);
    machineKeys_[machineKey(basis, isAsWritten ? std::string(value) : lower(value))] =
        machineKey(basis, isAsWritten ? pseudonym : lower(pseudonym));
}

// Values whose digests are in Machine Identity.
void IdentifyingValues::gatherIdentityOf(const GroupRows& group, const Value& value, std::string_view text)
{
    struct BasisRow {
        uint32_t group, attribute;
        const char* basis;
    };
    constexpr BasisRow kBases[] = {
        {GROUP_COMPONENTID, COMPONENTID_SYSTEM_UUID, IDENTITY_SYSTEM_UUID},
        {GROUP_COMPONENTID, COMPONENTID_SERIAL_NUMBER, IDENTITY_SERIAL_NUMBER},
        {GROUP_OPERATING_SYSTEM, OPERATING_SYSTEM_MACHINE_ID, IDENTITY_MACHINE_ID},
        {GROUP_NETWORK_ADAPTER, NETWORK_ADAPTER_PERMANENT_ADDRESS, IDENTITY_MAC_ADDRESS},
    };
    for (const BasisRow& row : kBases)
        if (group.group->id == row.group && value.attribute->id == row.attribute)
            gatherIdentity(row.basis, text);
}

void IdentifyingValues::gatherMount(std::string_view path)
{
    if (const std::string_view host = hostOfMount(path); !host.empty())
        gatherHost(host, false);
    if (const std::string_view account = accountOfMount(path); !account.empty())
        gatherText(account, pseudonyms_.word(account));
}

void IdentifyingValues::gatherDestination(const Row& row, std::string_view text)
{
    const std::string pseudonym = destinationPseudonym(pseudonyms_, row, text);
    if (!pseudonyms_.address(text))
        gatherIdentifier(text);
    else if (pseudonym != text)
        isFull_ = !dictionary_.addAddress(text, pseudonym) || isFull_;
}

void IdentifyingValues::gatherValue(const GroupRows& group, const Row& row, const Value& value)
{
    const Form form = formOf(group, value);
    if (form == Form::NONE)
        return;
    const std::string& text = std::get<std::string>(value.content);
    const bool isOfPerson = form == Form::PERSON || form == Form::TEXT || form == Form::HOME;
    if (isOfPerson && (!value.attribute->isIdentifying || isSystemAccount(row)))
        return;
    switch (form) {
    case Form::VALUE:
        gatherIdentifier(text);
        return gatherIdentityOf(group, value, text);
    case Form::HOST:
    case Form::DOMAIN_NAME:
        return gatherHost(text, form == Form::DOMAIN_NAME);
    case Form::MOUNT:
        return gatherMount(text);
    case Form::INTERFACE:
        return gatherIdentifier(addressInName(text));
    case Form::DESTINATION:
        return gatherDestination(row, text);
    case Form::MACHINE_KEY:
        return seenKeys_.push_back(text);
    default: // lists and paths too, as a whole: what they are made of is gathered where it stands alone
        if (const std::string pseudonym = replacedValue(group, row, value); pseudonym != text)
            gatherText(text, pseudonym);
    }
}

std::string IdentifyingValues::host(std::string_view name) const
{
    return isPlaceholder(name) ? std::string(name) : hostPseudonym(pseudonyms_, name);
}

std::string IdentifyingValues::home(std::string_view path) const
{
    return homePseudonym(pseudonyms_, path);
}

std::string IdentifyingValues::uri(std::string_view uri) const
{
    return uriPseudonym(pseudonyms_, dictionary_, uri);
}

std::string IdentifyingValues::list(std::string_view options) const
{
    return listPseudonym(pseudonyms_, dictionary_, options);
}

bool IdentifyingValues::gather(const GroupRows& group, const Row& row)
{
    for (const Value& value : row.values)
        gatherValue(group, row, value);
    return !isFull_ && seenKeys_.size() <= Dictionary::kMostPatterns;
}

// Keys come before or behind the values that they are made of.
void IdentifyingValues::finish()
{
    for (const std::string& key : seenKeys_)
        gatherText(key, machineKeyPseudonym(key));
    seenKeys_.clear();
    dictionary_.finish();
}

std::string IdentifyingValues::machineKeyPseudonym(const std::string& key) const
{
    const auto found = machineKeys_.find(key);
    return found != machineKeys_.end() ? found->second : pseudonyms_.word(key);
}

std::string IdentifyingValues::replacedValue(const GroupRows& group, const Row& row, const Value& value) const
{
    const std::string& text = std::get<std::string>(value.content);
    switch (formOf(group, value)) {
    case Form::VALUE:
        return pseudonyms_.value(text);
    case Form::HOST:
    case Form::DOMAIN_NAME:
        return host(text);
    case Form::PERSON:
    case Form::TEXT:
        return pseudonyms_.word(text);
    case Form::HOME:
        return home(text);
    case Form::LIST:
        return list(text);
    case Form::URI:
        return uriPseudonym(pseudonyms_, dictionary_, text);
    case Form::MAPPER_ID:
        return dictionary_.replaced(mapperPseudonym(pseudonyms_, text));
    case Form::MOUNT:
        return mountPseudonym(pseudonyms_, dictionary_, text);
    case Form::INTERFACE:
        return interfacePseudonym(pseudonyms_, dictionary_, text);
    case Form::DESTINATION:
        return destinationPseudonym(pseudonyms_, row, text);
    case Form::MACHINE_KEY:
        return machineKeyPseudonym(text);
    default:
        return dictionary_.replaced(text);
    }
}

void IdentifyingValues::replace(const GroupRows& group, Row& row) const
{
    const Row original = row;
    for (size_t i = 0; i < row.values.size(); ++i) {
        Value& value = row.values[i];
        const bool isOneOfList = value.attribute != nullptr && value.attribute->words != nullptr;
        if (std::holds_alternative<std::string>(value.content) && !isOneOfList)
            value.content = replacedValue(group, original, original.values[i]);
        if (!value.source.empty())
            value.source = dictionary_.replaced(value.source);
    }
}
} // namespace report
