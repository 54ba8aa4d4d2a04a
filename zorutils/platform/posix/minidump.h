// zorutils/platform/posix/minidump.h: MiniDumpWriteDump, for debuggers.
//
// The file is a minidump as Microsoft describes it, of a Linux process as other tools write them:
// the system, the modules with their build ids, all threads with their registers and stacks, the
// exception, memory that the registers point to, and the memory map. It is written from the
// process itself, while other threads are held, without taking memory or a lock.
#pragma once

#include "zorutils/platform/win_types.h"

enum MINIDUMP_TYPE
{
    MiniDumpNormal = 0,
    MiniDumpWithHandleData = 0x004,
    MiniDumpScanMemory = 0x010,
    MiniDumpWithIndirectlyReferencedMemory = 0x040,
    MiniDumpWithProcessThreadData = 0x100,
};

struct MINIDUMP_EXCEPTION_INFORMATION
{
    DWORD ThreadId;
    EXCEPTION_POINTERS* ExceptionPointers;
    BOOL ClientPointers;
};

HANDLE GetCurrentProcess();

// `process` is the process itself, the last two arguments are null, and every type writes the same.
// False, with the last error, if the file could not be written whole.
BOOL MiniDumpWriteDump(HANDLE process, DWORD id, HANDLE file, MINIDUMP_TYPE type,
                       const MINIDUMP_EXCEPTION_INFORMATION* exception, void* streams,
                       void* callback);
