#pragma once

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <unistd.h>

#include "com/VexDebug.h"

/// What action writes to the debug log while the masks are category and level.
inline std::string logText(uint32_t category, uint32_t level, const std::function<void()>& action)
{
    char folder[] = "/tmp/invhw-log-XXXXXX";
    if (mkdtemp(folder) == nullptr)
        return "(no folder for the log)";
    const std::string path = std::string(folder) + "/log";
    VexInitDebug(path.c_str());
    _vexDebugCategory = category;
    _vexDebugLevel = level;
    action();
    _vexDebugCategory = 0;
    _vexDebugLevel = 0;
    VexTermDebug();
    std::ifstream file(path);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    unlink(path.c_str());
    rmdir(folder);
    return text;
}
