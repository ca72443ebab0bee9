#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>

#include "com/VexAttribIds.h"

// The debug log: one text file that every component writes through VexPrintf, filtered at the call site by two masks.

/// Level bits of _vexDebugLevel. Bit 2 is accepted and tested by nobody.
constexpr uint32_t VEX_LEVEL_MAIN = 1;   // main steps, banners and results
constexpr uint32_t VEX_LEVEL_DETAIL = 4; // every probe, every value read

extern uint32_t _vexDebugLevel;
extern uint32_t _vexDebugCategory;

// State of the log, shared with the sink VexOutput (com/VexGroup.cpp).
extern uint32_t _vexLogToFile; // 0 once the file could not be opened
extern FILE* _vexFilePtr;      // null while the log is closed

/// Opens the log, with rotation of an existing one to "<path>.bk"; a null or empty path means "libInvHW.log" in the
/// current directory. Only the first of several calls opens; the others count. When the log cannot be opened one line
/// goes to standard error and the program runs on without a log.
void VexInitDebug(const char* path);

/// Undoes one VexInitDebug; the last one closes the log.
void VexTermDebug();

/// Formats and writes one text to the log, opening it under its default name if it is closed. At most 2047 bytes are
/// written. Returns the sink's result. Call it through VEX_LOG.
int VexPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// A time as the log shows it: the local time as ctime writes it, newline included; an empty line for a time that has
/// none. The text is the C library's and lasts until its next conversion.
const char* vexTimeLine(time_t time);

/// True when a line of this category (VexDebugMask, any of its bits) and level is wanted.
inline bool vexDebugWanted(uint32_t category, uint32_t level)
{
    return (_vexDebugCategory & category) != 0 && (_vexDebugLevel & level) != 0;
}

/// The one guarded log call: the arguments are evaluated only when the line is wanted.
#define VEX_LOG(category, level, ...)                                                                                  \
    do {                                                                                                               \
        if (vexDebugWanted((category), (level)))                                                                       \
            VexPrintf(__VA_ARGS__);                                                                                    \
    } while (false)

/// The frame that a collector draws round its lines in the log: banner and "Begin Group" when made, "End Group" and
/// closing banner when it ends, on every way out of the function.
class VexGroupFrame
{
public:
    /// name is the text that stands in the log, which is not always the catalog's; it must outlive the frame.
    VexGroupFrame(uint32_t category, const char* name);
    VexGroupFrame(const VexGroupFrame&) = delete;
    VexGroupFrame& operator=(const VexGroupFrame&) = delete;
    ~VexGroupFrame() { close(); }

    /// Changes the name that the closing line shows.
    void rename(const char* name) { name_ = name; }
    /// Closes the frame before the end of the scope; a second call does nothing.
    void close();

private:
    uint32_t category_;
    const char* name_;
    bool open_ = true;
};
