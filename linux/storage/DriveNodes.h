#pragma once

#include "com/Owned.h"

/// The path of the next device node that exists, named prefix + letter ("/dev/sga") or prefix + number ("/dev/fd0");
/// null at the first that does not, which lets the next enumeration start anew. All callers share one counter: after
/// 255 nodes it stands still and every later call of the process returns null.
OwnedText getNextDrive(const char* prefix, bool letters);
