#pragma once

namespace report
{
/// A new file without a name, mode 0600, in the folder that TMPDIR names or in /tmp: gone when its descriptor, which
/// the caller owns, is closed. -1, with errno, when it cannot be made.
int temporaryFile();
} // namespace report
