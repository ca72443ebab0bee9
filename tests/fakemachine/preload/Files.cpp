// Descriptors and metadata of files: open and its variants, read, write, close, lseek, stat and its variants, access,
// readlink, and the calls that change folders.

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "preload/Calls.h"
#include "preload/Export.h"
#include "preload/Machine.h"
#include "preload/OpenNodes.h"
#include "preload/Text.h"

using namespace fakemachine;

static bool writes(int flags)
{
    return (flags & O_ACCMODE) != O_RDONLY || (flags & O_TRUNC) != 0;
}

// A program that makes files on the machine is ended, so that no scan does it unseen.
static void refuseToCreate(const Location& where, int flags)
{
    static auto* const realAccess = realFunction<int(const char*, int)>("access");
    if (where.place == Place::File && (flags & O_CREAT) != 0 && realAccess(where.path.c_str(), F_OK) != 0)
        fail({where.name, 0}, "the program would create this file");
}

// open of any path; the machine's own files are never changed.
static int openPath(const char* path, int flags, mode_t mode)
{
    static auto* const real = realFunction<int(const char*, int, ...)>("open64");
    Call call("open", path);
    if (call.fails())
        return -1;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    int error = machine.errorOf("open", where);
    if (error == 0 && writes(flags))
        error = machine.errorOf("open-write", where);
    if (error != 0)
        return fails(error);
    if (where.place == Place::Real)
        return real(path, flags, mode);
    if (where.place != Place::File)
        return openNode(where, flags);
    refuseToCreate(where, flags);
    const int descriptor = real(where.path.c_str(), (flags & ~(O_CREAT | O_TRUNC | O_ACCMODE)) | O_RDONLY);
    if (descriptor >= 0 && writes(flags)) {
        static auto* const realClose = realFunction<int(int)>("close");
        realClose(descriptor);
        return fails(EROFS);
    }
    return descriptor;
}

static mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

FAKE(int, open, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openPath(path, flags, mode);
}
FAKE_ALIAS(int, open64, open, const char*, int, ...)

FAKE(int, openat, int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (path[0] == '/' || folder == AT_FDCWD)
        return openPath(path, flags, mode);
    static auto* const real = realFunction<int(int, const char*, int, ...)>("openat64");
    Call call("openat", path);
    return call.fails() ? -1 : real(folder, path, flags, mode);
}
FAKE_ALIAS(int, openat64, openat, int, const char*, int, ...)

FAKE(int, __open_2, const char* path, int flags)
{
    return openPath(path, flags, 0);
}
FAKE_ALIAS(int, __open64_2, __open_2, const char*, int)

