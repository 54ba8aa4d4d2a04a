#include "zorutils/zorsys/zor_check.h"

#include "zorutils/platform/winapi.h"

#include <exception>
#include <string>

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
    std::string record = "DBGCHK ";
    record += text_or_empty(message);
    record += ' ';
    record += text_or_empty(file);
    record += " @ ";
    record += std::to_string(line);
    record += "\r\n";
    OutputDebugStringA(record.c_str());
}

void zor_enforce(const char* file, int line, const char* message)
{
    zor_err_log(file, line, message);
    std::string text = "Error ";
    text += text_or_empty(message);
    text += '\n';
    text += text_or_empty(file);
    text += "\n@";
    text += std::to_string(line);
    throw EnforceFailure(std::move(text));
}

} // namespace zor_logging
