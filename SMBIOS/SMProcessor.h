#pragma once

// What the firmware says about the processors. Every query answers 0 when there is no structure table.

/// Clocks in MHz, upgrade (socket) code and, when featureFlags is not null, feature flags of the first processor. An
/// external clock above 2000 MHz and an upgrade above 17 are not believed and become 0. Returns 1, or 0 with the three
/// numbers 0 when there is no processor.
int SM_Processor(unsigned short* currentSpeed, unsigned short* externalClock, unsigned short* upgrade,
                 int* featureFlags);
/// The first processor's family code.
int SM_ProcessorFamily();
/// Processors in the table, empty sockets included.
int SM_ProcessorCount();
/// Populated sockets of central processors.
int SM_PopulatedProcessorCount();
