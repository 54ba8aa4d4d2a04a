// zorutils/platform/posix/open_file.h: an open file or folder, and the opening itself.
#pragma once

#include "zorutils/platform/posix/descriptor.h"
#include "zorutils/platform/posix/handle_table.h"
#include "zorutils/platform/posix/share_locks.h"

#include <string>

namespace zor::platform {

// What CreateFileW was asked for, in this layer's terms.
struct OpenRequest
{
    std::string path;  // the system's form
    bool names_folder; // the text ended in a separator
    DWORD access;      // specific rights; the generic ones are mapped
    DWORD share;       // FILE_SHARE_*
    DWORD disposition;
    DWORD flags; // FILE_FLAG_* and FILE_ATTRIBUTE_*
};

// What a file is opened on, until its last handle is closed. Its members may be read from any
// thread; its position is the descriptor's.
class OpenFile : public HandleObject
{
public:
    OpenFile(Descriptor descriptor, const struct stat& status, OpenRequest request,
             ShareClaim claim);
    ~OpenFile() override;

    DWORD close() noexcept override;

    int descriptor() const noexcept { return m_descriptor.get(); }
    bool is_folder() const noexcept { return m_is_folder; }
    bool overlapped() const noexcept;
    bool may(DWORD right) const noexcept { return (m_request.access & right) != 0; }

private:
    friend struct FileOpening;

    Descriptor m_descriptor;
    FileIdentity m_identity;
    OpenRequest m_request;
    ShareClaim m_claim;
    bool m_is_folder;
    bool m_claimed = false;
};

struct OpenResult
{
    std::shared_ptr<OpenFile> file; // null on failure
    DWORD error; // the failure, or ERROR_ALREADY_EXISTS for a file that CREATE_ALWAYS or
                 // OPEN_ALWAYS found, else ERROR_SUCCESS
};

OpenResult open_file(OpenRequest request);

// The specific rights that the generic ones of `access` stand for, added to the others.
DWORD specific_rights(DWORD access);

// ERROR_PATH_NOT_FOUND if the folder that would hold `path` is missing, else `otherwise`.
DWORD path_or(const std::string& path, DWORD otherwise);

// The Win32 error of errno for a call on `path`: ENOENT is told apart by the folder.
DWORD path_error(const std::string& path);

} // namespace zor::platform
