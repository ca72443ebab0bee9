#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "com/VexDebug.h"

/// Catches what is written to the debug log while it lives, all categories and levels, without a file.
class LogCapture
{
public:
    LogCapture()
    {
        _vexFilePtr = open_memstream(&bytes_, &size_);
        VexInitDebug("/nonexistent/log"); // the stream that is already there wins; masks of 0 write no opening lines
        _vexDebugCategory = 0xFFFFFFFF;
        _vexDebugLevel = 7;
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture()
    {
        _vexDebugCategory = 0;
        _vexDebugLevel = 0;
        VexTermDebug();
        free(bytes_);
    }

    /// Everything that was logged so far.
    std::string text() const
    {
        fflush(_vexFilePtr);
        return {bytes_, size_};
    }

private:
    char* bytes_ = nullptr;
    size_t size_ = 0;
};
