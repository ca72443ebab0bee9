#include "host/firmware/MemoryDevices.h"

#include <gtest/gtest.h>

#include "tests/unit/host/firmware/FirmwareBytes.h"

using namespace host;
using Number = std::optional<uint64_t>;

namespace
{
constexpr size_t kYoung = 92;  // of a device since 3.3
constexpr size_t kOldest = 21; // 2.1

StructureBytes device(size_t length = kYoung)
{
    return {SMBIOS_MEMORY_DEVICE, length, 0x1100};
}

MemoryDevice parsed(const StructureBytes& bytes)
{
    const StructureTable table("", bytes.bytes() + endOfTable());
    const std::vector<MemoryDevice> devices = memoryDevicesOf(table);
    return devices.size() == 1 ? devices[0] : MemoryDevice();
}

StructureBytes array(uint16_t handle, uint8_t use, uint32_t kilobytes, uint16_t sockets, size_t length = 23)
{
    StructureBytes bytes(SMBIOS_MEMORY_ARRAY, length, handle);
    bytes.put(5, use, 1).put(7, kilobytes, 4).put(13, sockets, 2);
    return bytes;
}
} // namespace

TEST(MemoryDevices, haveSizesInAllTheirForms)
{
    const struct {
        size_t length;
        uint16_t size;
        uint32_t extended;
        Number megabytes;
    } cases[] = {
        {kYoung, 0, 0, 0}, // nothing is installed
        {kYoung, 1, 0, 1},
        {kYoung, 16384, 0, 16384},
        {kYoung, 0x7FFE, 0, 32766},
        {kYoung, 0x7FFF, 32768, 32768},
        {kYoung, 0x7FFF, 0x7FFFFFFF, 0x7FFFFFFF},
        {kYoung, 0x7FFF, 0x80010000, 0x10000}, // bit 31 is reserved
        {kOldest, 0x7FFF, 0, {}},              // no extended size: it is not known
        {kYoung, 0xFFFF, 0, {}},               // unknown
        {kYoung, 0x8400, 0, 1},                // 1024 kB
        {kYoung, 0xFC00, 0, 31},
        {kYoung, 0x8000, 0, 0},
        {kYoung, 0x8200, 0, {}}, // 512 kB are not nothing
        {kOldest, 512, 0, 512},
    };
    for (const auto& c : cases) {
        StructureBytes bytes = device(c.length);
        bytes.put(12, c.size, 2);
        if (c.length == kYoung)
            bytes.put(28, c.extended, 4);
        EXPECT_EQ(parsed(bytes).sizeMB, c.megabytes) << std::hex << c.size;
    }
    EXPECT_EQ(parsed(device(13)).sizeMB, std::nullopt) << "the field is cut off";
}

TEST(MemoryDevices, haveSpeedsInAllTheirForms)
{
    const struct {
        uint16_t speed;
        uint32_t extended;
        Number transfers;
    } cases[] = {{0, 0, {}},
                 {3200, 0, 3200},
                 {0xFFFE, 0, 65534},
                 {0xFFFF, 65536, 65536},
                 {0xFFFF, 0, {}},
                 {0xFFFF, 0x80000000, {}},
                 {0xFFFF, 0xFFFFFFFF, 0x7FFFFFFF}};
    for (const auto& c : cases) {
        const MemoryDevice one = parsed(device().put(21, c.speed, 2).put(84, c.extended, 4));
        EXPECT_EQ(one.speed, c.transfers);
        EXPECT_EQ(one.configuredSpeed, std::nullopt);
        const MemoryDevice other = parsed(device().put(32, c.speed, 2).put(88, c.extended, 4));
        EXPECT_EQ(other.configuredSpeed, c.transfers);
        EXPECT_EQ(other.speed, std::nullopt);
    }
    EXPECT_EQ(parsed(device(84).put(21, 0xFFFF, 2)).speed, std::nullopt) << "no extended field";
    EXPECT_EQ(parsed(device(kOldest)).speed, std::nullopt);
}

