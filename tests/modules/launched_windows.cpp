#include <windows.h>

#include "tests/modules/launched.h"

int wmain(int argc, wchar_t** argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        char utf8[1000] = {};
        WideCharToMultiByte(CP_UTF8, 0, argv[i], -1, utf8, sizeof utf8, nullptr, nullptr);
        arguments.push_back(utf8);
    }
    return run_launched(arguments);
}
