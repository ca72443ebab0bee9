// Keyboards and pointing devices.

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

namespace
{
constexpr const char* kKeyboard = "I: Bus=0011 Vendor=0001 Product=0001 Version=ab41\n"
                                  "N: Name=\"AT Translated Set 2 keyboard\"\n"
                                  "P: Phys=isa0060/serio0/input0\n"
                                  "S: Sysfs=/devices/platform/i8042/serio0/input/input4\n"
                                  "H: Handlers=sysrq kbd event4 leds \n"
                                  "B: EV=120013\n"
                                  "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n\n";
constexpr const char* kMouse = "I: Bus=0011 Vendor=0002 Product=000a Version=0000\n"
                               "N: Name=\"PS/2 Mouse\"\n"
                               "P: Phys=isa0060/serio1/input0\n"
                               "S: Sysfs=/devices/platform/i8042/serio1/input/input6\n"
                               "B: EV=7\n"
                               "B: KEY=70000 0 0 0 0\n"
                               "B: REL=3\n\n";
constexpr const char* kProgram = "I: Bus=0003 Vendor=0001 Product=0001 Version=0001\n"
                                 "N: Name=\"remapper\"\n"
                                 "P: Phys=\n"
                                 "S: Sysfs=/devices/virtual/input/input9\n"
                                 "B: EV=7\n"
                                 "B: KEY=70000 0 fffffffffffffffe fffffffffffffffe fffffffffffffffe\n"
                                 "B: REL=3\n\n";
constexpr const char* kDevices = "/proc/bus/input/devices";

void answers(const Tree& tree, const std::string& repeat)
{
    tree.file("/invhw-kernel.json", R"({"format": "invhw-kernel", "formatVersion": 1, "answers": {"keyboardRepeat": )"
                                    R"({"/dev/input/event4": )" +
                                        repeat + R"(}}, "errors": {}})");
}
} // namespace

TEST(Keyboard, tellsItsKeysAndTheMachinesLayout)
{
    const Tree tree;
    tree.file(kDevices, std::string(kMouse) + kKeyboard + kProgram);
    tree.file("/etc/default/keyboard", "# comment\nXKBMODEL=\"pc105\"\nXKBLAYOUT=\"de,us\"\n");
    answers(tree, R"({"delay": 250, "period": 33})");
    const std::string keyboard = "Type=AT Translated Set 2 keyboard|SubType=0011:0001:0001|";
    const std::string rest = "NumberofFunctionKeys=15|CharactersperSecond=30|RepeatDelay=250|Name=AT Translated Set 2 "
                             "keyboard|PhysicalPath=isa0060/serio0/input0|Bus=PS/2";
    EXPECT_EQ(collected(tree, GROUP_KEYBOARD), Rows{keyboard + "CodePage=de,us|" + rest});
    tree.file("/etc/vconsole.conf", "KEYMAP=de-latin1\n");
    EXPECT_EQ(collected(tree, GROUP_KEYBOARD), Rows{keyboard + "CodePage=de-latin1|" + rest});
}

TEST(Keyboard, thatMayNotBeAskedIsToldWithoutItsRepeat)
{
    const Tree tree;
    tree.file(kDevices, kKeyboard);
    answers(tree, R"({"error": "EACCES", "call": "EVIOCGREP"})");
    const Rows rows = collected(tree, GROUP_KEYBOARD);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].find("Repeat"), std::string::npos) << rows[0];
    EXPECT_NE(statusOf(tree, GROUP_KEYBOARD).find("Reason=EVIOCGREP /dev/input/event4: Permission denied"),
              std::string::npos);
}

TEST(Keyboard, thatDoesNotRepeatHasNoRate)
{
    const Tree tree;
    tree.file(kDevices, kKeyboard);
    answers(tree, R"({"delay": 0, "period": 0})");
    const Rows rows = collected(tree, GROUP_KEYBOARD);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].find("CharactersperSecond"), std::string::npos) << rows[0];
}

TEST(Keyboard, isFoundInSysToo)
{
    const Tree tree;
    const std::string folder = "/sys/devices/pci0000:00/0000:00:14.0/usb1/1-3/1-3:1.0/input/input7/";
    const std::initializer_list<std::pair<const char*, const char*>> files = {
        {"id/bustype", "0003\n"},
        {"id/vendor", "046d\n"},
        {"id/product", "c31c\n"},
        {"name", "Logitech USB Keyboard\n"},
        {"phys", "usb-0000:00:14.0-3/input0\n"},
        {"properties", "0\n"},
        {"capabilities/ev", "120013\n"},
        {"capabilities/key", "1000000000007 ff9f207ac14057ff febeffdfffefffff fffffffffffffffe\n"}};
    for (const auto& [name, content] : files)
        tree.file(folder + name, content);
    tree.folder(folder + "event7");
    tree.link("/sys/class/input/input7", "../../.." + folder.substr(0, folder.size() - 1));
    tree.link("/sys/class/input/event7", "../../.." + folder + "event7");
    EXPECT_EQ(collected(tree, GROUP_KEYBOARD),
              Rows{"Type=Logitech USB Keyboard|SubType=0003:046d:c31c|NumberofFunctionKeys=24|"
                   "Name=Logitech USB Keyboard|PhysicalPath=usb-0000:00:14.0-3/input0|Bus=USB"});
}

TEST(PointingDevice, isNumberedAndTellsItsButtons)
{
    const Tree tree;
    tree.file(kDevices, std::string(kKeyboard) + kMouse + kProgram +
                            "I: Bus=0018 Vendor=06cb Product=ce67 Version=0100\n"
                            "N: Name=\"SYNA8018:00 06CB:CE67 Touchpad\"\nP: Phys=i2c-SYNA8018:00\n"
                            "B: PROP=5\nB: EV=1b\nB: KEY=e520 10000 0 0 0 0\nB: ABS=2e0800000000003\n");
    tree.file("/sys/module/psmouse/parameters/resolution", "200\n");
    EXPECT_EQ(collected(tree, GROUP_POINTING_DEVICE),
              (Rows{"Index=1|ID=1a3518c3bca595f616372f75ed87c9d3|Type=Mouse|NumberofButtons=3|Model=PS/2 "
                    "Mouse|Sensitivity=200|Name=PS/2 Mouse|"
                    "PhysicalPath=isa0060/serio1/input0|Bus=PS/2",
                    "Index=2|ID=8ea5928cec7da914fcad66d6759e1eef|Type=Touch Pad|NumberofButtons=1|Model=SYNA8018:00 "
                    "06CB:CE67 Touchpad|"
                    "Name=SYNA8018:00 06CB:CE67 Touchpad|PhysicalPath=i2c-SYNA8018:00|Bus=I2C"}));
}
