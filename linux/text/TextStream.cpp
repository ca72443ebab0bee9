#include "linux/text/TextStream.h"

#include <utility>

TextStream TextStream::openFile(const char* path)
{
    return TextStream(fopen(path, "r"), fclose);
}

TextStream TextStream::runCommand(const char* command)
{
    return TextStream(popen(command, "r"), pclose);
}

TextStream::TextStream(TextStream&& other) noexcept
    : stream_(std::exchange(other.stream_, nullptr)), closeStream_(other.closeStream_)
{
}

bool TextStream::atEnd()
{
    if (stream_ == nullptr)
        return true;
    const int next = getc(stream_);
    if (next == EOF)
        return true;
    ungetc(next, stream_);
    return false;
}

void TextStream::close()
{
    if (stream_ != nullptr)
        closeStream_(std::exchange(stream_, nullptr));
}
