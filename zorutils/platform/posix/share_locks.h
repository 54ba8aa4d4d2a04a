// zorutils/platform/posix/share_locks.h: who has a file open, and what each of them lets others do.
//
// Within the process the rules are those of Windows, kept in a table by device and inode: an open
// asks for some of read, write and delete, shares some of them, and stands only if each other open
// of the file shares what it asks for and asks only for what it shares. An open that asks for none
// of the three (attributes only) neither meets the rules nor binds others.
//
// Across processes flock() keeps a part of that: an open that shares nothing takes the exclusive
// lock, every other the shared one, so that a file without sharing is nobody else's while it is
// open. A finer split between processes (a reader that refuses writers only) is not kept.
//
// A file that is deleted while it is open lives on under its name until its last handle in this
// process is closed, and can't be opened meanwhile.
#pragma once

#include "zorutils/platform/posix/fault_mutex.h"
#include "zorutils/platform/win_types.h"

#include <sys/stat.h>

namespace zor::platform {

// Bits of both an open's access and its sharing; the values are those of FILE_SHARE_*.
enum ShareBits : DWORD
{
    share_read = 1,
    share_write = 2,
    share_delete = 4,
};

struct FileIdentity
{
    dev_t device;
    ino_t inode;
};

inline FileIdentity identity_of(const struct stat& status)
{
    return {status.st_dev, status.st_ino};
}

struct ShareClaim
{
    DWORD access;
    DWORD share;
};

// Held from before a file is looked at until its claim is made, so that no other thread opens,
// deletes or renames it in between.
class ShareLock
{
public:
    ShareLock();

private:
    FaultLock m_guard;
};

// All of these want the lock held.

// ERROR_SUCCESS if the claim may stand beside those that there are, ERROR_SHARING_VIOLATION, or
// ERROR_ACCESS_DENIED for a file that awaits its deletion.
DWORD check_claim(const ShareLock&, FileIdentity file, ShareClaim claim);

// Enters a claim. Throws std::bad_alloc, and then nothing has changed.
void add_claim(const ShareLock&, FileIdentity file, ShareClaim claim);

// Whether any handle of this process is open on the file.
bool has_claims(const ShareLock&, FileIdentity file);

// The file, which has claims, is to go when its last claim does.
void set_delete_pending(const ShareLock&, FileIdentity file) noexcept;

// Takes a claim out. True if this was the last one of a file that was to go: the caller unlinks it.
bool remove_claim(const ShareLock&, FileIdentity file, ShareClaim claim) noexcept;

// Takes the lock across processes: ERROR_SUCCESS, or ERROR_SHARING_VIOLATION if another process
// holds it against this one.
DWORD lock_across_processes(int descriptor, ShareClaim claim);

} // namespace zor::platform
