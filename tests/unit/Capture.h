#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

// Helpers for code that writes to streams or keeps state for the whole process.

/// What action writes to standard output.
inline std::string capturedOutput(const std::function<void()>& action)
{
    fflush(stdout);
    FILE* const file = tmpfile();
    const int saved = dup(STDOUT_FILENO);
    dup2(fileno(file), STDOUT_FILENO);
    action();
    fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    std::string text;
    rewind(file);
    for (int c = getc(file); c != EOF; c = getc(file))
        text += static_cast<char>(c);
    fclose(file);
    return text;
}

/// What action writes to the stream that it is given.
inline std::string writtenText(const std::function<void(FILE*)>& action)
{
    char* bytes = nullptr;
    size_t size = 0;
    FILE* const stream = open_memstream(&bytes, &size);
    action(stream);
    fclose(stream);
    const std::string text(bytes, size);
    free(bytes);
    return text;
}

/// Runs action in a child process; a failed expectation in it, or its death, fails the test.
inline void inChild(const std::function<void()>& action)
{
    fflush(nullptr);
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        action();
        fflush(nullptr);
        _exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the child process failed or died";
}
