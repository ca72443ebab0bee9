#pragma once

#include "tests/unit/host/Tree.h"

/// Lays out a machine with something in every group: two processors, a SATA disk with a partition, an array, an
/// interface, a PCI function, a mount, a swap area, what an operator wrote. With the kernel's answers beside.
void addSmallMachine(const Tree& tree);

/// The kernel's answers as invhw-kernel.json has them, as addSmallMachine writes them.
extern const char* const kSmallMachineAnswers;
