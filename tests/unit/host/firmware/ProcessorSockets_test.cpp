#include "host/firmware/ProcessorSockets.h"

#include <gtest/gtest.h>

#include "tests/unit/host/firmware/FirmwareBytes.h"

using namespace host;
using Number = std::optional<uint64_t>;

namespace
{
constexpr size_t kYoung = 50; // since 3.6

StructureBytes processor(size_t length = kYoung, uint8_t type = 3, uint8_t status = 0x41)
{
    StructureBytes bytes(SMBIOS_PROCESSOR, length);
    bytes.put(5, type, 1);
    if (length > 24)
        bytes.put(24, status, 1);
    return bytes;
}

std::vector<ProcessorSocket> parsed(const std::string& bytes)
{
    const StructureTable table("", bytes + endOfTable());
    return processorSocketsOf(table);
}
} // namespace

TEST(ProcessorSockets, areThoseThatHoldACentralProcessor)
{
    EXPECT_EQ(parsed(processor().bytes() + processor(26).bytes()).size(), 2u);
    EXPECT_TRUE(parsed(processor(kYoung, 3, 0x00).bytes()).empty()); // an empty socket
    EXPECT_TRUE(parsed(processor(kYoung, 4, 0x41).bytes()).empty()); // a mathematical one
    EXPECT_TRUE(parsed(processor(24).bytes()).empty());              // its status is cut off
    EXPECT_TRUE(parsed("").empty());
}

TEST(ProcessorSockets, tellAllThatTheyAre)
{
    StructureBytes bytes = processor();
    bytes.string(4, "CPU0").string(7, "Maker").string(16, "Model @ 2 GHz").string(32, "SN");
    bytes.put(6, 0xB3, 1).put(18, 100, 2).put(20, 4000, 2).put(22, 2100, 2).put(25, 0x33, 1);
    bytes.put(35, 16, 1).put(37, 32, 1);
    const std::vector<ProcessorSocket> sockets = parsed(bytes.bytes());
    ASSERT_EQ(sockets.size(), 1u);
    EXPECT_EQ(sockets[0].socket, "CPU0");
    EXPECT_EQ(sockets[0].manufacturer, "Maker");
    EXPECT_EQ(sockets[0].version, "Model @ 2 GHz");
    EXPECT_EQ(sockets[0].serialNumber, "SN");
    EXPECT_EQ(sockets[0].family, 0xB3u);
    EXPECT_EQ(sockets[0].upgrade, 0x33u);
    EXPECT_EQ(sockets[0].externalClock, 100u);
    EXPECT_EQ(sockets[0].maximumSpeed, 4000u);
    EXPECT_EQ(sockets[0].currentSpeed, 2100u);
    EXPECT_EQ(sockets[0].cores, 16u);
    EXPECT_EQ(sockets[0].threads, 32u);
}

TEST(ProcessorSockets, lookIntoTheWordsBehindTheirBytes)
{
    const struct {
        size_t length, byteOffset, wordOffset;
        Number ProcessorSocket::*number;
        uint8_t byte;
        uint16_t word;
        Number expected;
    } cases[] = {
        {kYoung, 6, 40, &ProcessorSocket::family, 0xFE, 0x0118, 0x118},
        {kYoung, 6, 40, &ProcessorSocket::family, 0x01, 0x0118, 1},
        {kYoung, 6, 40, &ProcessorSocket::family, 0xFE, 0, {}},
        {40, 6, 0, &ProcessorSocket::family, 0xFE, 0, {}}, // before 2.6
        {kYoung, 35, 42, &ProcessorSocket::cores, 0xFF, 288, 288},
        {kYoung, 35, 42, &ProcessorSocket::cores, 0xFE, 288, 254},
        {kYoung, 35, 42, &ProcessorSocket::cores, 0, 288, {}},
        {kYoung, 37, 46, &ProcessorSocket::threads, 0xFF, 576, 576},
        {kYoung, 37, 46, &ProcessorSocket::threads, 12, 576, 12},
        {42, 37, 0, &ProcessorSocket::threads, 0xFF, 0, {}}, // before 3.0
    };
    for (const auto& c : cases) {
        StructureBytes bytes = processor(c.length);
        bytes.put(c.byteOffset, c.byte, 1);
        if (c.wordOffset != 0)
            bytes.put(c.wordOffset, c.word, 2);
        const std::vector<ProcessorSocket> sockets = parsed(bytes.bytes());
        ASSERT_EQ(sockets.size(), 1u);
        EXPECT_EQ(sockets[0].*c.number, c.expected) << c.byteOffset << ' ' << int{c.byte};
    }
}

TEST(ProcessorSockets, ofTheOldestStandardTellWhatItHas)
{
    const std::vector<ProcessorSocket> sockets = parsed(processor(26).put(22, 450, 2).bytes());
    ASSERT_EQ(sockets.size(), 1u);
    EXPECT_EQ(sockets[0].currentSpeed, 450u);
    EXPECT_EQ(sockets[0].serialNumber, "");
    EXPECT_EQ(sockets[0].cores, std::nullopt);
    EXPECT_EQ(sockets[0].threads, std::nullopt);
}
