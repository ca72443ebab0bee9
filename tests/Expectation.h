#pragma once

#include <string>

/// True when tests write expectations anew instead of comparing with them (INVHW_RECORD=1).
bool isRecording();

/// Compares a text with the one in a file, or writes it there; a difference fails the test and is shown.
void expectContent(const std::string& file, const std::string& actual);

/// The text with long runs of lines written short: of a hundred lines and more, each of which is the one before it with
/// the same numbers one larger, the first stands there with a line that tells how many follow and which numbers
/// change (the first number of a line is 1). Different texts stay different.
std::string foldedLines(const std::string& text);
