#include "zorutils/zorsys/zor_check.h"

#include <exception>
#include <string>

#include "zorutils/platform/crt.h"
#include "zorutils/platform/interlocked.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/assert_box_internal.h"
#include "zorutils/zorsys/zor_logger.h"

namespace zor_logging {

namespace {

// A plain std::exception with a text: none of the standard classes under it, so that a handler of
// std::runtime_error doesn't take a failed check for a failed system call.
class EnforceFailure : public std::exception
{
public:
    explicit EnforceFailure(std::string text) : m_text(std::move(text)) {}
    const char* what() const noexcept override { return m_text.c_str(); }

private:
    std::string m_text;
};

const char* text_or_empty(const char* text)
{
    return text ? text : "";
}

} // namespace

void zor_err_log(const char* file, int line, const char* message)
{
    ZOR_TRACE_ALWAYS("DBGCHK %s %s @ %d", text_or_empty(message), text_or_empty(file), line);
    zor_flush_log();
}

void zor_enforce(const char* file, int line, const char* message)
{
    zor_err_log(file, line, message);
    zor_flush_log();
    std::string text = "Error ";
    text += text_or_empty(message);
    text += '\n';
    text += text_or_empty(file);
    text += "\n@";
    text += std::to_string(line);
    throw EnforceFailure(std::move(text));
}

int zor_assert_box(const char* file, unsigned int line, const char* message)
{
    static LONG shown = 0;
    if (zor::platform::interlocked_exchange_if(&shown, 0, 1) != 0)
        return IsDebuggerPresent() ? 0 : 1;
    WCHAR text[4096] = {};
    _snwprintf(text, 4095, ZOR_W("%S\n%u\n\n%S"), text_or_empty(file), line,
               text_or_empty(message));
    HWND owner = GetActiveWindow();
    if (owner != nullptr)
        owner = GetLastActivePopup(owner);
    const int answer = MessageBoxW(owner, text, ZOR_W("ZOR ASSERT"),
                                   MB_ABORTRETRYIGNORE | MB_ICONERROR | MB_TASKMODAL |
                                       MB_SETFOREGROUND | MB_TOPMOST);
    if (answer == IDABORT)
        ExitProcess(3);
    zor::platform::interlocked_store(&shown, 0);
    return answer == IDRETRY ? 0 : 1;
}

} // namespace zor_logging
