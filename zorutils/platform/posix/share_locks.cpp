#include "zorutils/platform/posix/share_locks.h"

#include "zorutils/platform/posix/last_error.h"
#include "zorutils/platform/posix/system_calls.h"

#include <algorithm>
#include <errno.h>
#include <map>
#include <sys/file.h>
#include <utility>
#include <vector>

namespace zor::platform {

namespace {

struct Record
{
    std::vector<ShareClaim> claims;
    bool delete_pending = false; // the file goes with its last claim
};

using Key = std::pair<dev_t, ino_t>;

struct Registry
{
    FaultMutex mutex;
    std::map<Key, Record> files;
};

// Never destroyed: files may be closed until the very end of the process.
Registry& registry()
{
    static Registry& instance = *new Registry;
    return instance;
}

Record* find_record(FileIdentity file)
{
    auto& files = registry().files;
    const auto found = files.find(Key(file.device, file.inode));
    return found == files.end() ? nullptr : &found->second;
}

bool stand_together(ShareClaim one, ShareClaim other)
{
    if (one.access == 0 || other.access == 0)
        return true;
    return (one.access & ~other.share) == 0 && (other.access & ~one.share) == 0;
}

} // namespace

ShareLock::ShareLock() : m_guard(registry().mutex) {}

DWORD check_claim(const ShareLock&, FileIdentity file, ShareClaim claim)
{
    const Record* record = find_record(file);
    if (!record)
        return ERROR_SUCCESS;
    if (record->delete_pending)
        return ERROR_ACCESS_DENIED;
    for (const ShareClaim& other : record->claims) {
        if (!stand_together(claim, other))
            return ERROR_SHARING_VIOLATION;
    }
    return ERROR_SUCCESS;
}

void add_claim(const ShareLock&, FileIdentity file, ShareClaim claim)
{
    auto& files = registry().files;
    const auto place = files.try_emplace(Key(file.device, file.inode)).first;
    try {
        place->second.claims.push_back(claim);
    } catch (...) {
        if (place->second.claims.empty())
            files.erase(place);
        throw;
    }
}

bool has_claims(const ShareLock&, FileIdentity file)
{
    return find_record(file) != nullptr;
}

void set_delete_pending(const ShareLock&, FileIdentity file) noexcept
{
    if (Record* record = find_record(file))
        record->delete_pending = true;
}

bool remove_claim(const ShareLock&, FileIdentity file, ShareClaim claim) noexcept
{
    Record* record = find_record(file);
    if (!record)
        return false;
    auto& claims = record->claims;
    const auto found = std::find_if(claims.begin(), claims.end(), [&](const ShareClaim& other) {
        return other.access == claim.access && other.share == claim.share;
    });
    if (found != claims.end())
        claims.erase(found);
    if (!claims.empty())
        return false;
    const bool doomed = record->delete_pending;
    registry().files.erase(Key(file.device, file.inode));
    return doomed;
}

DWORD lock_across_processes(int descriptor, ShareClaim claim)
{
    if (claim.access == 0)
        return ERROR_SUCCESS;
    const int kind = claim.share == 0 ? LOCK_EX : LOCK_SH;
    // Not waited for. A file system that can't lock, or a descriptor that is for attributes only,
    // leaves the rules to the process's own table.
    if (system_calls().flock(descriptor, kind | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return ERROR_SHARING_VIOLATION;
    return ERROR_SUCCESS;
}

} // namespace zor::platform
