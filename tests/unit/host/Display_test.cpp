// Adapters and monitors.

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"
#include "tests/unit/host/display/EdidBytes.h"

namespace
{
void function(const Tree& tree, const std::string& slot, const std::string& kind, const std::string& vendor,
              const std::string& device)
{
    const std::string folder = "/sys/devices/pci0000:00/" + slot;
    tree.file(folder + "/class", kind + '\n');
    tree.file(folder + "/vendor", vendor + '\n');
    tree.file(folder + "/device", device + '\n');
    tree.link(folder + "/subsystem", "../../../bus/pci");
    tree.link("/sys/bus/pci/devices/" + slot, "../../../devices/pci0000:00/" + slot);
}

// A card at a path below /sys/devices.
void card(const Tree& tree, const std::string& name, const std::string& device)
{
    tree.folder("/sys/devices/" + device);
    tree.link("/sys/devices/" + device + "/drm/" + name + "/device", "../..");
    tree.link("/sys/class/drm/" + name, "../../devices/" + device + "/drm/" + name);
}

void connector(const Tree& tree, const std::string& name, const std::string& status, const std::string& edid = "",
               const std::string& modes = "")
{
    tree.file("/sys/class/drm/" + name + "/status", status + '\n');
    tree.file("/sys/class/drm/" + name + "/edid", edid);
    tree.file("/sys/class/drm/" + name + "/modes", modes);
}

void frameBuffer(const Tree& tree, const std::string& device, const char* size, const char* depth)
{
    tree.file("/sys/class/graphics/fb0/virtual_size", size);
    tree.file("/sys/class/graphics/fb0/bits_per_pixel", depth);
    tree.folder("/sys/devices/" + device);
    tree.link("/sys/class/graphics/fb0/device", "../../../devices/" + device);
}

constexpr const char* kSlot = "0000:00:02.0";
} // namespace

TEST(Video, isAPciFunctionWithItsCard)
{
    const Tree tree;
    function(tree, kSlot, "0x030000", "0x8086", "0xa7a1");
    function(tree, "0000:00:1f.0", "0x060100", "0x8086", "0x519d");
    tree.link("/sys/devices/pci0000:00/0000:00:02.0/driver", "../../../bus/pci/drivers/i915");
    tree.file("/sys/devices/pci0000:00/0000:00:02.0/resource",
              "0x000000603c000000 0x000000603cffffff 0x0000000000140204\n"
              "0x0000000000000000 0x0000000000000000 0x0000000000000000\n"
              "0x0000004000000000 0x000000400fffffff 0x000000000014220c\n");
    tree.file("/usr/share/misc/pci.ids", "8086  Intel Corporation\n\ta7a1  Raptor Lake-P [Iris Xe Graphics]\n");
    card(tree, "card1", std::string("pci0000:00/") + kSlot);
    for (const char* name : {"card1-eDP-1", "card1-HDMI-A-1", "card1-DP-10", "card1-DP-2"})
        connector(tree, name, "disconnected");
    tree.folder("/sys/class/drm/renderD128");
    frameBuffer(tree, std::string("pci0000:00/") + kSlot, "1920,1200\n", "32\n");
    EXPECT_EQ(collected(tree, GROUP_VIDEO),
              Rows{"Index=1|ID=a922f86b81bda853cccfd06a1cb58168|AdapterName=Intel Corporation Raptor Lake-P [Iris Xe "
                   "Graphics]|Architecture=5|Colors=16777216|Horizontal=1920|Vertical=1200|Memory=262144|ChipType="
                   "Raptor Lake-P [Iris Xe Graphics]|BusAddress=0000:00:02.0|Driver=i915|"
                   "Connectors=DP-2,DP-10,HDMI-A-1,eDP-1"});
}

TEST(Video, ofUnknownNameHasItsDriversAndItsIds)
{
    const Tree tree;
    function(tree, kSlot, "0x038000", "0x1af4", "0x1050");
    card(tree, "card0", std::string("pci0000:00/") + kSlot + "/virtio0");
    connector(tree, "card0-Virtual-1", "connected", "", "1280x800\n1024x768\n");
    connector(tree, "card0-Virtual-2", "disconnected", "", "");
    EXPECT_EQ(collected(tree, GROUP_VIDEO),
              Rows{"Index=1|ID=3a894ed35ec61a75459ad4314285b867|Horizontal=1280|Vertical=800|ChipType=1af4:1050|"
                   "BusAddress=0000:00:02.0|Connectors=Virtual-1,Virtual-2"});
}

