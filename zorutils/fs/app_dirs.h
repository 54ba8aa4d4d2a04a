// zorutils/fs/app_dirs.h: the folders of the applications.
//
//     path = GetRootDir();
//     path += ZOR_W("\\settings.ini");
//
// All are found once, on first use, from where the library lies, the user's and the machine's
// folders, and two files beside the library, and never change after that:
//
//     zor_dir.ini                          section Directories, keys User and Documents: the user's
//                                          data and documents in place of the system's folders
//     components\NotInstalledApp.txt       there is one: the copy is not installed, and has its
//     data
//                                          beside it; its key GeoidsFolder, in front of every
//                                          section, names the folder of the geoids
//
// No folder is made or looked for, and nothing is reported. Paths have backslashes; those without a
// word on it here have none at the end. Any thread.
#pragma once

#include <stdint.h>

#include "zorutils/core/zor_api.h"
#include "zorutils/zortext/zor_string.h"

// The library's folder, and the file name of the running program.
ZOR_API zor_text::CZorStringT<WCHAR> GetApplicationPath();

// The library's folder: that of the program only where both lie together.
ZOR_API zor_text::CZorStringT<WCHAR> GetExeDir();

// The user's data: "User" of zor_dir.ini, else a folder named as the library's in the user's
// roaming data.
ZOR_API zor_text::CZorStringT<WCHAR> GetRootDir();

// The user's documents: "Documents" of zor_dir.ini, else a folder named as the library's in the
// user's documents.
ZOR_API zor_text::CZorStringT<WCHAR> GetDocsDir();

// Data of all users.
ZOR_API zor_text::CZorStringT<WCHAR> GetOstrelAppDataDir();

// Geographic data and geoids, each with "\" at the end. The installed form has the folder of its
// version in it and the other has not: on purpose.
ZOR_API zor_text::CZorStringT<WCHAR> GetOstrelAppGeoDataDir();
ZOR_API zor_text::CZorStringT<WCHAR> GetOstrelAppGeoidsDataDir();

// An address inside the library, by which the system finds its module.
ZOR_API intptr_t GetZorDllBaseAddress();
