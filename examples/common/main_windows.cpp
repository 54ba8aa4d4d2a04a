// The entry point and the terminal on Windows: arguments are UTF-16, the console is set to UTF-8.
#include <io.h>
#include <windows.h>

#include "console.h"
#include "thread_end.h"

namespace host {

bool is_terminal(FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

void prepare_console()
{
    SetConsoleOutputCP(CP_UTF8);
}

int wait_for_thread(void* thread)
{
    DWORD code = 0;
    WaitForSingleObject(thread, INFINITE);
    GetExitCodeThread(thread, &code);
    CloseHandle(thread);
    return static_cast<int>(code);
}

} // namespace host

int wmain(int argc, wchar_t** argv)
{
    std::vector<host::Text> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(argv[i]);
    return host::run(arguments);
}
