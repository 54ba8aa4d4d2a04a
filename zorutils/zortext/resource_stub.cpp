#include "zorutils/zortext/resource_modules_internal.h"
namespace zor_text {
StringEntry find_string_entry(unsigned int)
{
    return {nullptr, 0};
}
} // namespace zor_text
