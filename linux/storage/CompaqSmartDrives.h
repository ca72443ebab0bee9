#pragma once

#include <cstdint>
#include <vector>

class TextStream;

/// What stands for the names of a disk behind a Smart RAID or CCISS controller.
constexpr char kCompaqManufacturer[] = "Compaq";
constexpr char kCompaqModel[] = "Compaq Smart Array 5i Controller";

/// Adds a row for every disk in the status file of the CCISS driver's first controller; counter is the number of rows
/// so far. Returns 0.
unsigned int gatherCompaqSmartRAIDDriveInformation(int* counter);

/// The number of disks in that file; 0 when it cannot be read.
int getCompaqSmartDiskNum();
/// The size of the n-th of them, counted from 1, in kilobytes; 0 when there is none.
uint32_t getCompaqSmartDiskSize(int n);
/// The sizes of all disks in the text of the file, in the file's order.
std::vector<uint32_t> readSmartDiskSizes(TextStream& status);
