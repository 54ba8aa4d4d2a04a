// zorutils/platform/posix/system_calls.h: every system call that can fail, through one table.
//
//     const int descriptor = system_calls().open(path, O_RDONLY | O_CLOEXEC, 0);
//
// The layer calls the system through this table only, so that a test can put a wrapper in a field
// and walk each failure path ("fail the n-th call with this error"). A wrapper is set while no
// other thread uses the table. A new call is one line in the list below.
#pragma once

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <stddef.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

// CALL(result, name, (argument types)): a failed call returns -1, MAP_FAILED or null and sets
// errno.
#define ZOR_SYSTEM_CALLS(CALL)                                                                     \
    CALL(int, open, (const char*, int, mode_t))                                                    \
    CALL(int, close, (int))                                                                        \
    CALL(int, duplicate_above, (int, int))                                                         \
    CALL(int, set_blocking, (int))                                                                 \
    CALL(ssize_t, read, (int, void*, size_t))                                                      \
    CALL(ssize_t, write, (int, const void*, size_t))                                               \
    CALL(ssize_t, pread, (int, void*, size_t, off_t))                                              \
    CALL(ssize_t, pwrite, (int, const void*, size_t, off_t))                                       \
    CALL(off_t, lseek, (int, off_t, int))                                                          \
    CALL(int, ftruncate, (int, off_t))                                                             \
    CALL(int, fsync, (int))                                                                        \
    CALL(int, fstat, (int, struct stat*))                                                          \
    CALL(int, stat, (const char*, struct stat*))                                                   \
    CALL(int, lstat, (const char*, struct stat*))                                                  \
    CALL(int, statx, (int, const char*, int, unsigned, struct statx*))                             \
    CALL(int, fchmod, (int, mode_t))                                                               \
    CALL(int, chmod, (const char*, mode_t))                                                        \
    CALL(int, futimens, (int, const struct timespec*))                                             \
    CALL(int, flock, (int, int))                                                                   \
    CALL(int, unlink, (const char*))                                                               \
    CALL(int, rename, (const char*, const char*))                                                  \
    CALL(int, rename_new, (const char*, const char*))                                              \
    CALL(int, mkdir, (const char*, mode_t))                                                        \
    CALL(int, rmdir, (const char*))                                                                \
    CALL(int, chdir, (const char*))                                                                \
    CALL(char*, getcwd, (char*, size_t))                                                           \
    CALL(ssize_t, readlink, (const char*, char*, size_t))                                          \
    CALL(char*, realpath, (const char*, char*))                                                    \
    CALL(ssize_t, getdents64, (int, void*, size_t))                                                \
    CALL(void*, mmap, (void*, size_t, int, int, int, off_t))                                       \
    CALL(int, munmap, (void*, size_t))                                                             \
    CALL(void*, load_library, (const char*))                                                       \
    CALL(int, spawn, (pid_t*, const char*, char* const*))                                          \
    CALL(int, waitid, (idtype_t, id_t, siginfo_t*, int))                                           \
    CALL(int, start_thread, (void* (*)(void*), void*))

namespace zor::platform {

// duplicate_above(descriptor, least) is fcntl(F_DUPFD_CLOEXEC), set_blocking takes O_NONBLOCK off;
// rename_new is a rename that fails with EEXIST when the new name is taken. load_library is dlopen
// with a reason in errno: ENOENT if this library or one that it needs is missing, ENOSYS if a
// function is, ENOMEM, EACCES, and ENOEXEC for all else. spawn runs a program with these arguments,
// nothing of this process but the standard streams, the environment and the folder, and every
// signal as the system has it; start_thread starts a detached one of this process. The others are
// the calls of their names.
struct SystemCalls
{
#define ZOR_SYSTEM_CALL_FIELD(result, name, arguments) result(*name) arguments;
    ZOR_SYSTEM_CALLS(ZOR_SYSTEM_CALL_FIELD)
#undef ZOR_SYSTEM_CALL_FIELD
};

// The table in use. It starts with the system's own calls and is never null in any field.
SystemCalls& system_calls();

} // namespace zor::platform
