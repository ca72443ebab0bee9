#pragma once

/// The firmware's ROM as physical memory shows it.
class BIOSROM
{
public:
    /// Reads count bytes at physical address physAddr through "/dev/mem" into buf. Returns 1 when all of them were
    /// read, else 0; buf may then hold some of them. The second argument is not used.
    int getPhysMem(unsigned char* buf, int ignored, unsigned long physAddr, int count);
};
