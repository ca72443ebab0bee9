#pragma once

/// The value of attribute "Type" for a SCSI peripheral type; -1 for a device that is no drive and is not reported.
int resolveSCSItype(int peripheralType);
