// zorutils/platform/posix/float_text.h: the body of a floating conversion of the formatters.
#pragma once

#include <string>

namespace zor {
namespace platform {

// The text of the magnitude for one of "fFeEgGaA", without its sign. `precision` is negative if the
// format names none; `alternate` is the flag "#".
std::string float_text(double value, char conversion, int precision, bool alternate);

} // namespace platform
} // namespace zor
