#pragma once

#include <string>

/// Adds a row for every disk behind a CCISS controller that a file system is mounted from; counter is the number of
/// rows so far. Returns 0 when there is no mount listing to look into, else 1, drives or not.
unsigned int gatherCCISSDriveInformation(int* counter);

/// Cuts a line of the mount listing with "cciss" in it to the name of its disk. True when the disk is a new one, which
/// disks, the names so far, joined with ",", has then; a disk that was there before is logged.
bool takeMountedDisk(char* line, std::string* disks);
