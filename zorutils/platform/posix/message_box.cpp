#include "zorutils/platform/posix/message_box.h"

#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <string>

#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/posix/utf8.h"
#include "zorutils/platform/posix/window.h"
#include "zorutils/platform/posix/window_system.h"

using namespace zor::platform;

namespace {

std::string to_utf8(LPCWSTR text)
{
    const int length = static_cast<int>(std::char_traits<WCHAR>::length(text));
    std::string bytes(static_cast<size_t>(wide_to_utf8(text, length, nullptr, 0, false)), '\0');
    wide_to_utf8(text, length, bytes.data(), static_cast<int>(bytes.size()), false);
    return bytes;
}

int ask_on_terminal(LPCWSTR text, LPCWSTR caption)
{
    fprintf(stderr, "\n%s\n%s\n", to_utf8(caption).c_str(), to_utf8(text).c_str());
    for (char line[64];;) {
        fputs("(a)bort, (r)etry, (i)gnore? ", stderr);
        if (fgets(line, sizeof line, stdin) == nullptr)
            return IDABORT;
        switch (line[0]) {
        case 'a':
            return IDABORT;
        case 'r':
            return IDRETRY;
        case 'i':
            return IDIGNORE;
        }
    }
}

} // namespace

int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style)
{
    WindowSystem* const system = window_system();
    return system != nullptr ? system->MessageBoxW(owner, text, caption, style)
                             : message_box_on_terminal(text, caption, style);
}

BOOL IsDebuggerPresent()
{
    // The line is among the first ones, well within this.
    char status[2048];
    const int file = system_calls().open("/proc/self/status", O_RDONLY | O_CLOEXEC, 0);
    if (file < 0)
        return FALSE;
    const ssize_t length = system_calls().read(file, status, sizeof status - 1);
    system_calls().close(file);
    status[length < 0 ? 0 : length] = 0;
    const char* const tracer = strstr(status, "TracerPid:");
    return tracer != nullptr && strtol(tracer + 10, nullptr, 10) != 0 ? TRUE : FALSE;
}

void DebugBreak()
{
    raise(SIGTRAP);
}

void ExitProcess(UINT code)
{
    exit(static_cast<int>(code));
}

int zor::platform::message_box_on_terminal(LPCWSTR text, LPCWSTR caption, UINT)
{
    return isatty(STDIN_FILENO) && isatty(STDERR_FILENO) ? ask_on_terminal(text, caption) : IDABORT;
}
