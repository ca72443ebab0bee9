#include "host/kernel/Dump.h"

#include <cerrno>
#include <cstring>
#include <linux/if_link.h>
#include <memory>
#include <sys/socket.h>
#include <sys/time.h>
#include <vector>

namespace host
{
static constexpr size_t kBufferSize = size_t{64} * 1024; // the kernel fills as much of it as it can
static constexpr size_t kMostBytes = size_t{64} * 1024 * 1024;
static constexpr size_t kMostMessages = 65536;
static constexpr int kMostTries = 5;
static constexpr time_t kMostSeconds = 2; // without an answer

int Attributes::store(const nlattr* attribute, void* attributes)
{
    auto& found = static_cast<Attributes*>(attributes)->found_;
    const uint16_t type = mnl_attr_get_type(attribute);
    if (type < found.size())
        found[type] = attribute;
    return MNL_CB_OK;
}

Attributes::Attributes(const nlmsghdr& message, size_t headerSize)
{
    mnl_attr_parse(&message, static_cast<unsigned>(headerSize), store, this);
}

Attributes::Attributes(const nlattr* nest)
{
    if (nest != nullptr)
        mnl_attr_parse_nested(nest, store, this);
}

Attributes::Attributes(std::string_view bytes)
{
    mnl_attr_parse_payload(bytes.data(), bytes.size(), store, this);
}

std::string_view Attributes::bytes(uint16_t type) const
{
    const nlattr* attribute = find(type);
    if (attribute == nullptr)
        return {};
    return {static_cast<const char*>(mnl_attr_get_payload(attribute)), mnl_attr_get_payload_len(attribute)};
}

std::string Attributes::text(uint16_t type) const
{
    const std::string_view text = bytes(type);
    return std::string(text.substr(0, text.find('\0')));
}

std::optional<uint32_t> Attributes::number(uint16_t type) const
{
    const std::string_view four = bytes(type);
    uint32_t number = 0;
    if (four.size() != sizeof number)
        return std::nullopt;
    memcpy(&number, four.data(), sizeof number);
    return number;
}

std::optional<uint8_t> Attributes::byte(uint16_t type) const
{
    const std::string_view one = bytes(type);
    return one.size() == 1 ? std::optional(static_cast<uint8_t>(one.front())) : std::nullopt;
}

namespace
{
enum class DumpEnd { Whole, Changed, Failed };

// One question and all messages that answer it.
class Dump
{
public:
    Dump(NetlinkPeer& peer, const TakeMessage& take) : peer_(peer), take_(take) {}

    DumpEnd run(uint16_t question, uint32_t sequence);

private:
    bool send(uint16_t question, uint32_t sequence) const;
    bool takeAll(const nlmsghdr* message, int size, uint32_t sequence);

    NetlinkPeer& peer_;
    const TakeMessage& take_;
    size_t messages_ = 0;
    bool hasChanged_ = false;
    bool isDone_ = false;
};

bool Dump::send(uint16_t question, uint32_t sequence) const
{
    alignas(nlmsghdr) char buffer[256]{};
    nlmsghdr* const message = mnl_nlmsg_put_header(buffer);
    message->nlmsg_type = question;
    message->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    message->nlmsg_seq = sequence;
    // All families: the headers of addresses and routes begin with theirs, as this one does, and may end behind it.
    if (question == RTM_GETLINK) {
        mnl_nlmsg_put_extra_header(message, sizeof(ifinfomsg));
        mnl_attr_put_u32(message, IFLA_EXT_MASK, RTEXT_FILTER_SKIP_STATS);
    } else
        mnl_nlmsg_put_extra_header(message, sizeof(rtgenmsg));
    return peer_.send(*message);
}

// libmnl takes a length as a signed number, and one that is negative then for a short one.
static bool isWhole(const nlmsghdr* message, int size)
{
    return mnl_nlmsg_ok(message, size) && message->nlmsg_len <= static_cast<uint32_t>(size);
}

// Returns false when the kernel says that it cannot answer.
bool Dump::takeAll(const nlmsghdr* message, int size, uint32_t sequence)
{
    for (; isWhole(message, size) && !isDone_; message = mnl_nlmsg_next(message, &size)) {
        if (message->nlmsg_seq != sequence)
            continue;
        hasChanged_ = hasChanged_ || (message->nlmsg_flags & NLM_F_DUMP_INTR) != 0;
        if (message->nlmsg_type == NLMSG_ERROR) {
            const nlmsgerr* error = headerOf<nlmsgerr>(*message);
            errno = error != nullptr && error->error < 0 ? -error->error : EIO;
            return false;
        }
        isDone_ = message->nlmsg_type == NLMSG_DONE || ++messages_ > kMostMessages;
        if (!isDone_ && message->nlmsg_type >= NLMSG_MIN_TYPE)
            take_(*message);
    }
    return true;
}

DumpEnd Dump::run(uint16_t question, uint32_t sequence)
{
    if (!send(question, sequence))
        return DumpEnd::Failed;
    const auto buffer = std::make_unique<uint64_t[]>(kBufferSize / sizeof(uint64_t)); // aligned for headers
    size_t bytes = 0;
    while (!isDone_ && bytes < kMostBytes) {
        const ssize_t got = peer_.receive(buffer.get(), kBufferSize);
        if (got < 0 && errno == EINTR)
            continue;
        if (got == 0)
            errno = EIO;
        if (got <= 0)
            return DumpEnd::Failed;
        bytes += static_cast<size_t>(got);
        if (!takeAll(reinterpret_cast<const nlmsghdr*>(buffer.get()), static_cast<int>(got), sequence))
            return DumpEnd::Failed;
    }
    return hasChanged_ ? DumpEnd::Changed : DumpEnd::Whole;
}

class LivePeer final : public NetlinkPeer
{
public:
    LivePeer() : socket_(mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC), mnl_socket_close)
    {
        const timeval patience{kMostSeconds, 0};
        if (socket_ != nullptr)
            setsockopt(mnl_socket_get_fd(socket_.get()), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }
    bool send(const nlmsghdr& message) override
    {
        return socket_ != nullptr && mnl_socket_sendto(socket_.get(), &message, message.nlmsg_len) >= 0;
    }
    ssize_t receive(void* buffer, size_t size) override { return mnl_socket_recvfrom(socket_.get(), buffer, size); }

private:
    std::unique_ptr<mnl_socket, int (*)(mnl_socket*)> socket_;
};
} // namespace

bool dump(NetlinkPeer& peer, uint16_t question, const std::function<void()>& restart, const TakeMessage& take)
{
    for (uint32_t sequence = 1; sequence <= kMostTries; ++sequence) {
        restart();
        const DumpEnd end = Dump(peer, take).run(question, sequence);
        if (end != DumpEnd::Changed)
            return end == DumpEnd::Whole;
    }
    return true;
}

bool dump(uint16_t question, const std::function<void()>& restart, const TakeMessage& take)
{
    LivePeer kernel;
    return dump(kernel, question, restart, take);
}
} // namespace host
