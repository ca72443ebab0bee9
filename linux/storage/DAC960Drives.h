#pragma once

#include <string>
#include <vector>

class TextStream;

/// One logical drive of a DAC960 controller, as the driver's status file tells of it.
struct RAIDInfo {
    std::string controllerName; // empty when no controller line stood before the drive's
    std::string level;          // "RAID-5"
    std::string device;         // "/dev/rd/c0d0"
};

/// Adds a row for every logical drive of the first controller; counter is the number of rows so far. Returns 0.
unsigned int gatherDAC960RAIDDriveInformation(int* counter);

/// The number of logical drives in the driver's status file; 0 when it cannot be read.
int getLogicalDAC960DriveNum();
/// Fills records, which is as long as there are logical drives, from the status file: 1, or 0 if it cannot be read.
int getFromCurrentStatus(std::vector<RAIDInfo>& records);
/// The same for the text of the file.
int countLogicalDrives(TextStream& status);
void readCurrentStatus(TextStream& status, std::vector<RAIDInfo>& records);
