#include "zorutils/platform/posix/message_box.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <fstream>
#include <mutex>
#include <string>

#include "zorutils/platform/posix/utf8.h"

using namespace zor::platform;

namespace {

struct Answerer
{
    std::mutex mutex;
    zor::platform::MessageBox box = nullptr;
    void* context = nullptr;
};

Answerer& answerer()
{
    static Answerer* const one = new Answerer; // lives for ever: boxes are asked for at exit too
    return *one;
}

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

int MessageBoxW(HWND, LPCWSTR text, LPCWSTR caption, UINT style)
{
    zor::platform::MessageBox box = nullptr;
    void* context = nullptr;
    {
        const std::lock_guard<std::mutex> guard(answerer().mutex);
        box = answerer().box;
        context = answerer().context;
    }
    if (box != nullptr)
        return box(text, caption, style, context);
    return isatty(STDIN_FILENO) && isatty(STDERR_FILENO) ? ask_on_terminal(text, caption) : IDABORT;
}

HWND GetActiveWindow()
{
    return nullptr;
}

HWND GetLastActivePopup(HWND owner)
{
    return owner;
}

BOOL IsDebuggerPresent()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 10, "TracerPid:") == 0)
            return strtol(line.c_str() + 10, nullptr, 10) != 0 ? TRUE : FALSE;
    }
    return FALSE;
}

void ExitProcess(UINT code)
{
    exit(static_cast<int>(code));
}

void zor::platform::set_message_box(MessageBox box, void* context)
{
    const std::lock_guard<std::mutex> guard(answerer().mutex);
    answerer().box = box;
    answerer().context = context;
}
