#pragma once

#include <cstddef>
#include <cstdio>

/// Text that is read line by line from a file or from a command's output; closed with its scope.
class TextStream
{
public:
    /// Opens a file for reading; the stream is null when that fails.
    static TextStream openFile(const char* path);
    /// Starts a command through the shell and reads its standard output; null when no process can be started. A name in
    /// it that came from a file or another command must be free of characters that mean anything to a shell.
    static TextStream runCommand(const char* command);

    using Close = int (*)(FILE*);
    /// Takes over an open stream, or null, and the function that closes it.
    explicit TextStream(FILE* stream, Close closeStream = fclose) : stream_(stream), closeStream_(closeStream) {}
    TextStream(TextStream&& other) noexcept;
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;
    TextStream& operator=(TextStream&&) = delete;
    ~TextStream() { close(); }

    explicit operator bool() const { return stream_ != nullptr; }
    FILE* get() const { return stream_; }

    /// True when the stream is null or there is nothing left to read.
    bool atEnd();

    /// Reads up to the end of the line, its newline included, but at most Size - 1 bytes: a longer line comes in
    /// pieces. False at the end, on an error and for a null stream.
    template <size_t Size>
    bool readLine(char (&line)[Size])
    {
        return stream_ != nullptr && fgets(line, static_cast<int>(Size), stream_) != nullptr;
    }

    /// Closes the stream, waiting for a command to end; a second call does nothing.
    void close();

private:
    FILE* stream_;
    Close closeStream_;
};
