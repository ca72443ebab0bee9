#pragma once

#include <string>

#include "linux/text/TextStream.h"

/// Reads a distribution's release file as one line of text: its first 254 bytes up to a NUL, with each run of control
/// characters replaced by one blank. The newline at the end of a one-line file thus becomes a blank, which stays.
std::string readReleaseName(TextStream& file);
