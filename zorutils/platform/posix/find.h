// zorutils/platform/posix/find.h: searches: FindFirstFileW and its kin.
//
// A pattern may stand in the last name of a path. In it "*" is any run of characters and "?" is
// one; dots at its end do not count, and ".*" at its end may match nothing, so that "*.*" finds
// every name. Case does not count in a pattern. What is this port's own:
//
//   a name without "*" and "?" is looked up as it is, and there case counts, as it does in opening
//   entries come sorted by name, without regard to case, with "." and ".." first
//   there are no short names: no pattern finds a file by one, and cAlternateFileName is empty
#pragma once

#include "zorutils/platform/win_types.h"

// INVALID_HANDLE_VALUE with the last error: ERROR_FILE_NOT_FOUND for no match, ERROR_PATH_NOT_FOUND
// for a missing folder, ERROR_INVALID_NAME for a file in its place.
HANDLE FindFirstFileW(LPCWSTR path, WIN32_FIND_DATAW* data);

// FALSE with ERROR_NO_MORE_FILES at the end.
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* data);

BOOL FindClose(HANDLE search);
