#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "FakeMachine.h"

/// What a shell command prints.
inline std::string outputOf(const std::string& command)
{
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return text;
    char buffer[4096];
    for (size_t count = fread(buffer, 1, sizeof buffer, pipe); count > 0; count = fread(buffer, 1, sizeof buffer, pipe))
        text.append(buffer, count);
    pclose(pipe);
    return text;
}

/// The report of a scan of the computer at hand by the program beside this test, without the preload library and in the
/// C locale. The scan's files stay in a folder of their own, which goes with it. A wrapper is the beginning of a
/// command line that ends with the program.
inline ScanResult scanThisComputer(const std::string& wrapper = "")
{
    namespace fs = std::filesystem;
    ScanResult result;
    std::string folder = (fs::temp_directory_path() / "invhw-real.XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return result;
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / "invhw";
    result.report = outputOf("cd '" + folder + "' && LC_ALL=C " + wrapper + " '" + program.string() + "'");
    fs::remove_all(folder);
    return result;
}
