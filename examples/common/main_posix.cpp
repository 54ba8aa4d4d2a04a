// The entry point and the terminal on POSIX: arguments are UTF-8.
#include <unistd.h>

#include "console.h"
#include "thread_end.h"
#include "zorutils/platform/posix/thread.h"
#include "zorutils/platform/posix/wait.h"

namespace host {

bool is_terminal(FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

void prepare_console() {}

int wait_for_thread(void* thread)
{
    DWORD code = 0;
    WaitForSingleObject(thread, INFINITE);
    GetExitCodeThread(thread, &code);
    CloseHandle(thread);
    return static_cast<int>(code);
}

} // namespace host

int main(int argc, char** argv)
{
    std::vector<host::Text> arguments;
    for (int i = 1; i < argc; ++i)
        arguments.push_back(host::from_utf8(argv[i]));
    return host::run(arguments);
}
