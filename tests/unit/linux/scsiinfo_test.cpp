#include "linux/scsiinfo.h"

#include <cstring>
#include <gtest/gtest.h>
#include <scsi/sg.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

// A device is played by one end of a socket pair that keeps messages apart: its answers wait there before the questions
// are asked, and the questions can be read afterwards.
class ScsiInfo : public testing::Test
{
protected:
    static constexpr size_t kHeader = sizeof(sg_header);
    using Bytes = std::vector<unsigned char>;

    ScsiInfo() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends_), 0); }
    ~ScsiInfo() override { close(ends_[1]); }

    // Queues a whole reply that holds data at an offset.
    void reply(size_t offset = 0, const std::string& data = "", int result = 0)
    {
        send(wholeReply(offset, data, result));
    }

    void send(const Bytes& bytes) { EXPECT_EQ(write(ends_[1], bytes.data(), bytes.size()), ssize_t(bytes.size())); }

    static Bytes wholeReply(size_t offset, const std::string& data, int result)
    {
        Bytes bytes(kHeader + 255);
        sg_header header = {};
        header.result = result;
        memcpy(bytes.data(), &header, sizeof header);
        memcpy(bytes.data() + kHeader + offset, data.data(), data.size());
        return bytes;
    }

    void replyInquiry(char type) { reply(0, std::string(1, type) + std::string(7, '\0') + "VENDORXXMODELNAMEABCDEFG"); }

    // Lets the device answer nothing more, and asks it.
    scsiinfo probe()
    {
        shutdown(ends_[1], SHUT_WR);
        return scsiinfo(ends_[0]);
    }

    // The next request that was written.
    Bytes request()
    {
        Bytes bytes(1000);
        const ssize_t count = recv(ends_[1], bytes.data(), bytes.size(), MSG_DONTWAIT);
        bytes.resize(count < 0 ? 0 : size_t(count));
        return bytes;
    }

    int ends_[2];
};

TEST_F(ScsiInfo, aNodeThatCannotBeOpenedHasErrorCode10)
{
    const scsiinfo device("/no/such/node");
    EXPECT_EQ(device.errorcode(), 10);
    EXPECT_STREQ(device.model(), "");
    EXPECT_STREQ(device.manufacturer(), "");
    EXPECT_STREQ(device.serialnumber(), "");
}

TEST_F(ScsiInfo, aDiskTellsNamesGeometryAndSerialNumber)
{
    replyInquiry(0);
    reply(14, std::string("\x01\x02\x03\x08", 4)); // 66051 cylinders, 8 heads
    reply(22, std::string("\x00\x3f\x02\x00", 4)); // 63 sectors of 512 bytes
    reply(3, std::string("\x02xx"));
    reply(3, std::string("\x06"
                         "AB12\n!",
                         7));
    const scsiinfo device = probe();
    EXPECT_EQ(device.errorcode(), 0);
    EXPECT_EQ(device.type(), 0u);
    EXPECT_STREQ(device.manufacturer(), "VENDORX"); // 7 of 8 characters
    EXPECT_STREQ(device.model(), "MODELNAM");
    EXPECT_EQ(device.numcylinders(), 66051u);
    EXPECT_EQ(device.numheads(), 8u);
    EXPECT_EQ(device.numsectors(), 63u);
    EXPECT_EQ(device.sector_size(), 512u);
    EXPECT_EQ(device.totalsize(), 66051u * 63 / 2 * 8 + 4); // one sector for each head is left over
    EXPECT_STREQ(device.serialnumber(), "AB12\n!");
}

TEST_F(ScsiInfo, theCommandsAreSentInTheirOrderBehindAHeader)
{
    replyInquiry(0);
    for (int i = 0; i < 4; ++i)
        reply();
    probe();
    const Bytes commands[] = {
        {0x12, 0, 0, 0, 255, 0},    {0x1a, 0, 4, 0, 255, 0},    {0x1a, 0, 3, 0, 255, 0},
        {0x12, 1, 0x80, 0, 255, 0}, {0x12, 1, 0x80, 0, 255, 0},
    };
    for (const Bytes& command : commands) {
        const Bytes sent = request();
        ASSERT_EQ(sent.size(), kHeader + command.size());
        sg_header header;
        memcpy(&header, sent.data(), sizeof header);
        EXPECT_EQ(header.reply_len, 255 + 36);
        EXPECT_EQ(header.result, 0);
        EXPECT_EQ(header.twelve_byte, 0u);
        EXPECT_EQ(Bytes(sent.begin() + kHeader, sent.end()), command);
    }
    EXPECT_TRUE(request().empty());
}

