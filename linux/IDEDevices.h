#pragma once

/// Room for the directory of one device, "/proc/ide/ide0/hda"; a longer one is cut.
constexpr int kIDEPathSize = 255;
/// Devices that are reported; what the kernel lists behind them is left out.
constexpr int kIDEMaxDevices = 8;

/// Lists the directories of the IDE devices, in the order in which the kernel does. list has kIDEMaxDevices entries.
/// Returns how many were written.
int determineIDEfilelist(char list[][kIDEPathSize]);
