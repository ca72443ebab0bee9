#include "host/input/InputDevices.h"

#include <gtest/gtest.h>

using namespace host;

namespace
{
// What a device's lines of bits say of it: kinds, keys, relative and absolute axes, properties.
std::optional<uint32_t> pointer(const std::string& bits)
{
    const auto devices = parseInputDevices("I: Bus=0003 Vendor=0 Product=0 Version=0\n" + bits, 64);
    return devices.size() == 1 ? devices[0].pointerType() : std::nullopt;
}
} // namespace

TEST(InputDevices, areParsedByTheirLines)
{
    const auto devices = parseInputDevices("I: Bus=0011 Vendor=0001 Product=0001 Version=ab41\n"
                                           "N: Name=\"AT \"Set 2\" = keyboard\"\n"
                                           "P: Phys=isa0060/serio0/input0\n"
                                           "S: Sysfs=/devices/platform/i8042/serio0/input/input4\n"
                                           "U: Uniq=\n"
                                           "H: Handlers=sysrq kbd event4 leds \n"
                                           "B: PROP=0\n"
                                           "B: EV=120013\n"
                                           "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n"
                                           "B: LED=7\n\n"
                                           "N: Name=\"Second\"\n"
                                           "H: Handlers=kbd eventful event event70000\n",
                                           64);
    ASSERT_EQ(devices.size(), 2u);
    EXPECT_EQ(devices[0].name, "AT \"Set 2\" = keyboard");
    EXPECT_EQ(devices[0].physicalPath, "isa0060/serio0/input0");
    EXPECT_EQ(devices[0].folder, "/devices/platform/i8042/serio0/input/input4");
    EXPECT_EQ(devices[0].events, "event4");
    EXPECT_EQ(devices[0].bus, 0x11u);
    EXPECT_EQ(devices[0].vendor, 1u);
    EXPECT_EQ(devices[0].busName(), "PS/2");
    EXPECT_TRUE(devices[0].repeats());
    EXPECT_TRUE(devices[0].isKeyboard());
    EXPECT_FALSE(devices[0].pointerType());
    EXPECT_TRUE(devices[0].keys[1] && devices[0].keys[63] && !devices[0].keys[0] && devices[0].keys[226]);
    EXPECT_EQ(devices[1].name, "Second");
    EXPECT_EQ(devices[1].events, "");
    EXPECT_EQ(devices[1].busName(), "");
    EXPECT_FALSE(devices[1].isKeyboard());
}

TEST(InputDevices, haveBitsInWordsOf32Or64)
{
    const std::string old = "B: EV=17\nB: KEY=ff0000 0 0 0 0 0 0 0 0\nB: REL=903\n";
    const auto devices = parseInputDevices(old, inputWordBits(old, "i686"));
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(devices[0].pointerType(), 3u);
    EXPECT_EQ(inputWordBits(old, "x86_64"), 64u);
    EXPECT_EQ(inputWordBits(old, "armv7l"), 32u);
    EXPECT_EQ(inputWordBits(old, "s390x"), 64u);
    EXPECT_EQ(inputWordBits("N: Name=\"123456789\"\nB: KEY=10000000000000 0\n", "i686"), 64u);
    EXPECT_EQ(inputWordBits("N: Name=\"123456789 123456789\"\nB: KEY=80000000 0\n", "i686"), 32u);
}

TEST(InputDevices, pointInTheirWay)
{
    EXPECT_EQ(pointer("B: EV=17\nB: KEY=ff0000 0 0 0 0\nB: REL=903\n"), 3u) << "mouse";
    EXPECT_EQ(pointer("B: PROP=20\nB: EV=7\nB: KEY=70000 0 0 0 0\nB: REL=3\n"), 5u) << "track point";
    EXPECT_EQ(pointer("B: PROP=5\nB: EV=b\nB: KEY=e520 10000 0 0 0 0\nB: ABS=2e0800000000003\n"), 7u) << "pad";
    EXPECT_EQ(pointer("B: PROP=2\nB: EV=b\nB: KEY=400 0 0 0 0 0\nB: ABS=260800000000003\n"), 8u) << "screen";
    EXPECT_EQ(pointer("B: PROP=0\nB: EV=b\nB: KEY=400 0 0 0 0 0\nB: ABS=3\n"), 8u) << "an old screen";
    EXPECT_EQ(pointer("B: PROP=2\nB: EV=1b\nB: KEY=1c03 0 0 0 0 0\nB: ABS=1000003\n"), 1u) << "pen";
    EXPECT_EQ(pointer("B: EV=1f\nB: KEY=70000 0 0 0 0\nB: ABS=3\n"), 3u) << "a virtual machine's";
    EXPECT_EQ(pointer("B: EV=1b\nB: KEY=7fdb000000000000 0 0 0 0\nB: ABS=3003f\n"), std::nullopt) << "game pad";
    EXPECT_EQ(pointer("B: PROP=40\nB: EV=9\nB: KEY=400 0 0 0 0 0\nB: ABS=7\n"), std::nullopt) << "accelerometer";
    EXPECT_EQ(pointer("B: EV=3\nB: KEY=10000000000000 0\n"), std::nullopt) << "power button";
    EXPECT_EQ(pointer("B: EV=5\nB: REL=3\n"), std::nullopt) << "axes alone";
}

TEST(InputDevices, ofHostileLinesAreNone)
{
    EXPECT_TRUE(parseInputDevices("", 64).empty());
    EXPECT_TRUE(parseInputDevices("\n\nx\n:\n", 64).empty());
    const auto devices =
        parseInputDevices("B: KEY=zz -1 fffffffffffffffff ff\nB: =\nB: \nB:\nI: Bus=fffff\nN: Name=\"\n", 64);
    ASSERT_EQ(devices.size(), 2u); // a line too short for a field ends a device
    EXPECT_TRUE(devices[0].keys[7] && !devices[0].keys[8] && devices[0].keys.count() == 8);
    EXPECT_FALSE(devices[1].bus);
    EXPECT_EQ(devices[1].name, "\"");
    std::string many = "B: KEY=";
    for (int i = 0; i < 1000; ++i)
        many += "ffffffffffffffff ";
    EXPECT_TRUE(parseInputDevices(many, 64)[0].keys.all());
}
