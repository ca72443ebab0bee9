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

    // Queues a reply of result 0 as the kernel gives it for a command that ended in this target status, with the
    // beginning of the sense data, and with data of the command before it.
    void replyStatus(unsigned status, const std::string& sense, size_t offset, const std::string& staleData)
    {
        Bytes bytes = wholeReply(offset, staleData, 0);
        sg_header header = {};
        header.target_status = status & 0x1F;
        memcpy(header.sense_buffer, sense.data(), sense.size());
        memcpy(bytes.data(), &header, sizeof header);
        send(bytes);
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

TEST_F(ScsiInfo, theDataOfARefusedCommandReadsAsZeros)
{
    const std::string illegalRequest("\x70\x00\x05", 3);
    replyInquiry(0);
    replyStatus(1, illegalRequest, 14, std::string("\x00\x04\x00\x10", 4));
    replyStatus(1, illegalRequest, 22, std::string("\x00\x3f\x02\x08", 4)); // would be a device of 520 bytes a sector
    reply(3, "\x02"
             "AB");
    reply(3, "\x02"
             "CD");
    const scsiinfo device = probe();
    EXPECT_EQ(device.errorcode(), 0);
    EXPECT_EQ(device.numcylinders(), 0u);
    EXPECT_EQ(device.numheads(), 0u);
    EXPECT_EQ(device.numsectors(), 0u);
    EXPECT_EQ(device.sector_size(), 0u);
    EXPECT_STREQ(device.serialnumber(), "CD");
}

TEST_F(ScsiInfo, aRefusedSerialPageGivesNoSerialNumber)
{
    replyInquiry(0);
    reply();
    reply();
    reply(3, "\x02"
             "AB");
    replyStatus(1, std::string("\x72\x05", 2), 3,
                "\x02"
                "AB");
    EXPECT_STREQ(probe().serialnumber(), "");
}

TEST_F(ScsiInfo, senseDataSaysWhatIsRefusedAndTheStatusWhereThereIsNone)
{
    static constexpr struct {
        const char* what;
        unsigned status; // of the target, as the header holds it
        unsigned char sense[3];
        bool refused;
    } kCases[] = {
        {"good", 0, {}, false},
        {"check condition without sense data", 1, {}, true},
        {"busy", 4, {}, true},
        {"condition met", 2, {}, true},
        {"illegal request", 1, {0x70, 0, 5}, true},
        {"the same with a valid information field", 1, {0xF0, 0, 5}, true},
        {"the same, deferred", 1, {0x71, 0, 5}, true},
        {"the same, in descriptors", 1, {0x72, 5, 0}, true},
        {"the same, deferred, in descriptors", 1, {0x73, 5, 0}, true},
        {"not ready", 1, {0x70, 0, 2}, true},
        {"unit attention, bits above the key", 1, {0x70, 0, 0xE6}, true},
        {"sense data of a good command", 0, {0x70, 0, 5}, true},
        {"recovered error", 1, {0x70, 0, 1}, false},
        {"recovered error, bits above the key", 1, {0x71, 0, 0xE1}, false},
        {"recovered error in descriptors", 1, {0x72, 1, 5}, false},
        {"no sense", 1, {0x70, 5, 0}, false},
        {"no sense in descriptors", 1, {0x73, 0, 5}, false},
        {"a code that is no sense data", 0, {0x6F, 5, 5}, false},
        {"a code that is no sense data, refused", 1, {0x74, 1, 1}, true},
        {"a vendor's own code", 0, {0x7F, 5, 5}, false},
    };
    reply(0, "\x05");
    scsiinfo device(ends_[0]);
    for (const auto& c : kCases) {
        const std::string sense(reinterpret_cast<const char*>(c.sense), sizeof c.sense);
        replyStatus(c.status, sense, 0, "data");
        char buffer[kHeader + 6] = {};
        char answer[kHeader + 255];
        EXPECT_EQ(device.doSCSIcmd(6, 0, buffer, 255, answer), c.refused ? int(kHeader + 255) : 0) << c.what;
        EXPECT_EQ(std::string(answer + kHeader, 4), c.refused ? std::string(4, '\0') : "data") << c.what;
        EXPECT_EQ(std::string(answer + 20, sizeof c.sense), sense) << c.what << ": the header stays";
    }
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
    Bytes noMedium(kHeader);
    noMedium[offsetof(sg_header, sense_buffer)] = 0x70;
    noMedium[offsetof(sg_header, sense_buffer) + 2] = 2;
    send(noMedium);
    EXPECT_TRUE(device.mediapresent());
    EXPECT_FALSE(device.mediapresent());
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
