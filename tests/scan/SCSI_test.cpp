// SCSI drives of the Storage group on machines that the test makes.

#include <gtest/gtest.h>

#include "FakeMachine.h"

// What a device answers, in the notation of a device node's record.
static std::string inquiry(const std::string& type, const std::string& product)
{
    return type + " @8 \"MAKER   " + product + std::string(20 - product.size(), ' ') + "\"\n";
}

static std::string ioctlIdentity(int type, int id, const std::string& product)
{
    const std::string typeText = std::to_string(type);
    return "SG_GET_SCSI_ID host 0 channel 0 id " + std::to_string(id) + " lun 0 type " + typeText +
           "\nSG_IO 12 00 00 00 60 00 = " + inquiry("0" + typeText, product);
}

static std::string streamIdentity(int type, const std::string& product)
{
    return "sg 12 00 00 00 ff 00 = " + inquiry("0" + std::to_string(type), product);
}

static const std::string kGeometry = "sg 1a 00 04 00 ff 00 = @14 000400 10\nsg 1a 00 03 00 ff 00 = @22 003f 0200\n";

static std::string blockNode(int id, const std::string& answers)
{
    return "SCSI_IOCTL_GET_IDLUN host 0 channel 0 id " + std::to_string(id) + " lun 0\n" + answers;
}

static std::string drive(const ScanResult& result, size_t row)
{
    std::string text;
    for (const char* name : {"Index", "Type", "Model", "Manufacturer", "SerialNumber", "Cylinders", "Sectors", "Heads",
                             "TotalSize", "SecurityEnabled"})
        text += (text.empty() ? "" : "|") + result.value("Storage", row, name);
    return text;
}

TEST(SCSI, aMachineWithoutGenericNodesHasNoDrives)
{
    FakeMachine machine;
    const ScanResult result = machine.scan();
    EXPECT_TRUE(result.rows("Storage").empty());
    EXPECT_TRUE(result.logHas("\nexit SCSI <"));
}

TEST(SCSI, aCdRomRepeatsTheGeometryOfTheDeviceBeforeIt)
{
    FakeMachine machine;
    machine.device("/dev/sg0", streamIdentity(5, "CDROM ONE") + kGeometry);
    machine.device("/dev/sg1", streamIdentity(0, "DISK") + kGeometry);
    machine.device("/dev/sg2", streamIdentity(5, "CDROM TWO") + ioctlIdentity(5, 3, "CDROM TWO DELUXE"));
    machine.device("/dev/sra", blockNode(3, ""));
    const ScanResult result = machine.scan();
    EXPECT_EQ(drive(result, 0), "1|CD-ROM|CDROM ON|MAKER||0|0|0|0|Unsupported");
    EXPECT_EQ(drive(result, 1), "2|Hard Disk|DISK|MAKER||1024|63|16|504|Unsupported");
    EXPECT_EQ(drive(result, 2), "3|CD-ROM|CDROM TWO DELUXE|MAKER||1024|63|16|504|Unsupported");
    EXPECT_TRUE(result.logHas("\nSCSI name=>/dev/sg1<\nSCSI errorcode=>0<\nSCSI resolveSCSItype=>30<\nAdd SCSI "
                              "index=>1< type=>30< model=>DISK< manufac=>MAKER< serial=>< cyl=>1024< sectors=>63< "
                              "heads=>16< size KB=>504<"));
}

TEST(SCSI, aDiskAmongTheFirstFourHasTheGeometryOfItsBlockNode)
{
    FakeMachine machine;
    machine.device("/dev/sg0", streamIdentity(0, "DISK") + ioctlIdentity(0, 1, "DISK") + kGeometry);
    machine.device("/dev/sdd", blockNode(1, "HDIO_GETGEO heads 255 sectors 63 cylinders 4462\nBLKGETSIZE 71687372\n"
                                            "BLKGETSIZE64 36703934464\n"));
    EXPECT_EQ(drive(machine.scan(), 0), "1|Hard Disk|DISK|MAKER||4462|63|255|35003|Unsupported");
}

