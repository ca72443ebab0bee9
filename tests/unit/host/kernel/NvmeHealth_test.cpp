#include "host/kernel/NvmeHealth.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

using namespace host;

namespace
{
void disk(const Tree& tree)
{
    const std::string controller = "/sys/devices/pci0000:00/0000:01:00.0/nvme/nvme0";
    tree.file(controller + "/nvme0n1/size", "1000\n");
    tree.link(controller + "/nvme0n1/device", "..");
    tree.link("/sys/block/nvme0n1", ".." + controller.substr(4) + "/nvme0n1");
}

void answer(const Tree& tree, const std::string& health)
{
    tree.file("/invhw-kernel.json",
              R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {"nvmeHealth": {"/dev/nvme0": )" + health +
                  R"(}}, "errors": {}})");
}

// The row of the disk from its rate of use on.
std::string healthOf(const Tree& tree)
{
    const Rows rows = collected(tree, GROUP_STORAGE);
    if (rows.size() != 1)
        return std::to_string(rows.size()) + " rows";
    const size_t used = std::min(rows[0].find("PercentageUsed"), rows[0].find("Temperature"));
    return used == std::string::npos ? "" : rows[0].substr(used);
}
} // namespace

TEST(NvmeHealth, isInTheLogsBytes)
{
    NvmeHealthLog log{};
    log[0] = 0x04;
    log[1] = 0x38;
    log[2] = 0x01;
    log[3] = 98;
    log[4] = 10;
    log[5] = 255;
    log[48] = 0x01;
    log[49] = 0x02;
    log[55] = 0x80;
    log[128] = 0x10;
    log[129] = 0x27;
    EXPECT_EQ(parseNvmeHealth(log), (nlohmann::json{{"criticalWarning", 4},
                                                    {"temperature", 312},
                                                    {"availableSpare", 98},
                                                    {"percentageUsed", 255},
                                                    {"dataUnitsWritten", 0x8000000000000201},
                                                    {"powerOnHours", 10000}}));
    log[56] = 1;
    log[143] = 1;
    EXPECT_EQ(parseNvmeHealth(log)["dataUnitsWritten"], UINT64_MAX);
    EXPECT_EQ(parseNvmeHealth(log)["powerOnHours"], UINT64_MAX);
}

TEST(NvmeHealth, isToldWithTheDisk)
{
    const Tree tree;
    disk(tree);
    answer(tree, R"({"criticalWarning": 0, "temperature": 312, "availableSpare": 100, "percentageUsed": 3,
                     "dataUnitsWritten": 45678901, "powerOnHours": 2345})");
    EXPECT_EQ(healthOf(tree), "PercentageUsed=3|AvailableSpare=100|CriticalWarning=0|PowerOnHours=2345|"
                              "DataWrittenBytes=23387597312000|TemperatureCelsius=39");
    answer(tree, R"({"temperature": 0, "percentageUsed": 3, "dataUnitsWritten": 18446744073709551615})");
    EXPECT_EQ(healthOf(tree), "PercentageUsed=3|DataWrittenBytes=18446744073709551615");
    answer(tree, R"({"temperature": "hot", "percentageUsed": -1, "powerOnHours": [], "availableSpare": 1.5})");
    EXPECT_EQ(healthOf(tree), "");
    answer(tree, R"("well")");
    EXPECT_EQ(healthOf(tree), "");
}

TEST(NvmeHealth, thatIsRefusedIsToldAsRefused)
{
    const Tree tree;
    disk(tree);
    answer(tree, R"({"error": "EACCES", "call": "NVME_IOCTL_ADMIN_CMD"})");
    const std::string status = statusOf(tree, GROUP_STORAGE);
    EXPECT_NE(status.find("Result=Collected"), std::string::npos) << status;
    EXPECT_NE(status.find("Reason=NVME_IOCTL_ADMIN_CMD /dev/nvme0: Permission denied"), std::string::npos) << status;
}

TEST(NvmeHealth, ofAHeadIsThatOfItsFirstController)
{
    const Tree tree;
    const std::string head = "/sys/devices/virtual/nvme-subsystem/nvme-subsys0";
    tree.file(head + "/nvme1n1/size", "1000\n");
    tree.link(head + "/nvme1n1/device", "..");
    tree.folder("/sys/devices/pci0000:00/0000:01:00.0/nvme/nvme0");
    tree.link(head + "/nvme0", "../../../pci0000:00/0000:01:00.0/nvme/nvme0");
    tree.link("/sys/block/nvme1n1", ".." + head.substr(4) + "/nvme1n1");
    answer(tree, R"({"percentageUsed": 7})");
    EXPECT_EQ(healthOf(tree), "PercentageUsed=7");
}

TEST(Storage, hasTheTemperatureThatItsMonitorTells)
{
    const Tree tree;
    disk(tree);
    tree.file("/sys/devices/pci0000:00/0000:01:00.0/nvme/nvme0/hwmon2/temp1_input", "38850\n");
    EXPECT_EQ(healthOf(tree), "TemperatureCelsius=39");
    answer(tree, R"({"temperature": 314})");
    EXPECT_EQ(healthOf(tree), "TemperatureCelsius=41");
    const Tree disks;
    const std::string device = "/sys/devices/pci0000:00/ata1/host0/target0:0:0/0:0:0:0";
    disks.file(device + "/block/sda/size", "1000\n");
    disks.link(device + "/block/sda/device", "../..");
    disks.link("/sys/block/sda", ".." + device.substr(4) + "/block/sda");
    disks.file(device + "/hwmon/hwmon3/temp1_input", "-4000\n");
    EXPECT_EQ(healthOf(disks), "") << "no number of the catalog is below zero";
    disks.file(device + "/hwmon/hwmon3/temp1_input", "31000\n");
    EXPECT_EQ(healthOf(disks), "TemperatureCelsius=31");
}
