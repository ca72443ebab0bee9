// USB devices, serial and parallel ports, trusted platform modules, firmware resources, kernel modules.

#include <gtest/gtest.h>

#include "report/catalog/AttributeIds.h"
#include "tests/unit/host/Collected.h"
#include "tests/unit/host/firmware/FirmwareBytes.h"

namespace
{
constexpr const char* kUsb = "/sys/bus/usb/devices/";
constexpr const char* kHub = "/sys/devices/pci0000:00/0000:00:14.0/usb1";

void files(const Tree& tree, const std::string& folder,
           std::initializer_list<std::pair<const char*, const char*>> contents)
{
    for (const auto& [name, content] : contents)
        tree.file(folder + '/' + name, content);
}

// A bus with a root hub, a keyboard that leaves its class to its interfaces, and a stick on a hub.
void makeBus(const Tree& tree)
{
    const std::string hub = kHub;
    tree.link("/sys/devices/pci0000:00/0000:00:14.0/subsystem", "../../../bus/pci");
    files(tree, hub,
          {{"idVendor", "1d6b\n"},
           {"idProduct", "0002\n"},
           {"bDeviceClass", "09\n"},
           {"bDeviceSubClass", "00\n"},
           {"devnum", "1\n"},
           {"devpath", "0\n"},
           {"maxchild", "16\n"},
           {"product", "xHCI Host Controller\n"},
           {"serial", "0000:00:14.0\n"},
           {"speed", "480\n"},
           {"version", " 2.00\n"}});
    files(tree, hub + "/1-4.2",
          {{"idVendor", "046d\n"},
           {"idProduct", "c31c\n"},
           {"bDeviceClass", "00\n"},
           {"bDeviceSubClass", "00\n"},
           {"devnum", "7\n"},
           {"devpath", "4.2\n"},
           {"maxchild", "0\n"},
           {"speed", "1.5\n"},
           {"version", " 1.10\n"}});
    files(tree, hub + "/1-4.2:1.0", {{"bInterfaceClass", "03\n"}, {"bInterfaceSubClass", "01\n"}});
    files(tree, hub + "/1-4", {{"devnum", "5\n"}});
    tree.link(hub + "/1-4.2:1.0/driver", "../../../../bus/usb/drivers/usbhid");
    tree.link(hub + "/1-4.2/driver", "../../../../bus/usb/drivers/usb");
    tree.link(std::string(kUsb) + "usb1", "../../../.." + hub);
    for (const char* name : {"1-4", "1-4.2", "1-4.2:1.0"})
        tree.link(kUsb + std::string(name), "../../../.." + hub + '/' + name);
}
} // namespace

TEST(USBDevice, isNamedByItselfOrByItsIds)
{
    const Tree tree;
    makeBus(tree);
    tree.file("/usr/share/misc/usb.ids", "046d  Logitech, Inc.\n\tc31c  Keyboard K120\n1d6b  Linux Foundation\n"
                                         "\t0002  2.0 root hub\nC 03  Human Interface Device\n");
    EXPECT_EQ(
        collected(tree, GROUP_USB_DEVICE),
        (Rows{"Index=1|ID=3a170a9fe4f47efa37d23ad521b9098e|HostController=0000:00:14.0|DeviceAddress=5|ParentAddress=1|"
              "BusPath=1-4",
              "Index=2|ID=871f770216c987f0bbca8a324da0bad9|HostController=0000:00:14.0|USBVersion=1.10|DeviceClass="
              "Human Interface|DeviceSubclass=1|"
              "DeviceAddress=7|PortNumber=2|NumberofPorts=0|IsHub=False|ParentAddress=5|VendorID=1133|ProductID=49948|"
              "Manufacturer=Logitech, Inc.|Product=Keyboard K120|BusPath=1-4.2|Speed=1.500000|Driver=usbhid|"
              "VendorName=Logitech, Inc.",
              "Index=3|ID=536a40b7104cbfba398dd482f0fd5fce|HostController=0000:00:14.0|USBVersion=2.00|DeviceClass=HUB|"
              "DeviceSubclass=0|"
              "DeviceAddress=1|PortNumber=0|NumberofPorts=16|IsHub=True|VendorID=7531|ProductID=2|"
              "Manufacturer=Linux Foundation|Product=xHCI Host Controller|SerialNumber=0000:00:14.0|BusPath=usb1|"
              "Speed=480.000000|VendorName=Linux Foundation"}));
}

TEST(USBDevice, ofAControllerThatIsNoPciFunctionHasTheHubsName)
{
    const Tree tree;
    files(tree, "/sys/devices/platform/soc/fe980000.usb/usb1", {{"product", "DWC OTG Controller\n"}});
    tree.link(std::string(kUsb) + "usb1", "../../../../sys/devices/platform/soc/fe980000.usb/usb1");
    const Rows rows = collected(tree, GROUP_USB_DEVICE);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NE(rows[0].find("|HostController=DWC OTG Controller|"), std::string::npos) << rows[0];
}

TEST(USBDevice, ofBrokenFilesIsTheNameAlone)
{
    const Tree tree;
    files(tree, std::string(kUsb) + "2-1",
          {{"idVendor", "xyz\n"},
           {"idProduct", "12345678901234567890\n"},
           {"bDeviceClass", "\n"},
           {"speed", "fast\n"},
           {"devnum", ""}});
    const Rows rows = collected(tree, GROUP_USB_DEVICE);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].substr(rows[0].rfind('|') + 1), "BusPath=2-1");
}

