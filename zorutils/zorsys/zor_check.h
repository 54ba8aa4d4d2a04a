// zorutils/zorsys/zor_check.h: reports that something is wrong, from code of any layer.
//
//     if (!ReadHeader(file))
//     {
//         zor_logging::zor_err_log("fs\\zor_ini_file", 120, "short header");
//         return false;
//     }
//     zor_logging::zor_enforce("zorsys\\zor_time", 185, "Illegal input time"); // raises
//
// The header includes nothing above core/, so that every layer may report. Any thread may call
// both.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor_logging {

// Records "DBGCHK <message> <file> @ <line>" and returns; the caller goes on with its failure path.
// `file` is a source path without a leading part and without extension; `message` may be empty.
ZOR_API void zor_err_log(const char* file, int line, const char* message);

// Reports as zor_err_log does, then raises an exception of the family of std::exception whose
// what() is "Error <message>", <file> and "@<line>" on three lines. The exception owns its text.
[[noreturn]] ZOR_API void zor_enforce(const char* file, int line, const char* message);

} // namespace zor_logging
