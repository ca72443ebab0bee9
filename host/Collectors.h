#pragma once

#include <span>
#include <vector>

#include "host/Collection.h"

// The collectors, one function a group, in report order. Each stands in the file of its subject: collectMemory in
// host/Memory.cpp.

namespace host
{
void collectComponentID(const Machine& machine, Collection& collection);
void collectProcessor(const Machine& machine, Collection& collection);
void collectProcessorVulnerability(const Machine& machine, Collection& collection);
void collectNUMANode(const Machine& machine, Collection& collection);
void collectMemory(const Machine& machine, Collection& collection);
void collectMemoryModules(const Machine& machine, Collection& collection);
void collectOperatingSystem(const Machine& machine, Collection& collection);
void collectStorage(const Machine& machine, Collection& collection);
void collectDiskPartition(const Machine& machine, Collection& collection);
void collectLogicalDrive(const Machine& machine, Collection& collection);
void collectIPAddress(const Machine& machine, Collection& collection);
void collectRoute(const Machine& machine, Collection& collection);
void collectNetworkAdapter(const Machine& machine, Collection& collection);
void collectRegional(const Machine& machine, Collection& collection);
void collectUnixSystemParams(const Machine& machine, Collection& collection);
void collectPCSystemParams(const Machine& machine, Collection& collection);
void collectScanInfo(const Machine& machine, Collection& collection);
void collectPartition(const Machine& machine, Collection& collection);
void collectSMBIOS(const Machine& machine, Collection& collection);
void collectSystemEnclosure(const Machine& machine, Collection& collection);
void collectFirmware(const Machine& machine, Collection& collection);
void collectFirmwareResource(const Machine& machine, Collection& collection);
void collectTPM(const Machine& machine, Collection& collection);
void collectPCIDevice(const Machine& machine, Collection& collection);
void collectUSBDevice(const Machine& machine, Collection& collection);
void collectVideo(const Machine& machine, Collection& collection);
void collectMonitor(const Machine& machine, Collection& collection);
void collectKeyboard(const Machine& machine, Collection& collection);
void collectPointingDevice(const Machine& machine, Collection& collection);
void collectSerialPort(const Machine& machine, Collection& collection);
void collectParallelPort(const Machine& machine, Collection& collection);
void collectPrinter(const Machine& machine, Collection& collection);
void collectModem(const Machine& machine, Collection& collection);
void collectBattery(const Machine& machine, Collection& collection);
void collectSensor(const Machine& machine, Collection& collection);
void collectKernelModule(const Machine& machine, Collection& collection);
void collectSoftwarePackages(const Machine& machine, Collection& collection);
void collectInstalledPatches(const Machine& machine, Collection& collection);
void collectServiceInfo(const Machine& machine, Collection& collection);
void collectUserAccountInfo(const Machine& machine, Collection& collection);
void collectLpar(const Machine& machine, Collection& collection);
void collectSite(const Machine& machine, Collection& collection);
void collectMachineIdentity(const Machine& machine, Collection& collection);

/// What collects which group, in report order.
std::span<const Collector> collectors();

/// Those of some groups, by their ids; all when none is named.
std::vector<const Collector*> wantedCollectors(std::span<const uint32_t> groups);
} // namespace host
