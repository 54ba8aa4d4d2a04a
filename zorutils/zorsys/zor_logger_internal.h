// zorutils/zorsys/zor_logger_internal.h: the log's own beginning.
#pragma once

#include "zorutils/zortext/zor_string.h"

namespace zor_logging {

// Whether this thread is making the log, or the folders that it needs: what it has to say then goes
// to the debugger stream alone, since the log cannot wait for itself.
bool opens_main_logger();

// Shows a line on the debugger stream, in pieces of at most 250 units, a zero unit as ".".
void show_on_debugger_stream(const zor_text::CZorStringT<WCHAR>& line);

} // namespace zor_logging