TEST(Video, hasWhatItsFirmwareSetUpWhenTheMachineStartedWithIt)
{
    const Tree tree;
    function(tree, "0000:00:01.0", "0x030000", "0x1234", "0x1111");
    function(tree, kSlot, "0x030000", "0x1234", "0x1111");
    tree.file("/sys/devices/pci0000:00/0000:00:02.0/boot_vga", "1\n");
    frameBuffer(tree, "platform/efi-framebuffer.0", "800,600\n", "16\n");
    card(tree, "card0", "platform/simple-framebuffer.0");
    tree.link("/sys/devices/platform/simple-framebuffer.0/driver", "../../../bus/platform/drivers/simple-framebuffer");
    const Rows rows = collected(tree, GROUP_VIDEO);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].find("Colors"), std::string::npos) << rows[0];
    EXPECT_NE(rows[1].find("|Colors=65536|Horizontal=800|Vertical=600|"), std::string::npos) << rows[1];
}

TEST(Video, ofABoardIsItsOwnDevice)
{
    const Tree tree;
    card(tree, "card0", "platform/gpu");
    tree.link("/sys/devices/platform/gpu/driver", "../../../bus/platform/drivers/vc4-drm");
    connector(tree, "card0-HDMI-A-1", "connected", "", "broken\n");
    EXPECT_EQ(collected(tree, GROUP_VIDEO),
              Rows{"Index=1|ID=abc0f98963511941ff2ab58fa9e3248c|AdapterName=vc4-drm|BusAddress=gpu|Driver=vc4-drm|"
                   "Connectors=HDMI-A-1"});
}

TEST(Video, hasTheMemoryThatItsDriverTells)
{
    const Tree tree;
    function(tree, kSlot, "0x030000", "0x1002", "0x73bf");
    const std::string folder = "/sys/devices/pci0000:00/0000:00:02.0/";
    tree.file(folder + "mem_info_vram_total", "17163091968\n");
    tree.file(folder + "vbios_version", "113-D4120500-101\n");
    tree.file(folder + "resource", "0x0 0xfffffff 0x14220c\n");
    const Rows rows = collected(tree, GROUP_VIDEO);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NE(rows[0].find("|Memory=16760832|"), std::string::npos) << rows[0];
    EXPECT_NE(rows[0].find("|BiosVersion=113-D4120500-101|"), std::string::npos) << rows[0];
}

TEST(Video, ofImpossibleRangesTellsNoMemory)
{
    for (const char* resource : {"0x10 0x0 0x14220c\n", "1 2 3\n", "0x0 0xff\n", "0x0 0xff 0x204\n",
                                 "x\n\n\n\n\n\n0x0 0xfffffff 0x14220c\n"}) {
        const Tree tree;
        function(tree, kSlot, "0x030000", "0x1002", "0x73bf");
        tree.file("/sys/devices/pci0000:00/0000:00:02.0/resource", resource);
        const Rows rows = collected(tree, GROUP_VIDEO);
        ASSERT_EQ(rows.size(), 1u);
        EXPECT_EQ(rows[0].find("Memory="), std::string::npos) << rows[0];
    }
}

TEST(Monitor, isWhatIsPluggedInAndTellsWhatItIs)
{
    const Tree tree;
    function(tree, kSlot, "0x030000", "0x8086", "0xa7a1");
    card(tree, "card1", std::string("pci0000:00/") + kSlot);
    const EdidBytes panel = EdidBytes()
                                .maker("AUO")
                                .put(10, {0xAD, 0x63})
                                .put(16, {41, 32})
                                .put(21, {30, 19})
                                .field(0, kPanelTiming)
                                .text(1, 0xFC, "B140UAN02.7");
    connector(tree, "card1-eDP-1", "connected", panel.bytes(std::string(128, '\0')));
    connector(tree, "card1-DP-1", "disconnected");
    EXPECT_EQ(
        collected(tree, GROUP_MONITOR),
        Rows{
            "Index=1|ID=50732bb32a956fbe4c3069d35de9883e|ManufacturerCodename=AUO|Name=B140UAN02.7|WeekManufactured=41|"
            "YearManufactured=2022|ApproxSizeInches=14|BusAddress=0000:00:02.0|Connector=eDP-1|ProductCode=25517|"
            "Width=301|Height=188|PreferredMode=1920x1200@59.95"});
    EXPECT_EQ(statusOf(tree, GROUP_MONITOR).find("Reason"), std::string::npos);
}

TEST(Monitor, whoseBlockIsBrokenIsAPlaceAlone)
{
    const Tree tree;
    card(tree, "card0", "platform/gpu");
    connector(tree, "card0-HDMI-A-1", "connected", EdidBytes().bytes().substr(0, 127));
    EXPECT_EQ(collected(tree, GROUP_MONITOR), Rows{"Index=1|BusAddress=gpu|Connector=HDMI-A-1"});
    EXPECT_NE(statusOf(tree, GROUP_MONITOR).find("Reason=/sys/class/drm/card0-HDMI-A-1/edid: no valid EDID block"),
              std::string::npos);
}
