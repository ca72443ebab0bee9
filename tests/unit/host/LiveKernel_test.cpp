#include "host/LiveKernel.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <linux/rtnetlink.h>
#include <sched.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include "host/kernel/BlockContent.h"
#include "tests/unit/Capture.h"
#include "tests/unit/host/Tree.h"

using namespace host;

static bool run(const std::string& command)
{
    return system((command + " 2>/dev/null").c_str()) == 0;
}

static std::string outputOf(const std::string& command)
{
    std::string output;
    FILE* const pipe = popen((command + " 2>/dev/null").c_str(), "r");
    char piece[4096];
    for (size_t size; (size = fread(piece, 1, sizeof piece, pipe)) > 0;)
        output.append(piece, size);
    pclose(pipe);
    return output;
}

// A network of its own with two links that stand on each other.
static bool enterNewNetwork()
{
    return unshare(CLONE_NEWNET) == 0 && run("ip link set lo up && ip link add d0 type veth peer name d1 && "
                                             "ip link set d0 up && ip link set d1 up");
}

// Whoever has no root's rights, or a kernel without such links, cannot have one.
class LiveNetwork : public testing::Test
{
protected:
    void SetUp() override
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(enterNewNetwork() ? 0 : 1);
        int status = 1;
        waitpid(child, &status, 0);
        if (status != 0)
            GTEST_SKIP() << "no network can be made";
    }
};

static const Link* findLink(const std::vector<Link>& links, const std::string& name)
{
    const auto found = std::find_if(links.begin(), links.end(), [&](const Link& link) { return link.name == name; });
    return found != links.end() ? &*found : nullptr;
}

TEST(LiveKernel, tellsOfItself)
{
    const LiveKernel kernel;
    EXPECT_FALSE(kernel.isRecording());
    EXPECT_NEAR(static_cast<double>(kernel.clock()), static_cast<double>(time(nullptr)), 2);
    EXPECT_EQ(kernel.userId(), geteuid());
    EXPECT_EQ(kernel.pageSize(), sysconf(_SC_PAGESIZE));
    utsname names;
    ASSERT_EQ(uname(&names), 0);
    EXPECT_EQ(kernel.names().release, names.release);
    EXPECT_EQ(kernel.names().node, names.nodename);
    EXPECT_EQ(kernel.names().machine, names.machine);
    EXPECT_EQ(kernel.names().version, names.version);
    EXPECT_EQ(kernel.names().system, names.sysname);
}

TEST(LiveKernel, filesAndFileSystems)
{
    const LiveKernel kernel;
    Tree tree;
    tree.file("/new", "");
    struct statvfs size;
    ASSERT_EQ(statvfs("/", &size), 0);
    const std::optional<FileSystemSize> root = kernel.fileSystemSize("/");
    ASSERT_TRUE(root);
    EXPECT_EQ(root->totalBytes, size.f_frsize * size.f_blocks);
    EXPECT_GT(root->totalBytes, root->freeBytes);
    EXPECT_EQ(root->inodes, size.f_files);
    EXPECT_FALSE(kernel.fileSystemSize(tree.at("/none")));
    EXPECT_FALSE(kernel.birthTime(tree.at("/none")));
    const std::optional<int64_t> birth = kernel.birthTime(tree.at("/new"));
    EXPECT_NEAR(static_cast<double>(birth.value_or(time(nullptr))), static_cast<double>(time(nullptr)), 60);
    EXPECT_FALSE(kernel.modificationTime(tree.at("/none")));
    const timespec then[2] = {{1600000000, 0}, {1600000001, 5}};
    ASSERT_EQ(utimensat(AT_FDCWD, tree.at("/new").c_str(), then, 0), 0);
    EXPECT_EQ(kernel.modificationTime(tree.at("/new")), 1600000001);
}

