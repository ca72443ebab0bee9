#pragma once

#include <cstdint>

/// Adds a row for every IDE device that the kernel lists; counter is the number of rows so far. Returns 0.
unsigned int gatherIDEDriveInformation(int* counter);

/// The StorageType of a device with this media text.
uint32_t resolveIDEtype(const char* media);
