#include "linux/storage/SCSIDrives.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>

#include "com/Owned.h"
#include "linux/DeviceNode.h"
#include "linux/storage/SCSIDevice.h"
#include "linux/storage/SCSIIoctl.h"

TEST(SCSIDrives, everyPeripheralTypeHasItsStorageType)
{
    const int expected[] = {30, 3, -1, -1, 22, 17, -1, 22, 1, 1};
    for (int type = 0; type < 10; ++type)
        EXPECT_EQ(resolveSCSItype(type), expected[type]) << type;
    EXPECT_EQ(resolveSCSItype(31), 1);
    EXPECT_EQ(resolveSCSItype(-1), 1);
}

static std::string label(const SCSIInfo& info)
{
    return OwnedText(info.getTypeLabel()).get();
}

TEST(SCSIDrives, theKindsOfDevicesHaveTheirLabelsAndFlags)
{
    SCSIIdentity identity;
    identity.vendor = "VENDOR";
    const SCSIInfo generic(identity);
    const SCSIDiskInfo disk(identity, {.heads = 16, .cylinders = 1024, .sectors = 63, .kilobytes = 504 * 1024 + 1023});
    const SCSIRemovableInfo cdRom(identity);
    const SCSITapeInfo tape(identity);
    EXPECT_EQ(label(generic), "Generic");
    EXPECT_EQ(label(disk), "Hard Disk");
    EXPECT_EQ(label(cdRom), "CD-ROM");
    EXPECT_EQ(label(tape), "Tape");
    EXPECT_FALSE(generic.disk() || generic.removable() || generic.tape());
    EXPECT_TRUE(disk.disk() && !disk.removable() && !disk.tape());
    EXPECT_TRUE(!cdRom.disk() && cdRom.removable() && !cdRom.tape());
    EXPECT_TRUE(!tape.disk() && !tape.removable() && tape.tape());
    EXPECT_EQ(disk.geometry().megabytes(), 504u);
    EXPECT_EQ(tape.identity().vendor, "VENDOR");
}

TEST(SCSIDrives, megabytesAreCutTo32Bits)
{
    EXPECT_EQ(get_megabytes(0), 0u);
    EXPECT_EQ(get_megabytes(2047), 0u);
    EXPECT_EQ(get_megabytes(2048), 1u);
    EXPECT_EQ(get_megabytes(71687372), 35003u);
    EXPECT_EQ(get_megabytes(0xFFFFFFFFULL), 0x1FFFFFu);
}

TEST(SCSIDrives, aNodeThatIsNoSCSIDeviceTellsNothing)
{
    SCSIInfo* info = nullptr;
    EXPECT_EQ(get_scsi_info("/no/such/node", info), 0);
    EXPECT_EQ(get_scsi_info("/dev/null", info), 0);
    EXPECT_EQ(info, nullptr);
    const DeviceNode node("/dev/null", O_RDONLY);
    unsigned long long sectors = 42;
    EXPECT_LT(get_scsi_idlun(node.descriptor()), 0);
    EXPECT_LT(disk_size(node.descriptor(), &sectors), 0);
    EXPECT_EQ(sectors, 42u);
}
