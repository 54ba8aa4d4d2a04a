#include "zorutils/platform/posix/open_file.h"

#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/path_text.h"

#include <errno.h>
#include <limits.h>
#include <stdio.h>
#include <utility>

namespace zor::platform {

namespace {

// How often a name may appear and vanish under the opening before it gives up.
constexpr int most_rounds = 16;

constexpr mode_t mode_of_new_file = 0666;
constexpr mode_t write_bits = 0222;

constexpr DWORD reading_rights = FILE_READ_DATA | FILE_EXECUTE;
constexpr DWORD writing_rights = FILE_WRITE_DATA | FILE_APPEND_DATA;

bool replaces_content(DWORD disposition)
{
    return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
}

// Replacing content is writing, whatever the access asked for.
int open_flags(const OpenRequest& request)
{
    const bool writes =
        (request.access & writing_rights) != 0 || replaces_content(request.disposition);
    const bool reads = (request.access & reading_rights) != 0;
    const bool appends =
        (request.access & FILE_APPEND_DATA) != 0 && (request.access & FILE_WRITE_DATA) == 0;
    const int mode = writes ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY;
    // Opening a pipe must not wait for its other end: the share lock is held.
    return mode | O_NONBLOCK | (appends ? O_APPEND : 0);
}

ShareClaim claim_of(const OpenRequest& request)
{
    DWORD access = 0;
    if (request.access & reading_rights)
        access |= share_read;
    if ((request.access & writing_rights) != 0)
        access |= share_write;
    if ((request.access & DELETE) != 0)
        access |= share_delete;
    return {access, request.share & (share_read | share_write | share_delete)};
}

// Removes the name that an open file has now, which a rename or a change of the current folder may
// have made another than the one it was opened by; nothing if that name is another file's by now.
void remove_by_descriptor(int descriptor, FileIdentity file, bool folder) noexcept
{
    char link[32];
    snprintf(link, sizeof(link), "/proc/self/fd/%d", descriptor);
    char path[PATH_MAX];
    const ssize_t length = system_calls().readlink(link, path, sizeof(path) - 1);
    if (length <= 0)
        return;
    path[length] = 0;
    struct stat status;
    if (system_calls().lstat(path, &status) != 0 || status.st_dev != file.device ||
        status.st_ino != file.inode)
        return;
    if (folder)
        system_calls().rmdir(path);
    else
        system_calls().unlink(path);
}

} // namespace

// One opening, step by step; every step tells its Win32 error.
struct FileOpening
{
    OpenRequest request;
    ShareLock lock;
    Descriptor descriptor;
    struct stat status = {};
    bool created = false;

    explicit FileOpening(OpenRequest asked) : request(std::move(asked)) {}

    bool for_attributes_only() const { return claim_of(request).access == 0; }

    DWORD open_existing()
    {
        const char* path = request.path.c_str();
        const int flags = open_flags(request);
        descriptor = open_descriptor(path, flags);
        // A folder can be opened for its attributes by a caller that may write in it.
        if (!descriptor.valid() && errno == EISDIR)
            descriptor = open_descriptor(path, O_RDONLY | O_DIRECTORY);
        // The attributes of a file that this user may not read are no secret.
        if (!descriptor.valid() && errno == EACCES && (flags & O_ACCMODE) == O_RDONLY &&
            (request.access & reading_rights) == 0)
            descriptor = open_descriptor(path, O_PATH);
        return descriptor.valid() ? DWORD(ERROR_SUCCESS) : path_error(request.path);
    }

    DWORD create()
    {
        if (request.names_folder)
            return path_or(request.path, ERROR_INVALID_NAME);
        const bool read_only = (request.flags & FILE_ATTRIBUTE_READONLY) != 0;
        const mode_t mode = read_only ? mode_of_new_file & ~write_bits : mode_of_new_file;
        descriptor =
            open_descriptor(request.path.c_str(), open_flags(request) | O_CREAT | O_EXCL, mode);
        created = descriptor.valid();
        return created ? DWORD(ERROR_SUCCESS) : path_error(request.path);
    }

    // Opens or creates as the disposition says. Not with one call of the system, since the caller
    // is told whether the file was there, and since its content may go only if sharing allows.
    DWORD open_or_create()
    {
        const bool may_create =
            request.disposition != OPEN_EXISTING && request.disposition != TRUNCATE_EXISTING;
        DWORD error = ERROR_SHARING_VIOLATION;
        for (int round = 0; round < most_rounds; ++round) {
            if (request.disposition != CREATE_NEW) {
                error = open_existing();
                if (error != ERROR_FILE_NOT_FOUND || !may_create)
                    return error;
            }
            error = create();
            if (error != ERROR_FILE_EXISTS || request.disposition == CREATE_NEW)
                return error;
        }
        return error;
    }

