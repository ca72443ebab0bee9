#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

#include "tests/unit/Capture.h"
#include "tool/CommandLine.h"

// Subcommands as a user runs them, in a folder of their own.

/// What a command writes to standard output and error, and its exit status.
struct CommandRun {
    int status = -1;
    std::string out, error;
};

inline CommandRun ran(std::vector<const char*> words)
{
    CommandRun result;
    testing::internal::CaptureStderr();
    result.out = capturedOutput([&] {
        result.status = tool::run(words);
        std::cout.flush();
    });
    result.error = testing::internal::GetCapturedStderr();
    return result;
}

/// A folder that is gone after the test.
class CommandTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = testing::TempDir() + "invhw-command-XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        folder_ = name;
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// The path of a file in the folder, which is written unless the text is empty.
    std::string file(const std::string& name, const std::string& text = "")
    {
        const std::string path = folder_ / name;
        if (!text.empty())
            std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    size_t files() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder_), {}));
    }

    std::filesystem::path folder_;
};
