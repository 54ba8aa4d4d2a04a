#include "zorutils/platform/posix/system_error.h"

namespace zor::platform {

DWORD win32_error_of(int system_error)
{
    switch (system_error) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EISDIR:
    case ETXTBSY:
        return ERROR_ACCESS_DENIED;
    case EROFS:
        return ERROR_WRITE_PROTECT;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    case EBADF:
        return ERROR_INVALID_HANDLE;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ERROR_DISK_FULL;
    case EINVAL:
    case EOVERFLOW:
        return ERROR_INVALID_PARAMETER;
    case EXDEV:
        return ERROR_NOT_SAME_DEVICE;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case EWOULDBLOCK:
    case EBUSY:
        return ERROR_SHARING_VIOLATION;
    case EPIPE:
        return ERROR_BROKEN_PIPE;
    case ESPIPE:
        return ERROR_INVALID_FUNCTION;
    case ENOTSUP:
    case ENOSYS:
        return ERROR_NOT_SUPPORTED;
    case EIO:
        return ERROR_IO_DEVICE;
    case ENXIO:
    case ENODEV:
        return ERROR_NOT_READY;
    default:
        return ERROR_GEN_FAILURE;
    }
}

} // namespace zor::platform