TEST(SCSI, aDiskOnTheFifthNodeHasTheGeometryOfItsModePages)
{
    FakeMachine machine;
    machine.device("/dev/sg0",
                   streamIdentity(0, "DISK WITH A LONG") + ioctlIdentity(0, 1, "DISK WITH A LONG") + kGeometry);
    machine.device("/dev/sde", blockNode(1, "HDIO_GETGEO heads 255 sectors 63 cylinders 4462\nBLKGETSIZE 71687372\n"));
    EXPECT_EQ(drive(machine.scan(), 0), "1|Hard Disk|DISK WIT|MAKER||1024|63|16|504|Unsupported");
}

// Devices differ in one number of their address; only the block node of all four is that of the generic node.
TEST(SCSI, aBlockNodeBelongsToTheDeviceOfItsWholeAddress)
{
    static constexpr struct {
        const char* address;
        size_t rows;
    } kNodes[] = {
        {"host 1 channel 2 id 3 lun 4", 1}, {"host 0 channel 2 id 3 lun 4", 0}, {"host 1 channel 0 id 3 lun 4", 0},
        {"host 1 channel 2 id 0 lun 4", 0}, {"host 1 channel 2 id 3 lun 0", 0},
    };
    for (const auto& node : kNodes) {
        FakeMachine machine;
        machine.device("/dev/sg0", "open read-only\nSG_GET_SCSI_ID host 1 channel 2 id 3 lun 4 type 0\n"
                                   "SG_IO 12 00 00 00 60 00 = " +
                                       inquiry("00", "DISK"));
        machine.device("/dev/sda", std::string("SCSI_IOCTL_GET_IDLUN ") + node.address +
                                       "\nHDIO_GETGEO heads 16 sectors 63 cylinders 1024\nBLKGETSIZE 1032192\n");
        EXPECT_EQ(machine.scan().rows("Storage").size(), node.rows) << node.address;
    }
}

// Two adapters number their devices alike.
TEST(SCSI, devicesOfTheSameNumbersOnTwoHostsHaveTheirOwnNodes)
{
    FakeMachine machine;
    for (const char* host : {"0", "1"}) {
        machine.device(std::string("/dev/sg") + host, std::string("open read-only\nSG_GET_SCSI_ID host ") + host +
                                                          " channel 0 id 1 lun 0 type 0\nSG_IO 12 00 00 00 60 00 = " +
                                                          inquiry("00", std::string("DISK ") + host));
    }
    const std::string geometry = "HDIO_GETGEO heads 16 sectors 63 cylinders ";
    machine.device("/dev/sda", "SCSI_IOCTL_GET_IDLUN host 1 channel 0 id 1 lun 0\n" + geometry + "111\n");
    machine.device("/dev/sdb", "SCSI_IOCTL_GET_IDLUN host 0 channel 0 id 1 lun 0\n" + geometry + "222\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(drive(result, 0), "1|Hard Disk|DISK 0|MAKER||222|63|16|0|Unsupported");
    EXPECT_EQ(drive(result, 1), "2|Hard Disk|DISK 1|MAKER||111|63|16|0|Unsupported");
}

TEST(SCSI, theSizeOfADiskIsThatInBytesWhereItIsTold)
{
    static constexpr struct {
        const char* answers;
        const char* megabytes;
    } kCases[] = {
        {"BLKGETSIZE 2048000\n", "1000"},
        {"BLKGETSIZE 2048000\nBLKGETSIZE64 0\n", "1000"},
        {"BLKGETSIZE 2048000\nBLKGETSIZE64 error EINVAL\n", "1000"},
        {"BLKGETSIZE 2048000\nBLKGETSIZE64 2097152000\n", "2000"},
        {"BLKGETSIZE 2048000\nBLKGETSIZE64 2048000\n", "1000"}, // bytes that equal the sectors are not believed
        {"BLKGETSIZE 0xC0000000\nBLKGETSIZE64 1649267441664\n", "1572864"},
        {"BLKGETSIZE 0xC0000000\nBLKGETSIZE64 0xFFFFFFFFC0000000\n", "-524288"}, // the sign-extended count itself
        // More sectors than 32 bits hold: a 32-bit process is not told.
        {"BLKGETSIZE 0x100000000\nBLKGETSIZE64 2199023255552\n", sizeof(long) == 8 ? "2097152" : "0"},
        {"BLKGETSIZE64 2097152000\n", "0"},
        {"", "0"},
    };
    for (const auto& c : kCases) {
        FakeMachine machine;
        machine.device("/dev/sg0", streamIdentity(0, "DISK") + ioctlIdentity(0, 1, "DISK"));
        machine.device("/dev/sda",
                       blockNode(1, std::string("HDIO_GETGEO heads 16 sectors 63 cylinders 1024\n") + c.answers));
        EXPECT_EQ(machine.scan().value("Storage", 0, "TotalSize"), c.megabytes) << c.answers;
    }
}

TEST(SCSI, aTapeOnANumberedNodeIsATapeAllTheSame)
{
    FakeMachine machine;
    machine.device("/dev/sg0", streamIdentity(1, "DAT DRIVE MODEL") + ioctlIdentity(1, 1, "DAT DRIVE MODEL"));
    machine.device("/dev/st0", blockNode(1, ""));
    EXPECT_EQ(drive(machine.scan(), 0), "1|Tape Cartridge|DAT DRIV|MAKER||0|0|0|0|Unsupported");
    machine.device("/dev/stc", blockNode(1, ""));
    EXPECT_EQ(drive(machine.scan(), 0), "1|Tape Cartridge|DAT DRIVE MODEL|MAKER||0|0|0|0|Unsupported");
}

TEST(SCSI, aSerialNumberEndsAtItsFirstUnprintableCharacter)
{
    FakeMachine machine;
    machine.device("/dev/sg0", streamIdentity(0, "DISK") + "sg 12 01 80 00 ff 00 = 00 80 00 05 \"AB12\\n\"\n");
    machine.device("/dev/sg1", streamIdentity(0, "DISK") + "sg 12 01 80 00 ff 00 = 00 80 00 0a \"  AB\\x80"
                                                           "12345\"\n");
    machine.device("/dev/sg2", streamIdentity(0, "DISK") + "sg 12 01 80 00 ff 00 = 00 80 00 ff \"X\" *250\n");
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.value("Storage", 0, "SerialNumber"), "AB12");
    EXPECT_EQ(result.value("Storage", 1, "SerialNumber"), "AB");
    EXPECT_EQ(result.value("Storage", 2, "SerialNumber"), std::string(251, 'X'));
}

