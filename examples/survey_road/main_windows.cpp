// The entry point and the terminal on Windows: arguments are UTF-16, the console is set to UTF-8.
#include <io.h>
#include <windows.h>

#include "console.h"
#include "run.h"

namespace survey_road {

bool is_terminal(FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

void prepare_console()
{
    SetConsoleOutputCP(CP_UTF8);
}

} // namespace survey_road

int wmain(int argc, wchar_t** argv)
{
    std::vector<survey_road::Text> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(argv[i]);
    return survey_road::run(arguments);
}
