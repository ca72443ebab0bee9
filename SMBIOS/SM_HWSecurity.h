#pragma once

/// The power-on password state and the other hardware security states, from the hardware security record. Returns 0, or
/// 1 with both set to 3 (unknown) when there is no structure table or no such record.
int SM_HWSecurity(unsigned short* powerOn, unsigned short* other);
