// zorutils/platform/posix/resource.h: resources of compiled .res files and of PE modules.
//
//     HMODULE module = LoadLibraryExW(ZOR_W("texts.res"), nullptr, LOAD_LIBRARY_AS_DATAFILE);
//     HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(block), RT_STRING);
//     const void* data = LockResource(LoadResource(module, found));
//
// Types and names are numbers; entries under a textual type or name are not seen. Modules stay in
// memory to the end of the process, so that their texts may be pointed at. Any thread may call.
#pragma once

#include "zorutils/platform/win_types.h"

#define LOAD_LIBRARY_AS_DATAFILE 0x00000002
#define RT_STRING MAKEINTRESOURCEW(6)

// Reads a module; `file` is null and `flags` LOAD_LIBRARY_AS_DATAFILE. Null, with the last error,
// if the file can't be read, or is neither kind or broken anywhere (ERROR_BAD_EXE_FORMAT).
HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags);

// Looks up an entry. The null module is the program: its resources are in "<program>.res" beside
// it. Of several languages the one asked for comes first, then the neutral one of its family and
// the neutral one; the neutral language 0 goes on to the language that the environment names for
// messages, to English, and at last to whichever is first.
// Null with ERROR_RESOURCE_DATA_NOT_FOUND for a module without resources or a handle that isn't of
// a module, ERROR_RESOURCE_TYPE_NOT_FOUND, ERROR_RESOURCE_NAME_NOT_FOUND or
// ERROR_RESOURCE_LANG_NOT_FOUND.
HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language);

// The same in the neutral language; mind the order of the arguments.
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);

// The entry's data and its size in bytes; null and 0 for a null entry.
HGLOBAL LoadResource(HMODULE module, HRSRC entry);
LPVOID LockResource(HGLOBAL data);
DWORD SizeofResource(HMODULE module, HRSRC entry);
