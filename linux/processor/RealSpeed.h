#pragma once

/// The nominal clock of a processor whose measured clock is mhz: measured clocks fall a little off, and the usual bus
/// clocks and their multiples (33, 50, 66, 75, 100 ...) tell what was meant. All values are MHz, 32 bits wide.
unsigned long RealSpeedValue(unsigned long mhz);