TEST_F(ScsiInfo, aCdRomIsAskedForNothingButItsNames)
{
    reply(0, std::string("\x85\x80", 2)); // bits above the low five of the type do not count
    const scsiinfo device = probe();
    EXPECT_EQ(device.type(), 5u);
    EXPECT_TRUE(device.removable());
    EXPECT_EQ(request().size(), kHeader + 6);
    EXPECT_TRUE(request().empty());
}

TEST_F(ScsiInfo, aDeviceThatFailsModeSenseHasNoGeometry)
{
    replyInquiry(0);
    reply(0, "", 5);                  // a result that is not 0
    send(Bytes(kHeader + 254, 0xff)); // a short answer
    reply(3, std::string("\x02"
                         "AB"));
    reply(3, std::string("\x02"
                         "AB"));
    const scsiinfo device = probe();
    EXPECT_EQ(device.errorcode(), 0);
    EXPECT_EQ(device.numcylinders(), 0u);
    EXPECT_EQ(device.numheads(), 0u);
    EXPECT_EQ(device.numsectors(), 0u);
    EXPECT_EQ(device.sector_size(), 0u);
    EXPECT_EQ(device.totalsize(), 0u);
    EXPECT_STREQ(device.serialnumber(), "AB");
}

TEST_F(ScsiInfo, modePagesCountWhateverTheirResultIs)
{
    replyInquiry(0);
    reply(14, std::string("\x00\x04\x00\x10", 4), 2);
    reply(22, std::string("\x00\x3f\x02\x00", 4), 2);
    const scsiinfo device = probe();
    EXPECT_EQ(device.numcylinders(), 1024u);
    EXPECT_EQ(device.numheads(), 16u);
    EXPECT_EQ(device.numsectors(), 63u);
    EXPECT_EQ(device.sector_size(), 512u);
}

TEST_F(ScsiInfo, aDeviceThatFailsInquiryHasTypeZeroAndIsAskedOn)
{
    reply(0, "\x05", 1);
    reply(17, "\x10");
    const scsiinfo device = probe();
    EXPECT_EQ(device.errorcode(), 0);
    EXPECT_EQ(device.type(), 0u);
    EXPECT_STREQ(device.model(), "");
    EXPECT_EQ(device.numheads(), 16u);
}

TEST_F(ScsiInfo, theSecondSerialPageIsAskedForOnlyAfterAGoodFirstOne)
{
    replyInquiry(0);
    reply();
    reply();
    reply(3,
          std::string("\x02"
                      "AB"),
          1);
    reply(3, std::string("\x02"
                         "CD"));
    const scsiinfo device = probe();
    EXPECT_STREQ(device.serialnumber(), "");
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(request().empty());
    EXPECT_TRUE(request().empty());
}

TEST_F(ScsiInfo, theSerialLengthIsLimitedToWhatWasRead)
{
    replyInquiry(0);
    reply();
    reply();
    reply();
    reply(3, "\xff" + std::string(251, 'S'));
    EXPECT_EQ(probe().serialnumber(), std::string(251, 'S'));
}

TEST_F(ScsiInfo, sectorSizesAreMultiplesOf512)
{
    static constexpr struct {
        const char* size;
        int errorCode;
    } kCases[] = {{"\x08\x00", 0}, {"\x02\x08", 70}, {"\x02\x00", 0}, {"\x00\x01", 70}, {"\x01\x00", 70}};
    for (const auto& c : kCases) {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends), 0);
        for (int i = 0; i < 3; ++i) {
            const Bytes bytes = wholeReply(24, i == 2 ? std::string(c.size, 2) : "", 0);
            ASSERT_EQ(write(ends[1], bytes.data(), bytes.size()), ssize_t(bytes.size()));
        }
        shutdown(ends[1], SHUT_WR);
        EXPECT_EQ(scsiinfo(ends[0]).errorcode(), c.errorCode);
        close(ends[1]);
    }
}

