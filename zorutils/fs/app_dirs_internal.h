// zorutils/fs/app_dirs_internal.h: the record of the applications' folders.
#pragma once

#include "zorutils/zortext/zor_string.h"

struct ApplicationDirs
{
    zor_text::CZorStringT<WCHAR> applicationPath; // the library's folder, the program's file name
    zor_text::CZorStringT<WCHAR> exeDir;          // the library's folder
    zor_text::CZorStringT<WCHAR> rootDir;
    zor_text::CZorStringT<WCHAR> commonDataDir;
    zor_text::CZorStringT<WCHAR> docsDir;
    zor_text::CZorStringT<WCHAR> geoidsFolder; // of a copy that is not installed
    bool isInstalled = false;
};

// The record for a library and a program of these paths. A library's path without a backslash gives
// an empty record.
ApplicationDirs find_application_dirs(const zor_text::CZorStringT<WCHAR>& library,
                                      const zor_text::CZorStringT<WCHAR>& program);

// Whether this thread is just finding the record: what it has to say then cannot go to the log,
// which asks for the record itself.
bool finds_application_dirs();

zor_text::CZorStringT<WCHAR> geo_data_dir(const ApplicationDirs& dirs);
zor_text::CZorStringT<WCHAR> geoids_data_dir(const ApplicationDirs& dirs);
zor_text::CZorStringT<WCHAR> app_data_dir(const ApplicationDirs& dirs);
