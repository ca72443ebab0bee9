#include "linux/storage/DriveRows.h"

#include <cinttypes>
#include <cstdio>
#include <string>

#include "com/VexDebug.h"
#include "com/VexTable.h"
#include "com/md5file.h"

namespace
{

VexTable* table = nullptr; // under construction

std::string namesText(LoggedNames names, const DriveRow& drive)
{
    std::string model = std::string(" model=>") + drive.model + "<";
    if (names == LoggedNames::Model)
        return model;
    const std::string manufacturer = std::string(" manufac=>") + drive.manufacturer + "<";
    const std::string serialNumber = std::string(" serial=>") + drive.serialNumber + "<";
    return (names == LoggedNames::ModelAndManufacturer ? model + manufacturer : manufacturer + model) + serialNumber;
}

} // namespace

void beginDriveRows(VexTable* newTable)
{
    table = newTable;
}

void addDriveRow(int* counter, const DriveRow& drive)
{
    auto* const row = new VexTableRow;
    row->addULong(STORAGE_INDEX, static_cast<uint32_t>(++*counter));
    row->addString(STORAGE_ID, drive.id);
    row->addULong(STORAGE_TYPE, drive.type);
    row->addString(STORAGE_MODEL, drive.model);
    row->addString(STORAGE_MANUFACTURER, drive.manufacturer);
    row->addString(STORAGE_SERIAL_NUMBER, drive.serialNumber);
    row->addULong(STORAGE_CYLINDERS, drive.geometry.cylinders);
    row->addULong(STORAGE_SECTORS, drive.geometry.sectors);
    row->addULong(STORAGE_HEADS, drive.geometry.heads);
    row->addULong(STORAGE_TOTAL_SIZE, drive.geometry.megabytes());
    row->addULong(STORAGE_SECURITY_ENABLED, drive.security);
    table->addRow(row);
}

OwnedText digestGeometry(const DriveGeometry& geometry, uint32_t size, const char* mark)
{
    char text[255];
    snprintf(text, sizeof text, "%" PRIu32 "%" PRIu32 "%" PRIu32 "%" PRIu32 "%s", geometry.cylinders, geometry.sectors,
             geometry.heads, size, mark);
    return OwnedText(md5_checksum(text));
}

void logDrive(const char* title, LoggedNames names, int index, const DriveRow& drive, uint32_t size)
{
    VEX_LOG(DEBUG_STORAGE, VEX_LEVEL_DETAIL,
            "\n%s index=>%d< type=>%d<%s cyl=>%d< sectors=>%d< heads=>%d< size KB=>%d<", title, index,
            static_cast<int>(drive.type), namesText(names, drive).c_str(), static_cast<int>(drive.geometry.cylinders),
            static_cast<int>(drive.geometry.sectors), static_cast<int>(drive.geometry.heads), static_cast<int>(size));
}