TEST(MemoryDevices, tellAllThatTheyAre)
{
    StructureBytes bytes = device();
    bytes.put(8, 72, 2).put(10, 64, 2).put(14, 9, 1).put(18, 0x1A, 1).put(19, 0x2080, 2);
    bytes.string(16, "DIMM A1").string(17, "Bank 0").string(23, "Maker").string(24, "SN1").string(25, "Tag");
    bytes.string(26, "PN1  ").put(27, 0xF2, 1).put(38, 1200, 2);
    const MemoryDevice one = parsed(bytes);
    EXPECT_EQ(one.totalWidth, 72u);
    EXPECT_EQ(one.dataWidth, 64u);
    EXPECT_EQ(one.formFactor, "DIMM");
    EXPECT_EQ(one.type, "DDR4");
    EXPECT_EQ(one.typeDetail, "Synchronous Registered");
    EXPECT_EQ(one.typeWithDetail(), "Synchronous Registered DDR4");
    EXPECT_EQ(one.socket, "DIMM A1");
    EXPECT_EQ(one.bank, "Bank 0");
    EXPECT_EQ(one.manufacturer, "Maker");
    EXPECT_EQ(one.serialNumber, "SN1");
    EXPECT_EQ(one.assetTag, "Tag");
    EXPECT_EQ(one.partNumber, "PN1");
    EXPECT_EQ(one.rank, 2u);
    EXPECT_EQ(one.configuredMillivolts, 1200u);
    EXPECT_EQ(one.mostMB, std::nullopt);
}

TEST(MemoryDevices, leaveOutWhatIsUnknown)
{
    StructureBytes bytes = device();
    bytes.put(8, 0xFFFF, 2).put(10, 0xFFFF, 2).put(14, 2, 1).put(18, 2, 1).put(19, 4, 2); // "Unknown" each
    const MemoryDevice one = parsed(bytes);
    EXPECT_EQ(one.totalWidth, std::nullopt);
    EXPECT_EQ(one.dataWidth, std::nullopt);
    EXPECT_EQ(one.formFactor, "");
    EXPECT_EQ(one.typeWithDetail(), "");
    EXPECT_EQ(one.rank, std::nullopt);
    EXPECT_EQ(one.configuredMillivolts, std::nullopt);
    const MemoryDevice odd = parsed(device().put(14, 0xFF, 1).put(18, 0xFF, 1).put(19, 0xFFFF, 2));
    EXPECT_EQ(odd.formFactor, "");
    EXPECT_EQ(odd.type, "");
    EXPECT_EQ(odd.typeWithDetail(), odd.typeDetail);
}

TEST(MemoryDevices, shareTheCapacityOfTheirArray)
{
    const std::string text = array(0x1000, 3, 32U << 20, 4).bytes() +                                // 32 GB
                             array(0x1001, 3, 0x80000000, 2).put(15, uint64_t{4} << 40, 8).bytes() + // 4 TB
                             array(0x1002, 3, 1024, 0).bytes() +                                     // without sockets
                             device().put(4, 0x1000, 2).bytes() + device().put(4, 0x1001, 2).bytes() +
                             device().put(4, 0x1002, 2).bytes() + device().put(4, 0xFFFE, 2).bytes() + endOfTable();
    const StructureTable table("", text);
    const std::vector<MemoryDevice> devices = memoryDevicesOf(table);
    ASSERT_EQ(devices.size(), 4u);
    EXPECT_EQ(devices[0].mostMB, 8192u);
    EXPECT_EQ(devices[1].mostMB, 2097152u);
    EXPECT_EQ(devices[2].mostMB, std::nullopt);
    EXPECT_EQ(devices[3].mostMB, std::nullopt);
}