TEST(LiveKernel, cpuidIsTheProcessors)
{
    const LiveKernel kernel;
    std::ifstream cpuinfo("/proc/cpuinfo");
    const std::string text((std::istreambuf_iterator<char>(cpuinfo)), {});
    const size_t line = text.find("vendor_id");
    const std::optional<CpuidLeaf> leaf = kernel.cpuid(0, 0);
    if (line == std::string::npos) {
        EXPECT_FALSE(leaf);
        GTEST_SKIP() << "no x86 processor";
    }
    ASSERT_TRUE(leaf);
    std::string vendor;
    for (const size_t number : {1U, 3U, 2U})
        vendor.append(reinterpret_cast<const char*>(&(*leaf)[number]), 4);
    EXPECT_NE(text.substr(line, 60).find(": " + vendor + "\n"), std::string::npos) << vendor;
    EXPECT_FALSE(kernel.cpuid((*leaf)[0] + 1, 0));
    EXPECT_TRUE(kernel.cpuid(0x80000000, 0));
    EXPECT_FALSE(kernel.cpuid(0x8FFFFFFF, 0));
    const bool isVirtual = text.find(" hypervisor") != std::string::npos;
    EXPECT_EQ(kernel.cpuid(0x40000000, 0).has_value(), isVirtual);
    EXPECT_FALSE(kernel.cpuid(0x400000FF, 0));
}

TEST_F(LiveNetwork, linksOfEveryKind)
{
    inChild([] {
        ASSERT_TRUE(enterNewNetwork());
        const LiveKernel kernel;
        ASSERT_TRUE(run("ip link set d0 address 52:54:00:00:00:01 mtu 9000 && ip link add br0 type bridge && "
                        "ip link set d0 master br0"));
        const std::vector<Link> links = kernel.links();
        const nlohmann::json expected = nlohmann::json::parse(outputOf("ip -j -d link"));
        ASSERT_EQ(links.size(), expected.size());
        for (const nlohmann::json& one : expected) {
            const Link* link = findLink(links, one["ifname"]);
            ASSERT_TRUE(link);
            EXPECT_EQ(link->index, one["ifindex"]);
            EXPECT_EQ(link->mtu, one["mtu"]);
            EXPECT_EQ(link->address, one.value("address", ""));
            EXPECT_EQ(link->kind, one.contains("linkinfo") ? one["linkinfo"].value("info_kind", "") : "");
            std::string state = link->operationalState;
            std::transform(state.begin(), state.end(), state.begin(), toupper);
            std::erase(state, ' ');
            EXPECT_EQ(state, one["operstate"]) << link->name;
        }
        EXPECT_EQ(findLink(links, "d0")->master, findLink(links, "br0")->index);
        EXPECT_EQ(findLink(links, "d0")->mtu, 9000u);
        EXPECT_EQ(findLink(links, "d0")->hardwareType, 1);
        EXPECT_EQ(findLink(links, "lo")->hardwareType, 772);
        EXPECT_EQ(findLink(links, "d0")->parent, findLink(links, "d1")->index);
        EXPECT_EQ(kernel.linkDriver("br0")->driver, "bridge");
        EXPECT_FALSE(kernel.linkDriver("none"));
        EXPECT_FALSE(kernel.linkDriver("a-name-that-is-longer-than-any"));
    });
}

