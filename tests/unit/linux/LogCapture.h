#pragma once

#include <cstdlib>
#include <string>

#include "com/VexDebug.h"

/// Keeps what is logged while it lives, instead of writing it to a file. All categories and levels are on.
class LogCapture
{
public:
    LogCapture()
    {
        _vexFilePtr = open_memstream(&text_, &size_);
        VexInitDebug("/nowhere/log"); // finds the log open
        _vexDebugCategory = 0xFFFFFFFF;
        _vexDebugLevel = VEX_LEVEL_MAIN | VEX_LEVEL_DETAIL;
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture()
    {
        _vexDebugCategory = 0;
        _vexDebugLevel = 0;
        VexTermDebug();
        free(text_);
    }

    std::string text() const { return fflush(_vexFilePtr) == 0 ? std::string(text_, size_) : std::string(); }

private:
    char* text_ = nullptr;
    size_t size_ = 0;
};
