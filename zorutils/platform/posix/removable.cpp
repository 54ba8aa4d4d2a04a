#include "zorutils/platform/removable.h"

#include <stdio.h>
#include <sys/sysmacros.h>

#include <fstream>
#include <string>

#include "zorutils/platform/posix/path_text.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/posix/system_error.h"

namespace zor::platform {

// The kernel says of every disk whether its medium can be taken out; a partition's folder lies in
// its disk's.
bool is_on_removable_volume(const WCHAR* folder)
{
    SystemPath path;
    struct stat status;
    if (to_system_path(folder, path) != ERROR_SUCCESS ||
        system_calls().stat(path.path.c_str(), &status) != 0)
        return false;
    char device[64];
    snprintf(device, sizeof device, "/sys/dev/block/%u:%u/", major(status.st_dev),
             minor(status.st_dev));
    for (const char* place : {"removable", "../removable"}) {
        std::ifstream file(std::string(device) + place);
        char answer = 0;
        if (file >> answer)
            return answer == '1';
    }
    return false;
}

} // namespace zor::platform