TEST_F(ScsiInfo, theTotalIsTheWrapped32BitFigure)
{
    replyInquiry(0);
    reply(14, "\xff\xff\xff\xff");
    reply(22, std::string("\xff\xff\xfe\x00", 4));
    const uint32_t sectorsPerHead = 0xFFFFu * 0xFFFFFFu;
    const uint32_t expected =
        (sectorsPerHead / 2) * (0xFE00u * 255 / 512) + (sectorsPerHead % 2) * (0xFE00u * 255 / 1024);
    EXPECT_EQ(probe().totalsize(), expected);
}

TEST_F(ScsiInfo, mediaPresenceIsWhatTestUnitReadySays)
{
    reply(0, "\x05");
    send(Bytes(kHeader));
    Bytes notReady(kHeader);
    notReady[offsetof(sg_header, result)] = 5;
    send(notReady);
    scsiinfo device(ends_[0]);
    EXPECT_TRUE(device.mediapresent());
    EXPECT_FALSE(device.mediapresent());
}

TEST_F(ScsiInfo, commandsWithoutBuffersAreRefused)
{
    reply(0, "\x05");
    scsiinfo device(ends_[0]);
    char buffer[kHeader + 12] = {};
    EXPECT_EQ(device.doSCSIcmd(0, 0, buffer, 0, buffer), 30);
    EXPECT_EQ(device.doSCSIcmd(6, 0, nullptr, 0, buffer), 50);
    EXPECT_EQ(device.doSCSIcmd(6, 0, buffer, 0, nullptr), 60);
}

TEST_F(ScsiInfo, aCommandOfTwelveBytesSaysSoInItsHeader)
{
    reply(0, "\x05");
    scsiinfo device(ends_[0]);
    request();
    send(Bytes(kHeader));
    char buffer[kHeader + 12 + 4] = {};
    char answer[kHeader];
    EXPECT_EQ(device.doSCSIcmd(12, 4, buffer, 0, answer), 0);
    const Bytes sent = request();
    ASSERT_EQ(sent.size(), kHeader + 12 + 4);
    sg_header header;
    memcpy(&header, sent.data(), sizeof header);
    EXPECT_EQ(header.twelve_byte, 1u);
    EXPECT_EQ(header.reply_len, 36);
}

TEST_F(ScsiInfo, aFailedCommandGivesTheCountThatWasReadAndAShortReplyIsEmpty)
{
    reply(0, "\x05");
    scsiinfo device(ends_[0]);
    send(Bytes(40, 0xff));
    send(Bytes(kHeader + 10, 0x01)); // whole, but its result is not 0
    char buffer[kHeader + 6] = {};
    char answer[kHeader + 10];
    EXPECT_EQ(device.doSCSIcmd(6, 0, buffer, 10, answer), 40);
    EXPECT_EQ(std::string(answer, sizeof answer), std::string(sizeof answer, '\0'));
    EXPECT_EQ(device.doSCSIcmd(6, 0, buffer, 10, answer), int(kHeader + 10));
    EXPECT_EQ(std::string(answer, sizeof answer), std::string(sizeof answer, '\1'));
}

TEST_F(ScsiInfo, numbersAreBigEndian)
{
    const char bytes[] = "\x81\x02\x03\x04\x05";
    EXPECT_EQ(scsiinfo::getinteger(bytes, 0), 0u);
    EXPECT_EQ(scsiinfo::getinteger(bytes, -1), 0u);
    EXPECT_EQ(scsiinfo::getinteger(bytes, 1), 0x81u);
    EXPECT_EQ(scsiinfo::getinteger(bytes, 2), 0x8102u);
    EXPECT_EQ(scsiinfo::getinteger(bytes, 4), 0x81020304u);
    EXPECT_EQ(scsiinfo::getinteger(bytes, 5), 0x02030405u);
}

TEST_F(ScsiInfo, aRequestThatCannotBeWrittenIsNotWaitedFor)
{
    reply(0, "\x05");
    scsiinfo device(ends_[0]);
    close(ends_[0]);
    char buffer[kHeader + 6] = {};
    char answer[kHeader + 10];
    EXPECT_EQ(device.doSCSIcmd(6, 0, buffer, 10, answer), -1);
    EXPECT_EQ(std::string(answer, sizeof answer), std::string(sizeof answer, '\0'));
}
