// zorutils/platform/posix/folders.h: the user's and the machine's folders.
//
// Roaming data: XDG_CONFIG_HOME, else .config in the home folder. Documents: XDG_DOCUMENTS_DIR,
// from the environment or the user's user-dirs.dirs, else the home folder. Data of all users:
// ZOR_COMMON_APPDATA, else /var/lib. The home folder is HOME, or what the system's list of users
// says.
#pragma once

#include "zorutils/platform/win_types.h"

#define S_OK 0
#define E_FAIL static_cast<HRESULT>(0x80004005)
#define E_INVALIDARG static_cast<HRESULT>(0x80070057)
#define CSIDL_PERSONAL 5
#define CSIDL_APPDATA 26
#define CSIDL_COMMON_APPDATA 35

// The folder with backslashes and none at its end, into at least MAX_PATH units; window, token and
// flags are not looked at. S_OK, or E_INVALIDARG, with an empty path, for another folder, E_FAIL
// for one that cannot be told. No folder is made.
HRESULT SHGetFolderPathW(HWND window, int folder, HANDLE token, DWORD flags, LPWSTR path);
