// ioctl on device nodes and sockets, and mappings of physical memory.

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>

#include "preload/Calls.h"
#include "preload/Export.h"
#include "preload/OpenNodes.h"

using namespace fakemachine;

static const char* nameOfRequest(unsigned long request)
{
    switch (request) {
    case SIOCGIFCONF:
        return "SIOCGIFCONF";
    case SIOCGIFADDR:
        return "SIOCGIFADDR";
    case SIOCGIFHWADDR:
        return "SIOCGIFHWADDR";
    case SIOCGIFNETMASK:
        return "SIOCGIFNETMASK";
    default:
        return "ioctl";
    }
}

static sockaddr internetAddress(uint32_t address)
{
    sockaddr_in internet{};
    internet.sin_family = AF_INET;
    internet.sin_addr.s_addr = address;
    sockaddr generic;
    memcpy(&generic, &internet, sizeof generic);
    return generic;
}

// As many whole records as the caller's buffer holds.
static int listInterfaces(const std::vector<Interface>& interfaces, ifconf* list)
{
    const size_t room = list->ifc_len < 0 ? 0 : static_cast<size_t>(list->ifc_len) / sizeof(ifreq);
    const size_t count = list->ifc_req == nullptr ? interfaces.size() : std::min(room, interfaces.size());
    for (size_t i = 0; i < count && list->ifc_req != nullptr; ++i) {
        ifreq record{};
        strncpy(record.ifr_name, interfaces[i].name.c_str(), IFNAMSIZ - 1);
        record.ifr_addr = internetAddress(interfaces[i].address.value_or(0));
        list->ifc_req[i] = record;
    }
    list->ifc_len = static_cast<int>(count * sizeof(ifreq));
    return 0;
}

static const Interface* findInterface(const std::vector<Interface>& interfaces, const ifreq& request)
{
    const std::string name(request.ifr_name, strnlen(request.ifr_name, IFNAMSIZ));
    for (const Interface& interface : interfaces)
        if (interface.name == name)
            return &interface;
    return nullptr;
}

static int controlSocket(unsigned long request, void* argument)
{
    const MachineConf& conf = Machine::instance().conf();
    if (const int error = conf.errorOf(nameOfRequest(request), "*"); error != 0)
        return fails(error);
    if (request == SIOCGIFCONF)
        return listInterfaces(conf.interfaces, static_cast<ifconf*>(argument));
    ifreq& record = *static_cast<ifreq*>(argument);
    const Interface* interface = findInterface(conf.interfaces, record);
    if (interface == nullptr)
        return fails(ENODEV);
    if (request == SIOCGIFHWADDR) {
        if (!interface->hardware)
            return fails(EADDRNOTAVAIL);
        record.ifr_hwaddr = {};
        record.ifr_hwaddr.sa_family = interface->hardwareType;
        memcpy(record.ifr_hwaddr.sa_data, interface->hardware->data(), interface->hardware->size());
        return 0;
    }
    if (request != SIOCGIFADDR && request != SIOCGIFNETMASK)
        return fails(EINVAL);
    const std::optional<uint32_t>& address = request == SIOCGIFADDR ? interface->address : interface->mask;
    if (!address)
        return fails(EADDRNOTAVAIL);
    record.ifr_addr = internetAddress(*address);
    return 0;
}

FAKE(int, ioctl, int descriptor, unsigned long request, ...)
{
    static auto* const real = realFunction<int(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    Call call(nameOfRequest(request), std::to_string(request & UINT32_MAX));
    if (call.fails())
        return -1;
    OpenNode* const node = nodeOf(descriptor);
    if (node == nullptr)
        return real(descriptor, request, argument);
    switch (node->kind) {
    case OpenNode::Kind::Device:
        return node->device->control(static_cast<uint32_t>(request), argument);
    case OpenNode::Kind::Socket:
        return controlSocket(request, argument);
    default:
        return fails(ENOTTY);
    }
}

FAKE_ALIAS(int, __ioctl_time64, ioctl, int, unsigned long, ...)

FAKE(int, socket, int family, int type, int protocol)
{
    static auto* const real = realFunction<int(int, int, int)>("socket");
    Call call("socket", std::to_string(family));
    if (call.fails())
        return -1;
    if (family == AF_UNIX)
        return real(family, type, protocol);
    const MachineConf& conf = Machine::instance().conf();
    if (const int error = conf.errorOf("socket", "*"); error != 0)
        return fails(error);
    return family == AF_INET && conf.network ? openSocketNode() : fails(EAFNOSUPPORT);
}

static constexpr uint64_t kPage = 4096; // of the processor family; machine.conf changes what is reported only

// A private copy of whole pages: it has the bytes of the machine and, beyond its end, none to fault on.
static void* mapMemory(size_t wanted, int protection, int64_t offset)
{
    static auto* const real = realFunction<void*(void*, size_t, int, int, int, off64_t)>("mmap64");
    static auto* const realUnmap = realFunction<int(void*, size_t)>("munmap");
    Machine& machine = Machine::instance();
    const uint64_t start = static_cast<uint64_t>(offset);
    const size_t length = (wanted + kPage - 1) / kPage * kPage;
    const uint64_t end = (machine.memory().size() + kPage - 1) / kPage * kPage;
    const int error = machine.conf().errorOf("mmap", "/dev/mem");
    if (error != 0 || start % kPage != 0 || length == 0 || start > end || length > end - start) {
        errno = error != 0 ? error : EINVAL;
        return MAP_FAILED;
    }
    void* const copy = real(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (copy == MAP_FAILED)
        return copy;
    machine.memory().read(start, copy, length);
    if (mprotect(copy, length, protection) != 0) {
        realUnmap(copy, length);
        return MAP_FAILED;
    }
    return copy;
}

FAKE(void*, mmap64, void* hint, size_t length, int protection, int flags, int descriptor, off64_t offset)
{
    static auto* const real = realFunction<void*(void*, size_t, int, int, int, off64_t)>("mmap64");
    Call call("mmap");
    if (call.fails())
        return MAP_FAILED;
    OpenNode* const node = nodeOf(descriptor);
    if (node == nullptr)
        return real(hint, length, protection, flags, descriptor, offset);
    if (node->kind == OpenNode::Kind::Memory)
        return mapMemory(length, protection, offset);
    errno = ENODEV;
    return MAP_FAILED;
}

FAKE(void*, mmap, void* hint, size_t length, int protection, int flags, int descriptor, off_t offset)
{
    return fake_mmap64(hint, length, protection, flags, descriptor, offset);
}

FAKE(int, munmap, void* start, size_t length)
{
    static auto* const real = realFunction<int(void*, size_t)>("munmap");
    Call call("munmap");
    const int result = real(start, length);
    return call.fails() ? -1 : result;
}
