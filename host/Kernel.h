#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

// What no file of a machine tells. Every question is a name and an argument, its answer JSON: live answers come from
// system calls, recorded ones from invhw-kernel.json at the top of a recording. The functions here turn answers into
// values and trust none of them: an answer of another form is an absent one.

namespace host
{
class Notes;

/// A network link (rtnetlink RTM_NEWLINK).
struct Link {
    uint32_t index = 0;
    std::string name;
    uint16_t hardwareType = 0; // ARPHRD_*
    uint32_t flags = 0;        // IFF_*
    uint32_t mtu = 0;
    std::string kind;             // IFLA_INFO_KIND: "bridge", "bond", "vlan" ...; empty for a device of its own
    std::string address;          // lower-case hexadecimal pairs with colons; empty without
    std::string permanentAddress; // IFLA_PERM_ADDRESS
    uint32_t master = 0;          // index of the bridge or bond above it, or 0
    uint32_t parent = 0;          // IFLA_LINK: index of the link that it stands on, or 0
    std::string operationalState; // "up", "down", "unknown", "dormant", "lower layer down", "testing", "not present"
};

/// An address of a link (RTM_NEWADDR).
struct Address {
    uint32_t link = 0; // index
    bool isIPv6 = false;
    std::string address; // as inet_ntop writes it
    uint8_t prefixLength = 0;
    uint8_t scope = 0;        // RT_SCOPE_*
    bool isPermanent = false; // IFA_F_PERMANENT: set by hand, not leased or learnt
};

/// A route (RTM_NEWROUTE); of a route with several next hops one each.
struct Route {
    uint32_t table = 0;
    bool isIPv6 = false;
    std::string destination; // "0.0.0.0" or "::" with prefix length 0: the default route
    uint8_t prefixLength = 0;
    std::string gateway; // empty when the destination is on the link
    uint32_t link = 0;   // index of the outgoing link, or 0
    uint32_t metric = 0;
    uint8_t type = 0;   // RTN_*
    uint8_t scope = 0;  // RT_SCOPE_*
    uint32_t flags = 0; // RTM_F_*
};

/// What a link's driver tells (ETHTOOL_GDRVINFO and ETHTOOL_GLINKSETTINGS).
struct LinkDriver {
    std::string driver;
    std::string firmwareVersion;
    std::string busAddress;
    std::optional<uint8_t> port; // PORT_*
};

/// Sizes of a mounted file system (statvfs): bytes and inodes.
struct FileSystemSize {
    uint64_t totalBytes = 0;
    uint64_t freeBytes = 0;      // also those that only root may fill
    uint64_t availableBytes = 0; // those that any user may fill
    uint64_t inodes = 0;
    uint64_t freeInodes = 0;
};

/// What stands on a block device (libblkid, by descriptor); empty where nothing was found.
struct BlockContent {
    std::string type; // "ext4", "crypto_LUKS" ...
    std::string label;
    std::string uuid;
    std::string partitionTable; // "gpt", "dos"
};

/// A service that the service manager has loaded (systemd's Manager and Service objects).
struct Service {
    std::string name; // "ssh.service"
    std::string description;
    std::string activeState, subState; // "active", "running"
    std::string unitFileState;         // "enabled"; empty for one without a file
    std::string type;                  // "notify"
    std::string commandLine;           // the first command's; secrets are hidden
    std::string user;                  // empty: root
};

/// How a key of a keyboard repeats (EVIOCGREP), in milliseconds.
struct KeyboardRepeat {
    uint32_t delay = 0;  // before it repeats
    uint32_t period = 0; // from one time to the next
};

/// What an NVMe controller tells of its health (NVM Express Base Specification 2.0, 5.16.1.3).
struct NvmeHealth {
    std::optional<uint64_t> criticalWarning;  // bits; 0 is well
    std::optional<uint64_t> kelvin;           // composite temperature
    std::optional<uint64_t> availableSpare;   // percent
    std::optional<uint64_t> percentageUsed;   // more than 100 when it outlives what it was made for
    std::optional<uint64_t> dataUnitsWritten; // of 512,000 bytes
    std::optional<uint64_t> powerOnHours;
};

/// Names of the running kernel (uname).
struct KernelNames {
    std::string system, node, release, version, machine;
};

/// Registers EAX, EBX, ECX, EDX of a CPUID leaf.
using CpuidLeaf = std::array<uint32_t, 4>;

class Kernel
{
public:
    /// What is refused, or fails, is noted, unless notes is null; they outlive the kernel.
    explicit Kernel(Notes* notes) : notes_(notes) {}
    virtual ~Kernel() = default;

    /// True when a recording answers: nothing of the live machine may be told.
    virtual bool isRecording() const = 0;

    /// True when asking a network file system for its size may never be answered. Such a question belongs into a
    /// process of its own, which tells what came of it through keepFileSystemSize().
    virtual bool mayHang(std::string_view /*mountPoint*/) const { return !isRecording(); }
    virtual void keepFileSystemSize(std::string_view /*mountPoint*/,
                                    const std::optional<FileSystemSize>& /*size*/) const
    {
    }

    /// Seconds since 1970 UTC: now, or the recording's time; 0 when a copy of a machine does not tell it.
    int64_t clock() const;
    /// The effective user of the scan; kNoUser when a copy of a machine does not tell it.
    uint32_t userId() const;
    static constexpr uint32_t kNoUser = UINT32_MAX;
    /// Bytes of a page; 0 when a copy of a machine does not tell it.
    uint32_t pageSize() const;
    KernelNames names() const;
    std::vector<Link> links() const;
    std::vector<Address> addresses() const;
    std::vector<Route> routes() const;
    std::optional<LinkDriver> linkDriver(std::string_view link) const;
    /// Asks the file system mounted at a path; a network file system may never answer.
    std::optional<FileSystemSize> fileSystemSize(std::string_view mountPoint) const;
    /// True when a recording tells that this file system did not answer in time.
    bool isSilent(std::string_view mountPoint) const;
    std::optional<BlockContent> blockContent(std::string_view device) const;
    /// Absent on processors without CPUID and for leaves that they do not have.
    std::optional<CpuidLeaf> cpuid(uint32_t leaf, uint32_t subleaf) const;
    /// What the running service manager has loaded; absent where none answers.
    std::optional<std::vector<Service>> services() const;
    /// Asks the controller of a node ("/dev/nvme0"), which root alone may; it may take as long as the kernel waits for
    /// it.
    std::optional<NvmeHealth> nvmeHealth(std::string_view node) const;
    /// Asks a keyboard's node in /dev/input.
    std::optional<KeyboardRepeat> keyboardRepeat(std::string_view node) const;
    /// When a file was made (statx), seconds since 1970 UTC.
    std::optional<int64_t> birthTime(std::string_view path) const;
    /// When a file was last written (statx), seconds since 1970 UTC.
    std::optional<int64_t> modificationTime(std::string_view path) const;

protected:
    friend class RecordingKernel; // asks another kernel on its own behalf

    /// The answer to a question, null when there is none. argument is empty for questions without one. Of a call that
    /// failed: {"error": "EACCES", "call": "statvfs"}.
    virtual nlohmann::json answer(std::string_view question, std::string_view argument) const = 0;

private:
    nlohmann::json ask(std::string_view question, std::string_view argument) const;

    Notes* notes_;
};
} // namespace host
