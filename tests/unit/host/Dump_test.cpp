#include "host/kernel/Dump.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

using namespace host;

// A message of a type with a header of four bytes and attributes of any bytes.
static std::string message(uint16_t type, uint32_t sequence, uint16_t flags = 0, const std::string& attributes = "")
{
    nlmsghdr header{};
    header.nlmsg_len = static_cast<uint32_t>(sizeof header + 4 + attributes.size());
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    header.nlmsg_seq = sequence;
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
    bytes += std::string(4, '\0') + attributes;
    return bytes.append((4 - bytes.size() % 4) % 4, '\0');
}

namespace
{
// Answers with prepared replies, whatever is asked.
class Replies : public NetlinkPeer
{
public:
    explicit Replies(std::vector<std::string> replies) : replies_(std::move(replies)) {}
    bool send(const nlmsghdr& question) override
    {
        questions.push_back(question.nlmsg_type);
        return true;
    }
    ssize_t receive(void* buffer, size_t size) override
    {
        if (next_ == replies_.size()) {
            errno = EAGAIN;
            return -1;
        }
        const std::string& reply = replies_[next_++];
        memcpy(buffer, reply.data(), std::min(size, reply.size()));
        return static_cast<ssize_t>(std::min(size, reply.size()));
    }
    std::vector<uint16_t> questions;

private:
    std::vector<std::string> replies_;
    size_t next_ = 0;
};
} // namespace

// How many messages stand in the end, and how often was asked.
static std::pair<size_t, size_t> countOf(Replies peer)
{
    size_t count = 0;
    dump(
        peer, RTM_GETADDR, [&] { count = 0; }, [&](const nlmsghdr&) { ++count; });
    return {count, peer.questions.size()};
}

using Count = std::pair<size_t, size_t>;

TEST(Dump, everyMessageUpToTheEndIsTaken)
{
    EXPECT_EQ(countOf(Replies({message(RTM_NEWADDR, 1) + message(RTM_NEWADDR, 1), message(RTM_NEWADDR, 1),
                               message(NLMSG_DONE, 1) + message(RTM_NEWADDR, 1), message(RTM_NEWADDR, 1)})),
              Count(3, 1));
    EXPECT_EQ(countOf(Replies({message(RTM_NEWADDR, 7) + message(RTM_NEWADDR, 1) + message(NLMSG_DONE, 1)})),
              Count(1, 1))
        << "an answer to another question";
    EXPECT_EQ(countOf(Replies({message(RTM_NEWADDR, 1)})), Count(1, 1)) << "nothing more comes";
    EXPECT_EQ(countOf(Replies({message(NLMSG_ERROR, 1)})), Count(0, 1));
    EXPECT_EQ(countOf(Replies({})), Count(0, 1));
}

TEST(Dump, whatIsNotAnsweredToTheEndIsToldWithItsError)
{
    const auto isAnswered = [](Replies peer) {
        errno = 0;
        return dump(
            peer, RTM_GETADDR, [] {}, [](const nlmsghdr&) {});
    };
    EXPECT_TRUE(isAnswered(Replies({message(NLMSG_DONE, 1)})));
    EXPECT_FALSE(isAnswered(Replies({message(RTM_NEWADDR, 1)})));
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_FALSE(isAnswered(Replies({""})));
    EXPECT_EQ(errno, EIO);
    EXPECT_FALSE(isAnswered(Replies({message(NLMSG_ERROR, 1)}))) << "too short to say which";
    EXPECT_EQ(errno, EIO);
}

TEST(Dump, aListThatChangedIsAskedAgain)
{
    EXPECT_EQ(countOf(Replies({message(RTM_NEWADDR, 1) + message(RTM_NEWADDR, 1, NLM_F_DUMP_INTR),
                               message(NLMSG_DONE, 1), message(RTM_NEWADDR, 2), message(NLMSG_DONE, 2, NLM_F_DUMP_INTR),
                               message(RTM_NEWADDR, 3) + message(RTM_NEWADDR, 3) + message(NLMSG_DONE, 3)})),
              Count(2, 3));
    std::vector<std::string> restless;
    for (uint32_t sequence = 1; sequence < 100; ++sequence)
        restless.push_back(message(RTM_NEWADDR, sequence) + message(NLMSG_DONE, sequence, NLM_F_DUMP_INTR));
    EXPECT_EQ(countOf(Replies(restless)), Count(1, 5));
}

TEST(Dump, brokenMessagesEndAPiece)
{
    std::string tooLong = message(RTM_NEWADDR, 1);
    tooLong[0] = '\x7F';
    std::string tooShort = message(RTM_NEWADDR, 1);
    tooShort[0] = 3;
    for (const std::string& broken : {tooLong, tooShort, std::string(7, 'x'), std::string(4096, '\xFF')})
        EXPECT_EQ(countOf(Replies({message(RTM_NEWADDR, 1) + broken, message(NLMSG_DONE, 1)})), Count(1, 1));
}

TEST(Dump, thereIsAnEndOfMessages)
{
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += message(RTM_NEWADDR, 1);
    EXPECT_EQ(countOf(Replies(std::vector<std::string>(100, many))), Count(65536, 1));
}

TEST(Attributes, ofWrongLengthsAreNone)
{
    alignas(nlattr) const char bytes[] = "\x08\0\x01\0\x2A\0\0\0" // number 42 of type 1
                                         "\x06\0\x02\0up\0\0"     // text of type 2, its end missing
                                         "\x05\0\x03\0\x06\0\0\0" // one byte of type 3
                                         "\x08\0\xF0\x0F    "     // of a type that nobody knows
                                         "\x40\0\x04\0xxxx";      // longer than what is there
    const Attributes attributes(std::string_view(bytes, sizeof bytes - 1));
    EXPECT_EQ(attributes.number(1), 42u);
    EXPECT_FALSE(attributes.byte(1));
    EXPECT_EQ(attributes.text(2), "up");
    EXPECT_FALSE(attributes.number(2));
    EXPECT_EQ(attributes.byte(3), 6);
    EXPECT_EQ(attributes.find(4), nullptr);
    EXPECT_EQ(attributes.bytes(4), "");
    EXPECT_EQ(attributes.find(0xFF0), nullptr);
    EXPECT_EQ(Attributes(nullptr).find(1), nullptr);
}
