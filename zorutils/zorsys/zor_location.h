// zorutils/zorsys/zor_location.h: a position in source code.
//
//     void Report(const zor::Location& where);
//     Report(zor::Location(__func__, __FILE__, __LINE__));
//
// The texts are not owned and must outlive the value, as literals do.
#pragma once

#include "zorutils/core/zor_api.h"

namespace zor {

class ZOR_API Location
{
public:
    // "Unknown", "Unknown", -1.
    Location();
    Location(const char* function, const char* file, int line);

    const char* function_name() const { return m_function; }
    const char* file_name() const { return m_file; }
    int line_number() const { return m_line; }

private:
    const char* m_function;
    const char* m_file;
    int m_line;
};

} // namespace zor
