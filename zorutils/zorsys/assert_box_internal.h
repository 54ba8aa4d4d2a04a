// zorutils/zorsys/assert_box_internal.h: the box of a failed assertion.
#pragma once

namespace zor_logging {

// Asks the user what to do: abort ends the process with code 3; retry gives 0, for the caller to
// break into a debugger; ignore gives 1. The box shows file, line and message; it neither logs nor
// goes through the hosts' messages. While one box is open another is not shown: 0 with a debugger
// attached, else 1. Any thread. Not exported: an assertion macro of the applications reaches it as
// it likes.
int zor_assert_box(const char* file, unsigned int line, const char* message);

} // namespace zor_logging
