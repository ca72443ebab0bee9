#pragma once

class TextStream;

/// Adds a row for every active swap area that /proc/swaps lists.
void addSwapPartitions();

/// The same from the listing's text.
void addSwapRows(TextStream& swaps);
