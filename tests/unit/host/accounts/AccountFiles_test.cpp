#include "host/accounts/AccountFiles.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using namespace host;

namespace
{
constexpr const char* kHash = "$6$saltsalt$0123456789abcdef";

// A tally of failures at these times, the first so many of them valid.
std::string tally(std::initializer_list<uint64_t> times, size_t valid = SIZE_MAX)
{
    std::string bytes;
    for (const uint64_t time : times) {
        std::string record(64, '\0');
        const uint16_t flags = bytes.size() / 64 < valid ? 1 : 0;
        memcpy(record.data() + 54, &flags, sizeof flags);
        memcpy(record.data() + 56, &time, sizeof time);
        bytes += record;
    }
    return bytes;
}
} // namespace

TEST(PasswordState, ofEveryForm)
{
    const struct {
        std::string_view field;
        bool isEmpty, isLocked;
    } cases[] = {
        {"", true, false},
        {kHash, false, false},
        {"abJnggxhB/yWI", false, false},
        {"!", false, true},
        {"!!", false, true},
        {"*", false, true},
        {"*LK*", false, true},
        {"!$6$salt$0123456789", false, true},
        {"x", false, true},
        {"NP", false, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(passwordState(c.field).isEmpty, c.isEmpty) << c.field;
        EXPECT_EQ(passwordState(c.field).isLocked, c.isLocked) << c.field;
    }
}

TEST(Passwd, isReadLineByLine)
{
    std::vector<std::string> names;
    parsePasswd("root:x:0:0:Super User,Room 1,555:/root:/bin/bash\n# a comment:x:1:1::/:\n+::::::\n-bad:x:1:1::/:\n"
                "+@group:x:1:1::/:\nshort:x:1:1:/\nlong:x:1:1::/::\n:x:1:1::/:\nold:abJnggxhB/yWI:7:8::/home/old:\n"
                "open::4294967296:-1::/:/bin/sh\r\n",
                [&](const Account& account) {
                    names.emplace_back(account.name);
                    if (account.name == "root") {
                        EXPECT_EQ(account.fullName, "Super User");
                        EXPECT_EQ(account.home, "/root");
                        EXPECT_EQ(account.shell, "/bin/bash");
                        EXPECT_EQ(account.userId, 0U);
                        EXPECT_FALSE(account.password);
                    } else if (account.name == "old") {
                        EXPECT_FALSE(account.password->isLocked);
                        EXPECT_EQ(account.groupId, 8U);
                        EXPECT_EQ(account.shell, "");
                    } else {
                        EXPECT_TRUE(account.password->isEmpty);
                        EXPECT_FALSE(account.userId);
                        EXPECT_FALSE(account.groupId);
                        EXPECT_EQ(account.shell, "/bin/sh");
                    }
                });
    EXPECT_EQ(names, (std::vector<std::string>{"root", "old", "open"}));
}

TEST(Shadow, tellsWhatFollowsFromALine)
{
    const std::string text =
        std::string("a:") + kHash +
        ":19000:0:99999:7:::\nb:!:19000:7:90:7:14:20000:\nc::::::::\n"
        "d:*:19000:10:5:7::0:\na:*:1:1:1:1:1:1:\nshort:*:1\n:*:1:1:1:1:1:1:\nm:x:1:-1:-1:1:1:-1:\n";
    const auto shadows = parseShadow(text);
    EXPECT_EQ(shadows.size(), 5U);
    const Shadow& a = shadows.at("a");
    EXPECT_FALSE(a.password.isLocked);
    EXPECT_TRUE(a.isChangeable());
    EXPECT_FALSE(a.expires());
    EXPECT_FALSE(a.isExpired(99999999));
    const Shadow& b = shadows.at("b");
    EXPECT_TRUE(b.password.isLocked);
    EXPECT_TRUE(b.expires());
    EXPECT_FALSE(b.isExpired(19999));
    EXPECT_TRUE(b.isExpired(20000));
    const Shadow& c = shadows.at("c");
    EXPECT_TRUE(c.password.isEmpty);
    EXPECT_TRUE(c.isChangeable());
    EXPECT_FALSE(c.expires());
    EXPECT_FALSE(shadows.at("d").isChangeable());
    EXPECT_FALSE(shadows.at("d").isExpired(20000)); // 0 is no day
    EXPECT_FALSE(shadows.at("m").expires());
    EXPECT_FALSE(shadows.at("m").isExpired(20000));
}

TEST(WithoutHashes, saysTheSameOfEveryAccount)
{
    const std::string text =
        std::string("a:") + kHash + ":19000:0:99999:7:::\nb:!" + kHash +
        ":1:2:3:4:5:6:\nc::::::::\nd:*:1:::::::\nroot:x:0:0:r:/root:/bin/sh\n\nno colon\ne:" + kHash;
    const std::string plain = withoutHashes(text);
    EXPECT_EQ(plain.find("$6$"), std::string::npos);
    EXPECT_EQ(plain.find("0123456789abcdef"), std::string::npos);
    EXPECT_EQ(plain, "a:-------------:19000:0:99999:7:::\nb:!:1:2:3:4:5:6:\nc::::::::\nd:!:1:::::::\n"
                     "root:x:0:0:r:/root:/bin/sh\n\nno colon\ne:-------------\n");
    EXPECT_FALSE(parseShadow(plain).at("a").password.isLocked);
    EXPECT_TRUE(parseShadow(plain).at("b").password.isLocked);
    EXPECT_TRUE(parseShadow(plain).at("c").password.isEmpty);
}

TEST(Lockout, followsTheRule)
{
    const LockoutRule rule = parseLockoutRule("# deny = 9\n deny = 2 \nfail_interval=100\nunlock_time = 50\n");
    EXPECT_FALSE(isLockedOut("", rule, 1000));
    EXPECT_FALSE(isLockedOut(tally({990}), rule, 1000));
    EXPECT_TRUE(isLockedOut(tally({901, 990}), rule, 1000));
    EXPECT_FALSE(isLockedOut(tally({890, 990}), rule, 1000));    // too far apart
    EXPECT_FALSE(isLockedOut(tally({940, 949}), rule, 1000));    // unlocked again
    EXPECT_FALSE(isLockedOut(tally({980, 990}, 1), rule, 1000)); // one was taken back
    EXPECT_FALSE(isLockedOut(tally({980, 2000}), rule, 1000));   // none is in the future
    EXPECT_TRUE(isLockedOut(tally({980, 990}) + "rest", rule, 1000));
    EXPECT_TRUE(isLockedOut(tally({1, 2}), parseLockoutRule("deny=2\nunlock_time = never\n"), 100000));
    EXPECT_FALSE(rule.countsForRoot);
    EXPECT_TRUE(parseLockoutRule("even_deny_root\n").countsForRoot);
    EXPECT_EQ(parseLockoutRule("deny = many\n").failures, 3U);
}