TEST(MemoryLimits, addTheArraysOfSystemMemory)
{
    const auto limitsOf = [](const std::string& text) {
        const StructureTable table("", text + endOfTable());
        return memoryLimitsOf(table);
    };
    EXPECT_EQ(limitsOf("").mostMB, 0u);
    const MemoryLimits sum = limitsOf(array(1, 3, 32U << 20, 4).bytes() + array(2, 3, 16U << 20, 2).bytes() +
                                      array(3, 4, 1U << 20, 1).bytes()); // video memory
    EXPECT_EQ(sum.mostMB, 49152u);
    EXPECT_EQ(sum.sockets, 6u);
    const MemoryLimits extended = limitsOf(array(1, 3, 0x80000000, 8).put(15, uint64_t{8} << 40, 8).bytes());
    EXPECT_EQ(extended.mostMB, 8388608u);
    const MemoryLimits none = limitsOf(array(1, 3, 0x80000000, 8, 15).bytes()); // no extended field before 2.7
    EXPECT_EQ(none.mostMB, 0u);
    EXPECT_EQ(none.sockets, 8u);
}

TEST(MemoryDevices, comeFromUdevWhereTheTableIsClosed)
{
    const std::vector<MemoryDevice> devices = memoryDevicesOfUdev("I:1\n"
                                                                  "E:MEMORY_ARRAY_LOCATION=System Board\n"
                                                                  "E:MEMORY_DEVICE_10_SIZE=17179869184\n"
                                                                  "E:MEMORY_DEVICE_2_PRESENT=0\n"
                                                                  "E:MEMORY_DEVICE_2_LOCATOR=DIMM 2\n"
                                                                  "E:MEMORY_DEVICE_10_TYPE=DDR5\n"
                                                                  "E:MEMORY_DEVICE_10_TYPE_DETAIL=Synchronous\n"
                                                                  "E:MEMORY_DEVICE_10_SPEED_MTS=4800\n"
                                                                  "E:MEMORY_DEVICE_10_CONFIGURED_SPEED_MTS=4400\n"
                                                                  "E:MEMORY_DEVICE_10_RANK=x\n"
                                                                  "E:MEMORY_DEVICE_11_SIZE=524288\n"
                                                                  "E:MEMORY_DEVICE_99999999999_SIZE=1\n"
                                                                  "E:MEMORY_DEVICE_SIZE=1\n"
                                                                  "E:MEMORY_DEVICE_3\n"
                                                                  "E:MEMORY_DEVICE__SIZE=1");
    ASSERT_EQ(devices.size(), 3u);
    EXPECT_EQ(devices[0].socket, "DIMM 2");
    EXPECT_EQ(devices[0].sizeMB, 0u);
    EXPECT_EQ(devices[1].sizeMB, 16384u);
    EXPECT_EQ(devices[1].typeWithDetail(), "Synchronous DDR5");
    EXPECT_EQ(devices[1].speed, 4800u);
    EXPECT_EQ(devices[1].configuredSpeed, 4400u);
    EXPECT_EQ(devices[1].rank, std::nullopt);
    EXPECT_EQ(devices[2].sizeMB, std::nullopt) << "less than a megabyte is not nothing";
}

// A user's view has the same texts as root's.
TEST(MemoryDevices, ofUdevAreNamedAsThoseOfTheTable)
{
    const auto device = [](const std::string& type, const std::string& detail) {
        return memoryDevicesOfUdev("E:MEMORY_DEVICE_0_TYPE=" + type + "\nE:MEMORY_DEVICE_0_TYPE_DETAIL=" + detail +
                                   "\nE:MEMORY_DEVICE_0_FORM_FACTOR=" + type)
            .front();
    };
    EXPECT_EQ(device("DDR5", "Synchronous Unbuffered (Unregistered)").typeWithDetail(), "Synchronous Unbuffered DDR5");
    EXPECT_EQ(device("DDR4", "Synchronous Registered (Buffered)").typeWithDetail(), "Synchronous Registered DDR4");
    EXPECT_EQ(device("Unknown", "None").typeWithDetail(), "");
    EXPECT_EQ(device("<OUT OF SPEC>", "None").formFactor, "");
}
