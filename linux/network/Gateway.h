#pragma once

class TextStream;

// The default gateway, as the distributions' network configuration files name it.

/// Searches the configuration files for the default gateway and writes it into out as text, cut to size - 1 characters;
/// out is left alone when there is none.
void getDefaultGateway(char* out, unsigned long size);

/// Searches one configuration file, at most its first 299 lines, for the line that key marks. True when it was found.
bool readGateway(TextStream& stream, const char* key, char* out, unsigned long size);

/// Takes the gateway from a line that holds key and an address behind it: returns 1 and writes the text that starts
/// with the first digit behind key, digits, dots, commas and apostrophes, into out, which must hold as many bytes as
/// line. Returns 0, out untouched, for any other line and for one with a "#" before the key.
int getGateway(char* out, char* line, const char* key);