FAKE(int, creat, const char* path, mode_t mode)
{
    return openPath(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}
FAKE_ALIAS(int, creat64, creat, const char*, mode_t)

static std::string subjectOf(int descriptor)
{
    return "#" + std::to_string(descriptor);
}

FAKE(int, close, int descriptor)
{
    static auto* const real = realFunction<int(int)>("close");
    Call call("close", subjectOf(descriptor));
    forgetNode(descriptor);
    const int result = real(descriptor); // a close that fails has closed the descriptor all the same
    return call.fails() ? -1 : result;
}

static ssize_t readDescriptor(int descriptor, void* buffer, size_t count)
{
    static auto* const real = realFunction<ssize_t(int, void*, size_t)>("read");
    Call call("read", subjectOf(descriptor));
    if (call.endsData())
        return 0;
    if (call.isShort())
        count /= 2;
    else if (call.fails())
        return -1;
    OpenNode* const node = nodeOf(descriptor);
    return node != nullptr ? readNode(*node, buffer, count) : real(descriptor, buffer, count);
}

FAKE(ssize_t, read, int descriptor, void* buffer, size_t count)
{
    return readDescriptor(descriptor, buffer, count);
}

FAKE(ssize_t, __read_chk, int descriptor, void* buffer, size_t count, size_t room)
{
    if (count > room)
        abort();
    return readDescriptor(descriptor, buffer, count);
}

FAKE(ssize_t, write, int descriptor, const void* data, size_t count)
{
    static auto* const real = realFunction<ssize_t(int, const void*, size_t)>("write");
    Call call("write", subjectOf(descriptor));
    OpenNode* const node = nodeOf(descriptor);
    if (call.isShort())
        return static_cast<ssize_t>(count / 2);
    if (call.fails())
        return -1;
    if (node == nullptr)
        return real(descriptor, data, count);
    return node->kind == OpenNode::Kind::Device ? node->device->writeRequest(data, count) : fails(EPERM);
}

FAKE(off64_t, lseek64, int descriptor, off64_t offset, int whence)
{
    static auto* const real = realFunction<off64_t(int, off64_t, int)>("lseek64");
    Call call("lseek", subjectOf(descriptor));
    if (call.fails())
        return -1;
    OpenNode* const node = nodeOf(descriptor);
    return node != nullptr ? seekNode(*node, offset, whence) : real(descriptor, offset, whence);
}

FAKE(off_t, lseek, int descriptor, off_t offset, int whence)
{
    return static_cast<off_t>(fake_lseek64(descriptor, offset, whence));
}

// Positioned reads leave the position alone.
FAKE(ssize_t, pread64, int descriptor, void* buffer, size_t count, off64_t offset)
{
    static auto* const real = realFunction<ssize_t(int, void*, size_t, off64_t)>("pread64");
    OpenNode* const node = nodeOf(descriptor);
    if (node == nullptr || node->kind != OpenNode::Kind::Memory) {
        Call call("pread", subjectOf(descriptor));
        return call.fails() ? -1 : real(descriptor, buffer, count, offset);
    }
    const uint64_t position = node->position;
    node->position = static_cast<uint64_t>(offset);
    const ssize_t result = readDescriptor(descriptor, buffer, count);
    node->position = position;
    return result;
}

FAKE(ssize_t, pread, int descriptor, void* buffer, size_t count, off_t offset)
{
    return fake_pread64(descriptor, buffer, count, offset);
}

// Device nodes are recorded as texts; what they are is said by their description.
template <typename Status>
static void describe(const Location& where, Status* status)
{
    if (where.place == Place::Memory) {
        status->st_mode = S_IFCHR | 0640;
        status->st_size = 0;
    } else if (where.place == Place::Device) {
        status->st_mode = (Machine::instance().device(where).isBlock() ? S_IFBLK : S_IFCHR) | 0660;
        status->st_size = 0;
    }
}

// The record of the 64-bit time's variants, as far as it is described here; the real function fills the whole.
struct WideTimeStatus {
    unsigned char deviceAndInode[16];
    mode_t st_mode;
    unsigned char linksAndOwners[20];
    off64_t st_size;
};

template <typename Status, typename Real>
static int statPath(const char* name, const char* path, Status* status, Real real)
{
    Call call(name, path);
    if (call.fails())
        return -1;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (const int error = machine.errorOf("stat", where); error != 0)
        return fails(error);
    const int result = real(where.place == Place::Real ? path : where.path.c_str(), status);
    if (result == 0 && where.place != Place::Real)
        describe(where, status);
    return result;
}

#define FAKE_STAT(name, Status)                                                                                        \
    FAKE(int, name, const char* path, Status* status)                                                                  \
    {                                                                                                                  \
        return statPath("stat", path, status, realFunction<int(const char*, Status*)>(#name));                         \
    }

#define FAKE_STAT_VERSION(name, Status)                                                                                \
    FAKE(int, name, int version, const char* path, Status* status)                                                     \
    {                                                                                                                  \
        static auto* const real = realFunction<int(int, const char*, Status*)>(#name);                                 \
        return statPath("stat", path, status,                                                                          \
                        [&](const char* where, Status* out) { return real(version, where, out); });                    \
    }

#define FAKE_STAT_AT(name, Status)                                                                                     \
    FAKE(int, name, int folder, const char* path, Status* status, int flags)                                           \
    {                                                                                                                  \
        static auto* const real = realFunction<int(int, const char*, Status*, int)>(#name);                            \
        return statPath("stat", path, status,                                                                          \
                        [&](const char* where, Status* out) { return real(folder, where, out, flags); });              \
    }

FAKE_STAT(stat, struct stat)
FAKE_STAT(stat64, struct stat64)
FAKE_STAT(lstat, struct stat)
FAKE_STAT(lstat64, struct stat64)
FAKE_STAT_VERSION(__xstat, struct stat)
FAKE_STAT_VERSION(__xstat64, struct stat64)
FAKE_STAT_VERSION(__lxstat, struct stat)
FAKE_STAT_VERSION(__lxstat64, struct stat64)
FAKE_STAT_AT(fstatat, struct stat)
FAKE_STAT_AT(fstatat64, struct stat64)
#ifdef __i386__
FAKE_STAT(__stat64_time64, WideTimeStatus)
FAKE_STAT(__lstat64_time64, WideTimeStatus)
FAKE_STAT_AT(__fstatat64_time64, WideTimeStatus)
#endif

FAKE(int, access, const char* path, int mode)
{
    static auto* const real = realFunction<int(const char*, int)>("access");
    Call call("access", path);
    if (call.fails())
        return -1;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (const int error = machine.errorOf("access", where); error != 0)
        return fails(error);
    return real(where.path.c_str(), where.place == Place::Real ? mode : mode & ~W_OK);
}

FAKE(ssize_t, readlink, const char* path, char* buffer, size_t size)
{
    static auto* const real = realFunction<ssize_t(const char*, char*, size_t)>("readlink");
    Call call("readlink", path);
    if (call.fails())
        return -1;
    const Location where = Machine::instance().locate(path);
    return where.place == Place::Real ? real(path, buffer, size) : fails(EINVAL);
}

// Changes of a folder happen in the working folder only.
template <typename Real>
static int changeEntry(const char* name, const char* path, Real real)
{
    Call call(name, path);
    if (call.fails())
        return -1;
    Machine& machine = Machine::instance();
    const Location where = machine.locate(path);
    if (const int error = machine.errorOf("change", where); error != 0)
        return fails(error);
    return where.place == Place::Real ? real() : fails(EROFS);
}

FAKE(int, unlink, const char* path)
{
    return changeEntry("unlink", path, [&] { return realFunction<int(const char*)>("unlink")(path); });
}

FAKE(int, remove, const char* path)
{
    return changeEntry("remove", path, [&] { return realFunction<int(const char*)>("remove")(path); });
}

FAKE(int, mkdir, const char* path, mode_t mode)
{
    return changeEntry("mkdir", path, [&] { return realFunction<int(const char*, mode_t)>("mkdir")(path, mode); });
}

FAKE(int, rename, const char* from, const char* to)
{
    return changeEntry("rename", from, [&] {
        const bool real = Machine::instance().locate(to).place == Place::Real;
        return real ? realFunction<int(const char*, const char*)>("rename")(from, to) : fails(EROFS);
    });
}
