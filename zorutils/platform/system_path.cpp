#include "zorutils/platform/system_path.h"

#include <boost/filesystem/operations.hpp>

namespace zor::platform {

boost::filesystem::path to_absolute_path(const WCHAR* text, boost::system::error_code& code)
{
    namespace fs = boost::filesystem;
    const fs::path path = to_boost_path(text);
    code.clear();
    if (path.is_absolute())
        return path;
    const fs::path base = fs::current_path(code);
    return code ? fs::path() : fs::absolute(path, base);
}

} // namespace zor::platform