TEST(SerialPort, isToldWhereThereIsHardware)
{
    const Tree tree;
    const std::string tty = "/sys/class/tty/";
    files(tree, tty + "ttyS0", {{"type", "4\n"}, {"port", "0x3F8\n"}, {"irq", "4\n"}, {"iomem_base", "0x0\n"}});
    files(tree, tty + "ttyS1", {{"type", "0\n"}, {"port", "0x2F8\n"}, {"irq", "3\n"}});
    files(tree, tty + "ttyAMA0", {{"type", "32\n"}, {"port", "0x0\n"}, {"irq", "0\n"}, {"iomem_base", "0x9000000\n"}});
    files(tree, tty + "tty0", {{"active", "tty1\n"}});
    tree.folder(tty + "ttyUSB0");
    for (const char* name : {"ttyS0", "ttyS1", "ttyAMA0", "ttyUSB0"})
        tree.link(tty + name + "/device", "../../../devices/somewhere");
    EXPECT_EQ(collected(tree, GROUP_SERIAL_PORT),
              (Rows{"Index=1|Name=ttyAMA0|Address=0x9000000|UARTType=PL011",
                    "Index=2|Name=ttyS0|Address=0x3F8|IRQ=4|UARTType=16550A", "Index=3|Name=ttyUSB0"}));
}

TEST(ParallelPort, hasAnAddressAndAnInterrupt)
{
    const Tree tree;
    const std::string ports = "/proc/sys/dev/parport/";
    files(tree, ports + "parport0", {{"base-addr", "888\t1912\n"}, {"irq", "7\n"}});
    files(tree, ports + "parport1", {{"base-addr", "0\t0\n"}, {"irq", "-1\n"}});
    files(tree, ports + "default", {{"timeslice", "200\n"}});
    EXPECT_EQ(collected(tree, GROUP_PARALLEL_PORT),
              (Rows{"Index=1|Name=parport0|Address=0x378|IRQ=7", "Index=2|Name=parport1"}));
}

TEST(TPM, ofTheFirstFamilyTellsItsMaker)
{
    const Tree tree;
    tree.file("/sys/class/tpm/tpm0/caps", "Manufacturer: 0x49465800\nTCG version: 1.2\nFirmware version: 3.19\n");
    tree.file("/sys/class/tpm/tpm1/tpm_version_major", "2\n");
    EXPECT_EQ(collected(tree, GROUP_TPM), (Rows{"Name=tpm0|Version=1.2|Manufacturer=IFX", "Name=tpm1|Version=2.0"}));
}

TEST(TPM, isDescribedByTheFirmwaresTable)
{
    const Tree tree;
    tree.file("/sys/class/tpm/tpm0/tpm_version_major", "2\n");
    tree.file("/sys/firmware/dmi/tables/DMI",
              StructureBytes(43, 31).put(4, 0x43544E, 4).put(8, 2, 1).bytes() + StructureBytes(127, 4).bytes());
    EXPECT_EQ(collected(tree, GROUP_TPM), Rows{"Name=tpm0|Version=2.0|Manufacturer=NTC"});
}

TEST(FirmwareResource, isAnEntryOfTheTable)
{
    const Tree tree;
    files(tree, "/sys/firmware/efi/esrt/entries/entry0",
          {{"fw_class", "A6DBCD21-1234-4321-8765-0123456789AB\n"},
           {"fw_type", "1\n"},
           {"fw_version", "65590\n"},
           {"lowest_supported_fw_version", "1\n"},
           {"capsule_flags", "0x0\n"}});
    EXPECT_EQ(collected(tree, GROUP_FIRMWARE_RESOURCE),
              Rows{"Class=a6dbcd21-1234-4321-8765-0123456789ab|Type=System Firmware|Version=65590|LowestVersion=1"});
}

TEST(KernelModule, tellsWhatTaintsTheKernel)
{
    const Tree tree;
    tree.file("/proc/modules", "ext4 1032192 2 - Live 0x0000000000000000\n"
                               "nvidia 56688640 0 - Live 0x0000000000000000 (POE)\n"
                               "../x 1 0 - Live 0x0000000000000000\n"
                               "broken\n");
    tree.file("/sys/module/nvidia/version", "535.183.01\n");
    tree.file("/sys/module/module/parameters/sig_enforce", "N\n");
    EXPECT_EQ(collected(tree, GROUP_KERNEL_MODULE),
              (Rows{"Name=ext4|SizeBytes=1032192|Signed=Yes|OutOfTree=No",
                    "Name=nvidia|Version=535.183.01|SizeBytes=56688640|Signed=No|OutOfTree=Yes"}));
}

TEST(KernelModule, isNeitherSignedNorUnsignedWhereNothingChecks)
{
    const Tree tree;
    tree.file("/proc/modules", "ext4 1032192 2 - Live 0x0000000000000000\n");
    EXPECT_EQ(collected(tree, GROUP_KERNEL_MODULE), Rows{"Name=ext4|SizeBytes=1032192|OutOfTree=No"});
}
