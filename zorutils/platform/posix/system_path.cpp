#include "zorutils/platform/system_path.h"

#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/system_error.h"

namespace zor::platform {

boost::filesystem::path to_boost_path(const WCHAR* text)
{
    SystemPath path;
    return to_system_path(text, path) == ERROR_SUCCESS ? path.path : std::string();
}

std::basic_string<WCHAR> from_boost_path(const boost::filesystem::path& path)
{
    return from_system_path(path.native());
}

} // namespace zor::platform
