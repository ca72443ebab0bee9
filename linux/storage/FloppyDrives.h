#pragma once

/// Adds a row for every floppy drive whose node answers; counter is the number of rows so far. Returns 0.
unsigned int gatherFloppyDriveInformation(int* counter);