    DWORD check_kind()
    {
        if (system_calls().fstat(descriptor.get(), &status) != 0)
            return win32_error_of(errno);
        if (S_ISDIR(status.st_mode)) {
            const bool allowed = (request.flags & FILE_FLAG_BACKUP_SEMANTICS) != 0 &&
                                 !replaces_content(request.disposition);
            return allowed ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
        }
        if (request.names_folder)
            return ERROR_INVALID_NAME;
        const bool changes = (request.access & writing_rights) != 0 ||
                             replaces_content(request.disposition) ||
                             (request.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0;
        if (!created && changes && (status.st_mode & S_IWUSR) == 0)
            return ERROR_ACCESS_DENIED;
        if (!S_ISREG(status.st_mode) && system_calls().set_blocking(descriptor.get()) != 0)
            return win32_error_of(errno);
        return ERROR_SUCCESS;
    }

    DWORD claim()
    {
        const DWORD error = check_claim(lock, identity_of(status), claim_of(request));
        return error ? error : lock_across_processes(descriptor.get(), claim_of(request));
    }

    DWORD replace_content()
    {
        if (created || !replaces_content(request.disposition))
            return ERROR_SUCCESS;
        if (retry_interrupted([&] { return system_calls().ftruncate(descriptor.get(), 0); }) != 0)
            return win32_error_of(errno);
        if (request.disposition == CREATE_ALWAYS &&
            (request.flags & FILE_ATTRIBUTE_READONLY) != 0 &&
            system_calls().fchmod(descriptor.get(), status.st_mode & 07777 & ~write_bits) != 0)
            return win32_error_of(errno);
        return ERROR_SUCCESS;
    }

    OpenResult run()
    {
        DWORD error = open_or_create();
        if (error == ERROR_SUCCESS)
            error = check_kind();
        if (error == ERROR_SUCCESS)
            error = claim();
        if (error == ERROR_SUCCESS)
            error = replace_content();
        if (error != ERROR_SUCCESS)
            return {nullptr, error};
        const bool found = !created && (request.disposition == CREATE_ALWAYS ||
                                        request.disposition == OPEN_ALWAYS);
        const ShareClaim claimed = claim_of(request);
        auto file =
            std::make_shared<OpenFile>(std::move(descriptor), status, std::move(request), claimed);
        add_claim(lock, file->m_identity, claimed);
        file->m_claimed = true;
        return {std::move(file), found ? DWORD(ERROR_ALREADY_EXISTS) : DWORD(ERROR_SUCCESS)};
    }
};

OpenFile::OpenFile(Descriptor descriptor, const struct stat& status, OpenRequest request,
                   ShareClaim claim)
    : m_descriptor(std::move(descriptor)), m_identity(identity_of(status)),
      m_request(std::move(request)), m_claim(claim), m_is_folder(S_ISDIR(status.st_mode))
{
}

OpenFile::~OpenFile()
{
    close();
}

bool OpenFile::overlapped() const noexcept
{
    return (m_request.flags & FILE_FLAG_OVERLAPPED) != 0;
}

DWORD OpenFile::close() noexcept
{
    if (std::exchange(m_claimed, false)) {
        const ShareLock lock;
        if ((m_request.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0)
            set_delete_pending(lock, m_identity);
        if (remove_claim(lock, m_identity, m_claim))
            remove_by_descriptor(m_descriptor.get(), m_identity, m_is_folder);
    }
    return m_descriptor.close() ? DWORD(ERROR_SUCCESS) : win32_error_of(errno);
}

OpenResult open_file(OpenRequest request)
{
    return FileOpening(std::move(request)).run();
}

DWORD specific_rights(DWORD access)
{
    DWORD rights = access;
    if (access & (GENERIC_READ | GENERIC_ALL))
        rights |= FILE_READ_DATA | FILE_READ_ATTRIBUTES;
    if (access & (GENERIC_WRITE | GENERIC_ALL))
        rights |= FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_WRITE_ATTRIBUTES;
    if (access & (GENERIC_EXECUTE | GENERIC_ALL))
        rights |= FILE_EXECUTE | FILE_READ_ATTRIBUTES;
    if (access & GENERIC_ALL)
        rights |= DELETE;
    return rights;
}

DWORD path_or(const std::string& path, DWORD otherwise)
{
    struct stat status;
    const bool folder = system_calls().stat(parent_of(path).c_str(), &status) == 0;
    return folder && S_ISDIR(status.st_mode) ? otherwise : DWORD(ERROR_PATH_NOT_FOUND);
}

DWORD path_error(const std::string& path)
{
    const DWORD error = win32_error_of(errno);
    return error == ERROR_FILE_NOT_FOUND ? path_or(path, error) : error;
}

} // namespace zor::platform
