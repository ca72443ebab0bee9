#include "host/network/LinkFacts.h"

#include <gtest/gtest.h>

#include "host/Notes.h"
#include "host/Root.h"
#include "tests/unit/host/Tree.h"

using namespace host;
using Texts = std::vector<std::string>;

TEST(Resolver, readsTheFormsOfItsFile)
{
    static const struct {
        const char* text;
        Texts servers;
        const char* domain;
    } cases[] = {
        {"", {}, ""},
        {"nameserver 192.0.2.1\nnameserver 2001:db8::1\n", {"192.0.2.1", "2001:db8::1"}, ""},
        {"nameserver\t192.0.2.1   # the first\n", {"192.0.2.1"}, ""},
        {"  nameserver 192.0.2.1\r\n", {"192.0.2.1"}, ""},
        {"nameserver fe80::1%eth0", {"fe80::1%eth0"}, ""},
        {"# nameserver 192.0.2.1\n; nameserver 192.0.2.2\n#nameserver 192.0.2.3\n", {}, ""},
        {"nameserver\nnameserver \nnameservers 192.0.2.1\nNAMESERVER 192.0.2.1\n", {}, ""},
        {"domain example.org\n", {}, "example.org"},
        {"search a.example b.example\n", {}, "a.example"},
        {"domain a.example\nsearch b.example\n", {}, "b.example"},
        {"search b.example\ndomain a.example\nsearch\n", {}, "a.example"},
        {"options ndots:2 nameserver 1\n", {}, ""},
    };
    for (const auto& c : cases) {
        const Resolver resolver = parseResolver(c.text);
        EXPECT_EQ(resolver.servers, c.servers) << c.text;
        EXPECT_EQ(resolver.domain, c.domain) << c.text;
    }
}

namespace
{
class ResolverOf : public testing::Test
{
protected:
    Resolver read() { return readResolver(root_); }

    static constexpr const char* kOwn = "/etc/resolv.conf";
    static constexpr const char* kBehind = "/run/systemd/resolve/resolv.conf";
    Tree tree_;
    Notes notes_;
    const Root root_{tree_.folder(), notes_};
};
} // namespace

TEST_F(ResolverOf, aServerOfItsOwnIsTaken)
{
    tree_.file(kOwn, "nameserver 127.0.0.1\nnameserver 192.0.2.1\n");
    tree_.file(kBehind, "nameserver 192.0.2.9\n");
    EXPECT_EQ(read().servers, (Texts{"127.0.0.1", "192.0.2.1"}));
    EXPECT_EQ(read().source, kOwn);
}

TEST_F(ResolverOf, theServersBehindAStubAreTaken)
{
    tree_.file(kOwn, "nameserver 127.0.0.53\nsearch stub.example\n");
    EXPECT_EQ(read().servers, Texts{"127.0.0.53"}) << "nothing is known of what is behind it";
    EXPECT_EQ(read().source, kOwn);
    tree_.file(kBehind, "nameserver 192.0.2.9\nsearch a.example\n");
    EXPECT_EQ(read().servers, Texts{"192.0.2.9"});
    EXPECT_EQ(read().domain, "a.example");
    EXPECT_EQ(read().source, kBehind);
}

TEST_F(ResolverOf, withoutFilesThereIsNone)
{
    EXPECT_TRUE(read().servers.empty());
    EXPECT_EQ(read().domain, "");
}

TEST(LinkNames, areByIndex)
{
    std::vector<Link> links(2);
    links[0].index = 7;
    links[0].name = "eth0";
    links[1].index = 1;
    links[1].name = "lo";
    EXPECT_EQ(linkNames(links), (std::map<uint32_t, std::string>{{1, "lo"}, {7, "eth0"}}));
}
