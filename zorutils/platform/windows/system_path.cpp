#include "zorutils/platform/system_path.h"

namespace zor::platform {

boost::filesystem::path to_boost_path(const WCHAR* text)
{
    return text;
}

std::basic_string<WCHAR> from_boost_path(const boost::filesystem::path& path)
{
    return path.native();
}

} // namespace zor::platform
