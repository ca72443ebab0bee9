// Batteries and sensors.

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

namespace
{
constexpr const char* kBattery = "/sys/class/power_supply/BAT0/";
constexpr const char* kChip = "/sys/class/hwmon/hwmon3/";

void files(const Tree& tree, const std::string& folder,
           std::initializer_list<std::pair<const char*, const char*>> contents)
{
    for (const auto& [name, content] : contents)
        tree.file(folder + name, content);
}
} // namespace

TEST(Battery, tellsEnergyInMilliwattHours)
{
    const Tree tree;
    files(tree, kBattery,
          {{"type", "Battery\n"},
           {"manufacturer", "SMP\n"},
           {"model_name", "02DL008\n"},
           {"serial_number", " 1234\n"},
           {"technology", "Li-poly\n"},
           {"energy_full_design", "57020000\n"},
           {"energy_full", "48110900\n"},
           {"cycle_count", "217\n"},
           {"status", "Discharging\n"}});
    EXPECT_EQ(collected(tree, GROUP_BATTERY),
              Rows{"Name=BAT0|Manufacturer=SMP|Model=02DL008|SerialNumber=1234|Technology=Li-poly|DesignCapacity=57020|"
                   "FullCapacity=48110|CycleCount=217|Status=Discharging"});
}

TEST(Battery, turnsChargeIntoEnergy)
{
    const Tree tree;
    tree.file(std::string(kBattery) + "type", "Battery\n");
    tree.file(std::string(kBattery) + "charge_full_design", "4000000\n");
    tree.file(std::string(kBattery) + "charge_full", "3500000\n");
    tree.file(std::string(kBattery) + "voltage_min_design", "11400000\n");
    EXPECT_EQ(collected(tree, GROUP_BATTERY), Rows{"Name=BAT0|DesignCapacity=45600|FullCapacity=39900"});
}

TEST(Battery, ofImpossibleNumbersTellsNone)
{
    const Tree tree;
    tree.file(std::string(kBattery) + "type", "Battery\n");
    tree.file(std::string(kBattery) + "charge_full_design", "18446744073709551615\n");
    tree.file(std::string(kBattery) + "charge_full", "4000000\n");
    tree.file(std::string(kBattery) + "voltage_min_design", "18446744073709551615\n");
    tree.file(std::string(kBattery) + "cycle_count", "-1\n");
    EXPECT_EQ(collected(tree, GROUP_BATTERY), Rows{"Name=BAT0"});
}

TEST(Battery, isNoOtherSupply)
{
    const Tree tree;
    tree.file("/sys/class/power_supply/AC/type", "Mains\n");
    tree.file("/sys/class/power_supply/odd/status", "Full\n");
    EXPECT_EQ(collected(tree, GROUP_BATTERY), Rows{});
}

TEST(Sensor, tellsEveryKindInItsUnit)
{
    const Tree tree;
    const std::string chip = kChip;
    tree.file(chip + "name", "nct6775\n");
    tree.link(chip + "device", "../../../nct6775.656");
    files(tree, chip,
          {{"temp1_input", "38500\n"},
           {"temp1_label", "SYSTIN\n"},
           {"temp2_input", "-4000\n"},
           {"temp2_max", "80000\n"},
           {"fan1_input", "1201\n"},
           {"in0_input", "1016\n"},
           {"curr1_input", "250\n"},
           {"power1_input", "14500000\n"},
           {"energy1_input", "9000000\n"},
           {"humidity1_input", "45100\n"},
           {"intrusion0_alarm", "1\n"},
           {"pwm1", "128\n"}});
    const std::string head = "Chip=nct6775|BusAddress=nct6775.656|";
    EXPECT_EQ(collected(tree, GROUP_SENSOR), (Rows{head + "Name=curr1|Kind=Current|Value=0.250000|Unit=A",
                                                   head + "Name=energy1|Kind=Energy|Value=9.000000|Unit=J",
                                                   head + "Name=fan1|Kind=Fan|Value=1201.000000|Unit=RPM",
                                                   head + "Name=humidity1|Kind=Humidity|Value=45.100000|Unit=%",
                                                   head + "Name=in0|Kind=Voltage|Value=1.016000|Unit=V",
                                                   head + "Name=power1|Kind=Power|Value=14.500000|Unit=W",
                                                   head + "Name=SYSTIN|Kind=Temperature|Value=38.500000|Unit=°C",
                                                   head + "Name=temp2|Kind=Temperature|Value=-4.000000|Unit=°C"}));
}

TEST(Sensor, isToldApartFromAnotherOfItsLabel)
{
    const Tree tree;
    const std::string chip = kChip;
    tree.file(chip + "name", "dell_smm\n");
    for (const char* name : {"temp1", "temp2"}) {
        tree.file(chip + name + "_input", "40000\n");
        tree.file(chip + name + "_label", "CPU\n");
    }
    EXPECT_EQ(collected(tree, GROUP_SENSOR),
              (Rows{"Chip=dell_smm|Name=CPU|Kind=Temperature|Value=40.000000|Unit=°C",
                    "Chip=dell_smm|Name=CPU (temp2)|Kind=Temperature|Value=40.000000|Unit=°C"}));
}

TEST(Sensor, ofAnOldDriverStandsInTheDevicesFolder)
{
    const Tree tree;
    tree.file("/sys/devices/platform/w83627hf.656/name", "w83627hf\n");
    tree.file("/sys/devices/platform/w83627hf.656/in0_input", "1500\n");
    tree.link(std::string(kChip) + "device", "../../../devices/platform/w83627hf.656");
    EXPECT_EQ(collected(tree, GROUP_SENSOR),
              Rows{"Chip=w83627hf|BusAddress=w83627hf.656|Name=in0|Kind=Voltage|Value=1.500000|Unit=V"});
}

TEST(Sensor, thatIsSwitchedOffHasNoValue)
{
    const Tree tree;
    tree.file(std::string(kChip) + "name", "amdgpu\n");
    tree.file(std::string(kChip) + "fan1_input", "\n");
    tree.file(std::string(kChip) + "fanx_input", "1\n");
    tree.file(std::string(kChip) + "_input", "1\n");
    EXPECT_EQ(collected(tree, GROUP_SENSOR), Rows{"Chip=amdgpu|Name=fan1|Kind=Fan|Unit=RPM"});
}