TEST(SCSI, sectorsOf520BytesLeaveTheDeviceToItsIoctls)
{
    FakeMachine machine;
    const std::string pages = "sg 1a 00 03 00 ff 00 = @22 003f 0208\nsg 12 01 80 00 ff 00 = 00 80 00 02 \"AB\"\n";
    machine.device("/dev/sg0", streamIdentity(0, "ALONE") + pages);
    machine.device("/dev/sg1", streamIdentity(8, "CHANGER") + ioctlIdentity(8, 2, "CHANGER") + pages);
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.rows("Storage").size(), 1u);
    EXPECT_EQ(drive(result, 0), "1|Unknown|CHANGER|MAKER||0|0|0|0|Unsupported");
    EXPECT_TRUE(result.logHas("\nSCSI name=>/dev/sg0<\nSCSI errorcode=>70<\nSCSI name=>/dev/sg1<\nSCSI errorcode=>70<"
                              "\nSCSI resolveSCSItype=>1<\nAdd SCSI index=>0<"));
}

TEST(SCSI, aNodeThatOpensOnlyReadOnlyIsIdentifiedByIoctl)
{
    FakeMachine machine;
    machine.device("/dev/sg0", "open read-only\n" + ioctlIdentity(0, 1, "DISK"));
    machine.device("/dev/sg1", "open read-only\n" + ioctlIdentity(7, 2, "MAGNETO-OPTICAL"));
    machine.device("/dev/sg2", "open read-only\n" + ioctlIdentity(6, 3, "SCANNER"));
    machine.device("/dev/sg3", "open read-only\n");
    machine.device("/dev/sda", blockNode(1, "HDIO_GETGEO heads 16 sectors 63 cylinders 1024\nBLKGETSIZE 1032192\n"));
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 2u);
    EXPECT_EQ(drive(result, 0), "1|Hard Disk|DISK|MAKER||1024|63|16|504|Unsupported");
    EXPECT_EQ(drive(result, 1), "2|Magneto-Optical|MAGNETO-OPTICAL|MAKER||1024|63|16|504|Unsupported");
    EXPECT_TRUE(result.logHas("\nSCSI errorcode=>10<\nSCSI resolveSCSItype=>-1<\nSCSI name=>/dev/sg3<"));
}

