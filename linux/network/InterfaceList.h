#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <net/if.h>

// The kernel's list of configured IPv4 interfaces and the questions it answers about each of them.

/// An IPv4 socket for interface requests, closed with its scope.
class InterfaceSocket
{
public:
    /// type is SOCK_DGRAM or SOCK_STREAM; the requests work on either.
    explicit InterfaceSocket(int type);
    InterfaceSocket(const InterfaceSocket&) = delete;
    InterfaceSocket& operator=(const InterfaceSocket&) = delete;
    ~InterfaceSocket();

    bool isOpen() const { return descriptor_ >= 0; }

    /// The configured interfaces, one record an address, as many as a 32-bit platform's buffer of bufferSize bytes
    /// holds; the rest of the list is cut. Empty when the kernel does not answer or there is none. Logs the list's
    /// size.
    std::vector<ifreq> list(size_t bufferSize) const;

    /// Asks the kernel about the interface that *request names; the answer comes back in *request.
    bool ask(unsigned long code, ifreq* request) const;

private:
    int descriptor_;
};

/// A request about the interface that entry names.
ifreq requestFor(const ifreq& entry);

/// A hardware address as text, "00:0D:60:8A:01:F2", with its terminator.
using MacText = char[6 * 3];
/// Formats the first six bytes of the hardware address that the kernel has written into answer.
void formatMac(const ifreq& answer, MacText& text);

/// Asks for the hardware address of the interface that entry names and logs the answer, or failed when there is none,
/// under the category. False, and text left alone, when there is none.
bool readMac(const InterfaceSocket& socket, const ifreq& entry, uint32_t category, const char* failed, MacText& text);
