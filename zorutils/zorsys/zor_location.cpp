#include "zorutils/zorsys/zor_location.h"

namespace zor {

Location::Location() : Location("Unknown", "Unknown", -1) {}

Location::Location(const char* function, const char* file, int line)
    : m_function(function), m_file(file), m_line(line)
{
}

} // namespace zor
