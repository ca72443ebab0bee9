#pragma once

#include "host/Collection.h"
#include "host/Fact.h"

namespace host
{
/// The hypervisor that the machine runs under ("KVM", "VMware", "Hyper-V", "Xen" ...); absent on bare metal and where
/// nothing tells. A privileged Xen domain runs on the metal.
MaybeFact hypervisorOf(const Machine& machine);

/// hypervisorOf(), or "None" where the processors can be read and nothing names one; absent where they cannot.
MaybeFact virtualizationOf(const Machine& machine);

/// The container manager around the scan ("docker", "lxc", "podman", "systemd-nspawn" ...); absent outside of
/// containers.
MaybeFact containerOf(const Machine& machine);
} // namespace host
