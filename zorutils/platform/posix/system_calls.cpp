#include "zorutils/platform/posix/system_calls.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/file.h>

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
        system.opendir = ::opendir;
        system.readdir = ::readdir;
        system.closedir = ::closedir;
        system.mmap = ::mmap;
        system.munmap = ::munmap;
        return system;
    }();
    return calls;
}

} // namespace zor::platform
