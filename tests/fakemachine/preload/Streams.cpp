// Buffered streams: fopen and its relatives, popen, the mount table, and what the program writes through stdio.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <mntent.h>
#include <string>
#include <unistd.h>

#include "preload/Calls.h"
#include "preload/Export.h"
#include "preload/Machine.h"
#include "preload/OpenNodes.h"

using namespace fakemachine;

namespace
{

// What a stream of the machine reads from: a real file, a device node or memory, or the output of a command. Reads come
// through this cookie, so that the faults of reading can be shown to code that uses fgets and its like.
struct Source {
    std::string name;
    int descriptor = -1;
    std::unique_ptr<OpenNode> node;
    std::string text; // of a command
    size_t position = 0;
};

// The commands that run, by their streams.
std::map<FILE*, int>& exitStatuses()
{
    static auto* const statuses = new std::map<FILE*, int>;
    return *statuses;
}

ssize_t readText(Source& source, char* buffer, size_t count)
{
    count = std::min(count, source.text.size() - source.position);
    memcpy(buffer, source.text.data() + source.position, count);
    source.position += count;
    return static_cast<ssize_t>(count);
}

ssize_t readSource(void* cookie, char* buffer, size_t count)
{
    static auto* const realRead = realFunction<ssize_t(int, void*, size_t)>("read");
    Source& source = *static_cast<Source*>(cookie);
    Call call("read", source.name);
    if (call.endsData())
        return 0;
    if (call.isShort())
        count = count > 8 ? 8 : 1;
    else if (call.fails())
        return -1;
    if (const int error = Machine::instance().conf().errorOf("read", source.name); error != 0) {
        errno = error;
        return -1;
    }
    if (source.node)
        return readNode(*source.node, buffer, count);
    return source.descriptor >= 0 ? realRead(source.descriptor, buffer, count) : readText(source, buffer, count);
}

int seekSource(void* cookie, off64_t* offset, int whence)
{
    static auto* const realSeek = realFunction<off64_t(int, off64_t, int)>("lseek64");
    Source& source = *static_cast<Source*>(cookie);
    const Inside inside;
    int64_t position = -1;
    if (source.node)
        position = seekNode(*source.node, *offset, whence);
    else if (source.descriptor >= 0)
        position = realSeek(source.descriptor, *offset, whence);
    else
        errno = ESPIPE;
    *offset = position;
    return position < 0 ? -1 : 0;
}

int closeSource(void* cookie)
{
    static auto* const realClose = realFunction<int(int)>("close");
    const Inside inside;
    Source* const source = static_cast<Source*>(cookie);
    if (source->descriptor >= 0)
        realClose(source->descriptor);
    delete source;
    return 0;
}

FILE* openSource(std::unique_ptr<Source> source)
{
    cookie_io_functions_t functions{};
    functions.read = readSource;
    functions.seek = seekSource;
    functions.close = closeSource;
    FILE* const stream = fopencookie(source.get(), "r", functions);
    if (stream != nullptr)
        source.release();
    return stream;
}

FILE* failStream(int error)
{
    errno = error;
    return nullptr;
}

FILE* openMachineStream(const Location& where, const char* mode)
{
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    auto source = std::make_unique<Source>();
    source->name = where.name;
    const int flags = O_RDONLY | O_CLOEXEC;
    const bool reads = mode[0] == 'r' && strchr(mode, '+') == nullptr;
    if (where.place == Place::File) {
        source->descriptor = realOpen(where.path.c_str(), flags);
        if (source->descriptor < 0)
            return nullptr;
        if (!reads) {
            closeSource(source.release());
            return failStream(EROFS);
        }
    } else {
        source->descriptor = openNode(where, reads ? O_RDONLY : O_RDWR);
        if (source->descriptor < 0)
            return nullptr;
        source->node = std::make_unique<OpenNode>(std::move(*nodeOf(source->descriptor)));
        forgetNode(source->descriptor);
    }
    return openSource(std::move(source));
}

} // namespace

