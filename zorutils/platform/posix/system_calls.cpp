#include "zorutils/platform/posix/system_calls.h"

#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>

#include <initializer_list>

namespace {

int open_path(const char* path, int flags, mode_t mode)
{
    return ::open(path, flags, mode);
}

int duplicate_above(int descriptor, int least)
{
    return ::fcntl(descriptor, F_DUPFD_CLOEXEC, least);
}

int set_blocking(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags < 0 ? -1 : ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
}

// Whether the loader's words end in the system's text of an error, in whatever language.
bool ends_in(const char* words, int error)
{
    const char* const text = strerror(error);
    const size_t length = strlen(words), end = strlen(text);
    return length >= end && strcmp(words + length - end, text) == 0;
}

void* load_library(const char* path)
{
    void* const handle = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle != nullptr)
        return handle;
    const char* const words = ::dlerror();
    int reason = ENOEXEC;
    for (const int error : {ENOENT, ENOMEM, EACCES, EISDIR}) {
        if (words != nullptr && ends_in(words, error))
            reason = error;
    }
    if (words != nullptr && strstr(words, "undefined symbol") != nullptr)
        reason = ENOSYS;
    errno = reason;
    return nullptr;
}

int spawn(pid_t* process, const char* path, char* const* arguments)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    sigset_t none, all;
    sigemptyset(&none);
    sigfillset(&all);
    int error = ::posix_spawn_file_actions_init(&actions);
    if (error == 0) {
        error = ::posix_spawnattr_init(&attributes);
        if (error == 0) {
            ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
            ::posix_spawnattr_setsigmask(&attributes, &none);
            ::posix_spawnattr_setsigdefault(&attributes, &all);
            error = ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
            if (error == 0)
                error = ::posix_spawn(process, path, &actions, &attributes, arguments, environ);
            ::posix_spawnattr_destroy(&attributes);
        }
        ::posix_spawn_file_actions_destroy(&actions);
    }
    errno = error;
    return error == 0 ? 0 : -1;
}

int start_thread(void* (*entry)(void*), void* argument)
{
    pthread_t thread;
    const int error = ::pthread_create(&thread, nullptr, entry, argument);
    if (error == 0)
        ::pthread_detach(thread);
    errno = error;
    return error == 0 ? 0 : -1;
}

// A file system without the exclusive rename answers EINVAL: there the test for the new name and
// the rename are two steps, and another process may come between them.
int rename_new(const char* from, const char* to)
{
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return -1;
    struct stat taken;
    if (::lstat(to, &taken) == 0) {
        errno = EEXIST;
        return -1;
    }
    return ::rename(from, to);
}

} // namespace

namespace zor::platform {

SystemCalls& system_calls()
{
    static SystemCalls calls = [] {
        SystemCalls system = {};
        system.open = open_path;
        system.close = ::close;
        system.duplicate_above = duplicate_above;
        system.set_blocking = set_blocking;
        system.read = ::read;
        system.write = ::write;
        system.pread = ::pread;
        system.pwrite = ::pwrite;
        system.lseek = ::lseek;
        system.ftruncate = ::ftruncate;
        system.fsync = ::fsync;
        system.fstat = ::fstat;
        system.stat = ::stat;
        system.lstat = ::lstat;
        system.statx = ::statx;
        system.fchmod = ::fchmod;
        system.chmod = ::chmod;
        system.futimens = ::futimens;
        system.flock = ::flock;
        system.unlink = ::unlink;
        system.rename = ::rename;
        system.rename_new = rename_new;
        system.mkdir = ::mkdir;
        system.rmdir = ::rmdir;
        system.chdir = ::chdir;
        system.getcwd = ::getcwd;
        system.readlink = ::readlink;
        system.realpath = ::realpath;
        system.getdents64 = ::getdents64;
        system.mmap = ::mmap;
        system.munmap = ::munmap;
        system.load_library = load_library;
        system.spawn = spawn;
        system.waitid = ::waitid;
        system.start_thread = start_thread;
        return system;
    }();
    return calls;
}

} // namespace zor::platform