TEST_F(LiveNetwork, addressesAndRoutes)
{
    inChild([] {
        ASSERT_TRUE(enterNewNetwork());
        ASSERT_TRUE(
            run("ip addr add 192.0.2.20/24 dev d0 && ip addr add 192.0.2.21/24 dev d0 && "
                "ip addr add 198.51.100.1 peer 198.51.100.2/32 dev d0 && ip addr add 192.0.2.99/24 dev d0 "
                "valid_lft 1000 preferred_lft 500 && ip -6 addr add 2001:db8::20/64 dev d0 nodad && "
                "ip route add default via 192.0.2.1 metric 7 && ip -6 route add 2001:db8:6::/48 via 2001:db8::1 && "
                "ip route add 203.0.113.0/24 nexthop via 192.0.2.2 nexthop via 192.0.2.3 weight 2 && "
                "ip route add table 100 unreachable 203.0.114.0/24"));
        run("ip route add 203.0.115.0/24 via inet6 2001:db8::7 dev d0");
        const LiveKernel kernel;
        const uint32_t index = findLink(kernel.links(), "d0")->index;
        std::vector<std::string> addresses;
        for (const Address& address : kernel.addresses())
            if (address.link == index && !address.address.starts_with("fe80"))
                addresses.push_back(address.address + "/" + std::to_string(address.prefixLength) +
                                    (address.isPermanent ? "" : " leased"));
        std::sort(addresses.begin(), addresses.end());
        EXPECT_EQ(addresses, (std::vector<std::string>{"192.0.2.20/24", "192.0.2.21/24", "192.0.2.99/24 leased",
                                                       "198.51.100.1/32", "2001:db8::20/64"}));
        std::vector<std::string> routes;
        for (const Route& route : kernel.routes())
            if (route.type != RTN_LOCAL && route.type != RTN_BROADCAST && !route.gateway.empty())
                routes.push_back(route.destination + "/" + std::to_string(route.prefixLength) + " " + route.gateway +
                                 (route.link == index ? "" : " elsewhere") + " " + std::to_string(route.metric));
        std::sort(routes.begin(), routes.end());
        const bool hasVia = routes.size() == 5;
        std::vector<std::string> expected{"0.0.0.0/0 192.0.2.1 7", "2001:db8:6::/48 2001:db8::1 1024",
                                          "203.0.113.0/24 192.0.2.2 0", "203.0.113.0/24 192.0.2.3 0"};
        if (hasVia)
            expected.push_back("203.0.115.0/24 2001:db8::7 0");
        EXPECT_EQ(routes, expected);
        const std::vector<Route> all = kernel.routes();
        EXPECT_TRUE(std::any_of(all.begin(), all.end(), [](const Route& route) {
            return route.table == 100 && route.type == RTN_UNREACHABLE && route.destination == "203.0.114.0";
        }));
    });
}

TEST(LiveKernel, whatStandsOnABlockDevice)
{
    Tree tree;
    tree.sparse("/ext4", 8 * 1024 * 1024);
    tree.file("/zeros", std::string(1024 * 1024, '\0'));
    const int zeros = open(tree.at("/zeros").c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(probeBlockContent(zeros), nlohmann::json::object());
    close(zeros);
    EXPECT_EQ(probeBlockContent(-1), nullptr);
    EXPECT_FALSE(LiveKernel().blockContent(tree.at("/ext4"))); // no device
    EXPECT_FALSE(LiveKernel().blockContent("/dev/null"));
    EXPECT_FALSE(LiveKernel().blockContent(tree.at("/none")));
    if (!run("PATH=$PATH:/usr/sbin:/sbin mkfs.ext4 -q -F -L invhw -U 11111111-2222-3333-4444-555555555555 " +
             tree.at("/ext4")))
        GTEST_SKIP() << "no mkfs.ext4";
    const int image = open(tree.at("/ext4").c_str(), O_RDONLY | O_CLOEXEC);
    const nlohmann::json content = probeBlockContent(image);
    close(image);
    EXPECT_EQ(content, nlohmann::json::parse(
                           R"({"type": "ext4", "label": "invhw", "uuid": "11111111-2222-3333-4444-555555555555"})"));
}

TEST(LiveKernel, theRootsDeviceIsAsTheLibrarysOwnProgramSays)
{
    const std::string device = outputOf("findmnt -no SOURCE / | head -1 | tr -d '\\n'");
    const std::string expected =
        outputOf("PATH=$PATH:/usr/sbin:/sbin blkid -p -o value -s TYPE " + device + " | tr -d '\\n'");
    if (expected.empty() || geteuid() != 0)
        GTEST_SKIP() << "no device to read";
    const std::optional<BlockContent> content = LiveKernel().blockContent(device);
    ASSERT_TRUE(content);
    EXPECT_EQ(content->type, expected);
}
