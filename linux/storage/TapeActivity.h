#pragma once

class TextStream;

/// 1 if a backup or restore process is running according to "ps -ef", else 0.
int isUltrium_tape_QX9031_running();

/// The same for a listing of processes.
int listsTapeProcess(TextStream& processes);

/// 1 if line, from the first occurrence of word to its end, is exactly word. A line that has the word is cut at the
/// newline behind it.
int getExactMatch(char* line, const char* word);
