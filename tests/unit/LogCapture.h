#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "com/VexDebug.h"

/// Catches what is written to the debug log while it lives, without a file: all categories and levels unless told
/// otherwise.
class LogCapture
{
public:
    explicit LogCapture(uint32_t category = 0xFFFFFFFF, uint32_t level = 7)
    {
        _vexFilePtr = open_memstream(&bytes_, &size_);
        VexInitDebug("/nonexistent/log"); // the stream that is already there wins; masks of 0 write no opening lines
        _vexDebugCategory = category;
        _vexDebugLevel = level;
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

/// What action writes to the debug log while the masks are category and level.
inline std::string logText(uint32_t category, uint32_t level, const std::function<void()>& action)
{
    const LogCapture log(category, level);
    action();
    return log.text();
}
