#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <libmnl/libmnl.h>
#include <linux/rtnetlink.h>

namespace host
{
/// The attributes of a netlink message, each at most once (the last one counts), every length checked.
class Attributes
{
public:
    /// Of a message behind a header of so many bytes.
    Attributes(const nlmsghdr& message, size_t headerSize);
    /// Of an attribute that holds others, or of bytes.
    explicit Attributes(const nlattr* nest);
    explicit Attributes(std::string_view bytes);

    const nlattr* find(uint16_t type) const { return type < found_.size() ? found_[type] : nullptr; }
    std::string_view bytes(uint16_t type) const;
    /// Without the zero byte at its end.
    std::string text(uint16_t type) const;
    std::optional<uint32_t> number(uint16_t type) const;
    std::optional<uint8_t> byte(uint16_t type) const;

private:
    static int store(const nlattr* attribute, void* attributes);

    std::array<const nlattr*, 96> found_{};
};

/// Whom a question goes to.
class NetlinkPeer
{
public:
    virtual ~NetlinkPeer() = default;
    virtual bool send(const nlmsghdr& message) = 0;
    /// Bytes of whole messages; -1 with errno.
    virtual ssize_t receive(void* buffer, size_t size) = 0;
};

using TakeMessage = std::function<void(const nlmsghdr&)>;

/// Asks for all links, addresses or routes (RTM_GET...), and again when they changed meanwhile. restart is called
/// before each time, take with every message. Bounded in bytes, messages and times.
/// Returns false, with errno, when the kernel did not answer to the end.
bool dump(NetlinkPeer& peer, uint16_t question, const std::function<void()>& restart, const TakeMessage& take);

/// The same of the live kernel, which is not waited for longer than two seconds.
bool dump(uint16_t question, const std::function<void()>& restart, const TakeMessage& take);

/// The header behind a message's own, null when the message is too short for it.
template <class Header>
const Header* headerOf(const nlmsghdr& message)
{
    return mnl_nlmsg_get_payload_len(&message) >= sizeof(Header)
               ? static_cast<const Header*>(mnl_nlmsg_get_payload(&message))
               : nullptr;
}
} // namespace host