FAKE(FILE*, fopen64, const char* path, const char* mode)
{
    static auto* const real = realFunction<FILE*(const char*, const char*)>("fopen64");
    Call call("fopen", path);
    if (call.fails())
        return nullptr;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    int error = machine.errorOf("open", where);
    if (error == 0 && (mode[0] != 'r' || strchr(mode, '+') != nullptr))
        error = machine.errorOf("open-write", where);
    if (error != 0)
        return failStream(error);
    if (where.place == Place::Real)
        return real(path, mode);
    return openMachineStream(where, mode);
}
FAKE_ALIAS(FILE*, fopen, fopen64, const char*, const char*)

FAKE(FILE*, freopen64, const char* path, const char* mode, FILE* stream)
{
    static auto* const real = realFunction<FILE*(const char*, const char*, FILE*)>("freopen64");
    Call call("freopen", path == nullptr ? "" : path);
    if (call.fails())
        return nullptr;
    const Location where = Machine::instance().locate(path);
    return real(where.place == Place::Real ? path : where.path.c_str(), where.place == Place::Real ? mode : "r",
                stream);
}
FAKE_ALIAS(FILE*, freopen, freopen64, const char*, const char*, FILE*)

FAKE(FILE*, fdopen, int descriptor, const char* mode)
{
    static auto* const real = realFunction<FILE*(int, const char*)>("fdopen");
    Call call("fdopen", "#" + std::to_string(descriptor));
    if (call.fails())
        return nullptr;
    OpenNode* const node = nodeOf(descriptor);
    if (node == nullptr)
        return real(descriptor, mode);
    auto source = std::make_unique<Source>();
    source->name = "#" + std::to_string(descriptor);
    source->descriptor = descriptor;
    source->node = std::make_unique<OpenNode>(std::move(*node));
    forgetNode(descriptor);
    return openSource(std::move(source));
}

FAKE(int, fclose, FILE* stream)
{
    static auto* const real = realFunction<int(FILE*)>("fclose");
    Call call("fclose");
    exitStatuses().erase(stream);
    const int result = real(stream);
    return call.fails() ? EOF : result;
}

FAKE(FILE*, popen, const char* commandLine, const char*)
{
    Call call("popen", commandLine);
    if (call.fails())
        return nullptr;
    if (const int error = Machine::instance().conf().errorOf("popen", commandLine); error != 0)
        return failStream(error);
    const CommandAnswer answer = Machine::instance().commands().run(commandLine);
    if (answer.startError != 0)
        return failStream(answer.startError);
    auto source = std::make_unique<Source>();
    source->name = "|" + std::string(commandLine);
    source->text = answer.output;
    FILE* const stream = openSource(std::move(source));
    if (stream != nullptr)
        exitStatuses()[stream] = answer.exitStatus << 8; // as waitpid gives it
    return stream;
}

FAKE(int, pclose, FILE* stream)
{
    static auto* const realClose = realFunction<int(FILE*)>("fclose");
    Call call("pclose");
    const auto running = exitStatuses().find(stream);
    const int status = running == exitStatuses().end() ? -1 : running->second;
    exitStatuses().erase(stream);
    realClose(stream);
    if (status == -1)
        errno = ECHILD;
    return call.fails() ? -1 : status;
}

// No process is ever started on the real computer.
FAKE(int, system, const char* commandLine)
{
    Call call("system", commandLine == nullptr ? "" : commandLine);
    if (call.fails() || commandLine == nullptr)
        return commandLine == nullptr ? 1 : -1;
    return Machine::instance().commands().run(commandLine).exitStatus << 8;
}

// The mount table's stream is read by the C library itself; its calls are answered whole.
FAKE(FILE*, setmntent, const char* path, const char* mode)
{
    static auto* const real = realFunction<FILE*(const char*, const char*)>("setmntent");
    Call call("setmntent", path);
    if (call.fails())
        return nullptr;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (const int error = machine.errorOf("open", where); error != 0)
        return failStream(error);
    return real(where.path.c_str(), where.place == Place::Real ? mode : "r");
}

FAKE(mntent*, getmntent, FILE* stream)
{
    static auto* const real = realFunction<mntent*(FILE*)>("getmntent");
    Call call("getmntent");
    return call.fails() ? nullptr : real(stream);
}

FAKE(mntent*, getmntent_r, FILE* stream, mntent* entry, char* buffer, int size)
{
    static auto* const real = realFunction<mntent*(FILE*, mntent*, char*, int)>("getmntent_r");
    Call call("getmntent");
    return call.fails() ? nullptr : real(stream, entry, buffer, size);
}

