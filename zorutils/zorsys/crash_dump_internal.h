// zorutils/zorsys/crash_dump_internal.h: the folder that a fault leaves.
#pragma once

#include "zorutils/platform/win_types.h"

namespace zor::fault_handling {

// Makes what the writing needs and should not make while a fault is handled.
void prepare_dump_folder();

// Takes the next slot of SupportInfo/Dumps, and fills it. False if the index could not be written,
// and the slot is then as it was, or if the log or the dump is missing from it.
bool write_dump_folder(_EXCEPTION_POINTERS* exception);

} // namespace zor::fault_handling
