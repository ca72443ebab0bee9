#pragma once

#include <cstdint>

/// Room for the directory of one device, "/proc/ide/ide0/hda"; a longer one is cut.
constexpr int IDE_PATH_SIZE = 255;
/// Devices that are reported; what the kernel lists behind them is left out.
constexpr int IDE_MAX_DEVICES = 8;

/// Lists the directories of the IDE devices, in the order in which the kernel does. list has IDE_MAX_DEVICES entries.
/// Returns how many were written.
int determineIDEfilelist(char list[][IDE_PATH_SIZE]);

/// The StorageType of a device with this media text.
uint32_t resolveIDEtype(const char* media);
