#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"

namespace
{
// A device on USB with what it says of itself.
void usb(const Tree& tree, const std::string& name, const std::string& ids, const std::string& product)
{
    const std::string folder = "/sys/devices/pci0000:00/0000:00:14.0/usb1/" + name + '/';
    tree.file(folder + "idVendor", ids.substr(0, 4) + '\n');
    tree.file(folder + "idProduct", ids.substr(5) + '\n');
    tree.file(folder + "product", product);
    if (!std::filesystem::exists(tree.at("/sys/devices/pci0000:00/0000:00:14.0/class"))) {
        tree.file("/sys/devices/pci0000:00/0000:00:14.0/class", "0x0c0330\n");
        tree.link("/sys/devices/pci0000:00/0000:00:14.0/subsystem", "../../../bus/pci");
    }
}

// An interface of it and what the kernel has of that in a class.
void interface(const Tree& tree, const std::string& usbInterface, const std::string& codes, const std::string& driver,
               const std::string& kind, const std::string& name)
{
    const std::string device = usbInterface.substr(0, usbInterface.find(':'));
    const std::string folder = "/sys/devices/pci0000:00/0000:00:14.0/usb1/" + device + '/' + usbInterface;
    tree.file(folder + "/bInterfaceClass", codes.substr(0, 2) + '\n');
    tree.file(folder + "/bInterfaceSubClass", codes.substr(2, 2) + '\n');
    if (codes.size() > 4)
        tree.file(folder + "/bInterfaceProtocol", codes.substr(4, 2) + '\n');
    tree.link(folder + "/driver", "../../../../../../bus/usb/drivers/" + driver);
    tree.link(folder + '/' + kind + '/' + name + "/device", "../..");
    tree.link("/sys/class/" + kind + '/' + name, "../.." + folder.substr(4) + '/' + kind + '/' + name);
}
} // namespace

TEST(Modem, withSeveralInterfacesIsOne)
{
    const Tree tree;
    usb(tree, "1-3", "1199:9091", "EM7565\n");
    tree.file("/sys/devices/pci0000:00/0000:00:14.0/usb1/1-3/removable", "fixed\n");
    interface(tree, "1-3:1.0", "020200", "cdc_acm", "tty", "ttyACM0");
    interface(tree, "1-3:1.1", "020201", "cdc_acm", "tty", "ttyACM1");
    interface(tree, "1-3:1.2", "020201", "cdc_acm", "tty", "ttyACM2");
    interface(tree, "1-3:1.12", "020e00", "cdc_mbim", "net", "wwan0");
    tree.file("/usr/share/misc/usb.ids", "1199  Sierra Wireless, Inc.\n\t9091  EM7565 LTE\n");
    EXPECT_EQ(collected(tree, GROUP_MODEM), Rows{"Index=1|ID=9fd9594a72f7a74c4ac875fadff1ffba|Description=EM7565|"
                                                 "Manufacturer=Sierra Wireless, Inc.|ModemType=Internal Modem|"
                                                 "Port=ttyACM1|Interface=wwan0|Driver=cdc_mbim"});
}

TEST(Modem, takesCommands)
{
    const Tree tree;
    usb(tree, "1-1", "0572:1340", "USB Modem\n");
    interface(tree, "1-1:1.0", "0202", "cdc_acm", "tty", "ttyACM0");
    usb(tree, "1-2", "2e8a:000a", "Pico\n");
    interface(tree, "1-2:1.0", "020200", "cdc_acm", "tty", "ttyACM1");
    usb(tree, "1-4", "1234:5678", "Other\n");
    interface(tree, "1-4:1.0", "0a0001", "cdc_acm", "tty", "ttyACM2");
    interface(tree, "1-4:1.1", "020201", "usbserial", "tty", "ttyUSB0");
    const Rows rows = collected(tree, GROUP_MODEM);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NE(rows[0].find("|ModemType=External Modem|Port=ttyACM0|Interface=ttyACM0|Driver=cdc_acm"),
              std::string::npos)
        << rows[0];
}

TEST(Modem, isAPciFunction)
{
    const Tree tree;
    const std::string folder = "/sys/devices/pci0000:00/0000:00:0a.0";
    tree.file(folder + "/class", "0x070300\n");
    tree.file(folder + "/vendor", "0x11c1\n");
    tree.file(folder + "/device", "0x0450\n");
    tree.link(folder + "/subsystem", "../../../bus/pci");
    tree.link(folder + "/driver", "../../../bus/pci/drivers/serial");
    tree.link("/sys/bus/pci/devices/0000:00:0a.0", "../../.." + folder.substr(4));
    tree.file("/usr/share/misc/pci.ids", "11c1  LSI Corporation\n\t0450  LT WinModem\n");
    EXPECT_EQ(collected(tree, GROUP_MODEM),
              Rows{"Index=1|ID=872fc7bcebced33f09cc9fecd1f8f6cd|Description=LT WinModem|Manufacturer=LSI "
                   "Corporation|ModemType=Internal Modem|Driver=serial"});
    tree.link(folder + "/tty/ttyS4/device", "../..");
    tree.link("/sys/class/tty/ttyS4", "../.." + folder.substr(4) + "/tty/ttyS4");
    tree.file("/sys/class/tty/console/active", "tty0\n");
    EXPECT_EQ(collected(tree, GROUP_MODEM),
              Rows{"Index=1|ID=073268601d9eaa08054932e897dfac84|Description=LT WinModem|Manufacturer=LSI "
                   "Corporation|ModemType=Internal Modem|Port=ttyS4|"
                   "Interface=ttyS4|Driver=serial"});
}