FAKE(int, endmntent, FILE* stream)
{
    static auto* const real = realFunction<int(FILE*)>("endmntent");
    Call call("endmntent");
    return real(stream); // always 1, as documented
}

// Writing. A failed call on the log writes nothing. Standard output stays broken from a failed call on, as a full disk
// or a closed pipe does; what was written before has gone out.

static const char* nameOf(FILE* stream)
{
    return stream == stdout ? "stdout" : stream == stderr ? "stderr" : "";
}

static void breakOutput(int error)
{
    static auto* const realFlush = realFunction<int(FILE*)>("fflush");
    static auto* const realOpen = realFunction<int(const char*, int, ...)>("open64");
    static auto* const realClose = realFunction<int(int)>("close");
    realFlush(stdout);
    int ends[2] = {-1, -1};
    if (error == EPIPE && pipe(ends) == 0)
        realClose(ends[0]);
    const int broken = error == EPIPE ? ends[1] : realOpen("/dev/full", O_WRONLY);
    dup2(broken, STDOUT_FILENO);
    realClose(broken);
}

// Makes the call on the stream, or lets it fail with the result given.
template <typename Result, typename Write>
static Result writeTo(const char* name, FILE* stream, Result failure, Write write)
{
    Call call(name, nameOf(stream));
    if (call.fails()) {
        if (stream != stdout)
            return failure;
        breakOutput(errno);
    }
    return write();
}

FAKE(int, fputs, const char* text, FILE* stream)
{
    static auto* const real = realFunction<int(const char*, FILE*)>("fputs");
    return writeTo("fputs", stream, EOF, [&] { return real(text, stream); });
}

FAKE(int, puts, const char* text)
{
    static auto* const real = realFunction<int(const char*)>("puts");
    return writeTo("puts", stdout, EOF, [&] { return real(text); });
}

FAKE(int, fputc, int c, FILE* stream)
{
    static auto* const real = realFunction<int(int, FILE*)>("fputc");
    return writeTo("fputc", stream, EOF, [&] { return real(c, stream); });
}
FAKE_ALIAS(int, putc, fputc, int, FILE*)

FAKE(int, putchar, int c)
{
    return fake_fputc(c, stdout);
}

FAKE(size_t, fwrite, const void* data, size_t size, size_t count, FILE* stream)
{
    static auto* const real = realFunction<size_t(const void*, size_t, size_t, FILE*)>("fwrite");
    return writeTo("fwrite", stream, size_t{0}, [&] { return real(data, size, count, stream); });
}

FAKE(int, fflush, FILE* stream)
{
    static auto* const real = realFunction<int(FILE*)>("fflush");
    return writeTo("fflush", stream, EOF, [&] { return real(stream); });
}

static int printTo(const char* name, FILE* stream, const char* format, va_list arguments)
{
    static auto* const real = realFunction<int(FILE*, const char*, va_list)>("vfprintf");
    return writeTo(name, stream, -1, [&] { return real(stream, format, arguments); });
}

FAKE(int, vfprintf, FILE* stream, const char* format, va_list arguments)
{
    return printTo("fprintf", stream, format, arguments);
}

FAKE(int, vprintf, const char* format, va_list arguments)
{
    return printTo("printf", stdout, format, arguments);
}

FAKE(int, fprintf, FILE* stream, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = printTo("fprintf", stream, format, arguments);
    va_end(arguments);
    return result;
}

FAKE(int, printf, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = printTo("printf", stdout, format, arguments);
    va_end(arguments);
    return result;
}

FAKE(int, __fprintf_chk, FILE* stream, int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = printTo("fprintf", stream, format, arguments);
    va_end(arguments);
    return result;
}

FAKE(int, __printf_chk, int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int result = printTo("printf", stdout, format, arguments);
    va_end(arguments);
    return result;
}

// Reading. On streams of the machine faults come through the source; those of the working folder fail here.

FAKE(size_t, fread, void* buffer, size_t size, size_t count, FILE* stream)
{
    static auto* const real = realFunction<size_t(void*, size_t, size_t, FILE*)>("fread");
    if (fileno(stream) < 0)
        return real(buffer, size, count, stream);
    Call call("fread");
    if (call.isShort())
        return real(buffer, size, count / 2, stream);
    return call.fails() ? 0 : real(buffer, size, count, stream);
}
