// zorutils/zorsys/process.h: starting other programs.
//
//     DWORD code = 0;
//     if (LaunchExeBlocking(code, ZOR_W("C:\\tools\\convert.exe"), ZOR_W("\"a b.txt\" -v")))
//         ... // it ran to its end; `code` is its exit code
//
// `program` is the path as it is, without quotes: the library puts them. A null one, and one that
// begins with a quote, is refused. `arguments` may be null; they are the command line behind the
// program, with the quotes that they need. The program inherits the environment and the current
// folder, and no open file. Nothing is reported. Any thread.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

// Starts a program and does not wait. False if it could not be started.
ZOR_API bool LaunchExe(const WCHAR* program, const WCHAR* arguments);

// Waits for its end. True if it ran to its end, whatever its exit code, but for 259: that one reads
// as a program still running, and gives false. False also if it could not be started or waited for.
ZOR_API bool LaunchExeBlocking(DWORD& exitCode, const WCHAR* program, const WCHAR* arguments);