TEST(SCSI, lettersComeBeforeNumbers)
{
    FakeMachine machine;
    machine.device("/dev/sga", streamIdentity(0, "LETTERED"));
    machine.device("/dev/sg0", streamIdentity(0, "NUMBERED"));
    const ScanResult result = machine.scan();
    ASSERT_EQ(result.rows("Storage").size(), 1u);
    EXPECT_EQ(result.value("Storage", 0, "Model"), "LETTERED");
}

// Every byte that 255 nodes add to the report and the log of a machine without any.
TEST(SCSI, enumerationStopsForGoodAfter255Nodes)
{
    constexpr int kNodes = 255;
    FakeMachine machine;
    const ScanResult bare = machine.scan();
    for (int i = 0; i <= kNodes; ++i)
        machine.device("/dev/sg" + std::to_string(i), streamIdentity(8, "NODE " + std::to_string(i)));
    ScanOptions options;
    options.secondsAllowed = 120;
    const ScanResult result = machine.scan(options);
    ASSERT_TRUE(result.ended()) << result.errors;

    const std::string stopped = "\n this is the pre-increment value  lastdrive  = 255 "
                                "\n we have already processed a possibly valid dev/sg255";
    std::string rows;
    std::string lines;
    for (int i = 0; i < kNodes; ++i) {
        const std::string node = std::to_string(i);
        const std::string model = "NODE " + node;
        rows += "\n\t<serviceData>\n\t\t<name>Storage</name>\n\t\t<value>\n\t\t\t<Storage version=\"1\">"
                "\n\t\t\t\t<Index IsKey=\"1\">" +
                std::to_string(i + 1) +
                "</Index>"
                "\n\t\t\t\t<ID IsKey=\"1\">4a7d1ed414474e4033ac29ccb8653d9b</ID>" // MD5 of "0000"
                "\n\t\t\t\t<Type>Unknown</Type>"
                "\n\t\t\t\t<Model>" +
                model +
                "</Model>"
                "\n\t\t\t\t<Manufacturer>MAKER</Manufacturer>"
                "\n\t\t\t\t<SerialNumber></SerialNumber>"
                "\n\t\t\t\t<Cylinders>0</Cylinders>"
                "\n\t\t\t\t<Sectors>0</Sectors>"
                "\n\t\t\t\t<Heads>0</Heads>"
                "\n\t\t\t\t<TotalSize>0</TotalSize>"
                "\n\t\t\t\t<SecurityEnabled>Unsupported</SecurityEnabled>"
                "\n\t\t\t</Storage>\n\t\t</value>\n\t</serviceData>\n";
        lines += "\nSCSI name=>/dev/sg" + node + "<\nSCSI errorcode=>0<\nSCSI resolveSCSItype=>1<" +
                 (i == kNodes - 1 ? stopped : "") + "\nAdd SCSI index=>" + node + "< type=>1< model=>" + model +
                 "< manufac=>MAKER< serial=>< cyl=>0< sectors=>0< heads=>0< size KB=>0<";
    }
    EXPECT_EQ(result.report, withInserted(bare.report, "\n\t<serviceData>\n\t\t<name>Regional</name>", rows));
    const std::string log = withInserted(bare.log, "\nexit SCSI <", lines);
    EXPECT_EQ(result.log,
              withInserted(log, "\n Sun Sep  9 01:46:40 2001\n  exit gatherFloppyDriveInformation()", stopped));
}

TEST(SCSI, aReplyThatCannotBeReadIsSaidOnStandardError)
{
    FakeMachine machine;
    machine.device("/dev/sg0", "sg 12 00 00 00 ff 00 read-error EIO\n" + kGeometry);
    const ScanResult result = machine.scan();
    EXPECT_EQ(result.errors, "Input/output error\n");
    EXPECT_EQ(drive(result, 0), "1|Hard Disk||||1024|63|16|504|Unsupported");
}
