#include "linux/storage/DriveRows.h"

#include <gtest/gtest.h>
#include <string>

#include "com/md5file.h"
#include "tests/unit/LogCapture.h"

namespace
{

std::string digestOf(const char* text)
{
    return OwnedText(md5_checksum(text)).get();
}

} // namespace

TEST(DigestGeometry, digestsTheFourFiguresWithoutSeparators)
{
    EXPECT_EQ(digestGeometry({.heads = 63, .cylinders = 1023, .sectors = 255}, 39082680).get(),
              digestOf("10232556339082680"));
    EXPECT_EQ(digestGeometry({.heads = 0, .cylinders = 0, .sectors = 0}, 0).get(), digestOf("0000"));
}

TEST(DigestGeometry, writesFiguresUnsigned)
{
    EXPECT_EQ(digestGeometry({.heads = 0x80000000, .cylinders = 0xFFFFFFFF, .sectors = 1}, 0).get(),
              digestOf("4294967295121474836480"));
}

TEST(DigestGeometry, endsWithTheMark)
{
    EXPECT_EQ(digestGeometry({.heads = 2, .cylinders = 80, .sectors = 18}, 1440, "7").get(), digestOf("8018214407"));
}

TEST(LoggedDrive, showsTheNamesInTheOrderOfItsProbe)
{
    DriveRow drive;
    drive.type = STORAGE_TYPE_HARD_DISK;
    drive.model = "ST336607LC";
    drive.manufacturer = "SEAGATE";
    drive.serialNumber = "3JA9PQX1";
    drive.geometry = {.heads = 255, .cylinders = 4462, .sectors = 63};
    const LogCapture log;
    logDrive("Add Floppy", LoggedNames::Model, 0, drive, 1440);
    logDrive("Add SCSI", LoggedNames::ModelAndManufacturer, 1, drive, 35003);
    logDrive("Add RAID", LoggedNames::ManufacturerAndModel, 2, drive, 0xFFFFFFFF);
    EXPECT_EQ(log.text(), "\nAdd Floppy index=>0< type=>30< model=>ST336607LC< cyl=>4462< sectors=>63< heads=>255< "
                          "size KB=>1440<"
                          "\nAdd SCSI index=>1< type=>30< model=>ST336607LC< manufac=>SEAGATE< serial=>3JA9PQX1< "
                          "cyl=>4462< sectors=>63< heads=>255< size KB=>35003<"
                          "\nAdd RAID index=>2< type=>30< manufac=>SEAGATE< model=>ST336607LC< serial=>3JA9PQX1< "
                          "cyl=>4462< sectors=>63< heads=>255< size KB=>-1<");
}

TEST(DriveGeometry, megabytesAreCutTo32Bits)
{
    EXPECT_EQ((DriveGeometry{.kilobytes = 1023}).megabytes(), 0u);
    EXPECT_EQ((DriveGeometry{.kilobytes = 35843686}).megabytes(), 35003u);
    EXPECT_EQ((DriveGeometry{.kilobytes = (uint64_t{0x123456789} << 10) + 1023}).megabytes(), 0x23456789u);
}
