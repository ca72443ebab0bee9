#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "linux/RAIDInfo.h"

class TextStream;
struct DriveRow;

// What the probes for drives behind RAID controllers share, and their readers.

/// The serial number that stands for a drive behind a RAID controller.
constexpr char RAID_SERIAL_NUMBER[] = "+";
constexpr char COMPAQ_MANUFACTURER[] = "Compaq";
constexpr char COMPAQ_MODEL[] = "Compaq Smart Array 5i Controller";

/// Logs the row that is about to be added; index is the counter before it.
void logRAIDDrive(int index, const DriveRow& drive, uint32_t kilobytes);

/// The number of logical drives in the status file of the DAC960 driver; 0 when it cannot be read.
int getLogicalDAC960DriveNum();
/// Fills records, which is as long as there are logical drives, from the status file: 1, or 0 if it cannot be read.
int getFromCurrentStatus(std::vector<RAIDInfo>& records);
/// The same for the text of the file.
int countLogicalDrives(TextStream& status);
void readCurrentStatus(TextStream& status, std::vector<RAIDInfo>& records);

/// Cuts a line of the mount listing with "cciss" in it to the name of its disk. True when the disk is a new one, which
/// disks, the names so far, joined with ",", has then; a disk that was there before is logged.
bool takeMountedDisk(char* line, std::string* disks);

/// The sizes of the disks in the text of the CCISS driver's status file, in kilobytes and in the file's order.
std::vector<uint32_t> readSmartDiskSizes(TextStream& status);
