// tests/support/registry.h: a registry that holds what a test says.
#pragma once

#include <string>

#include "tests/support/temp_folder.h"

namespace zor_test {

// From its making to its end, what the text of an export file holds, UTF-8 without its first line,
// is in the registry: all of it below HKEY_CURRENT_USER\\Software\\zorutils-tests.
class TestRegistry
{
public:
    explicit TestRegistry(const std::string& text);
    ~TestRegistry();
    TestRegistry(const TestRegistry&) = delete;
    TestRegistry& operator=(const TestRegistry&) = delete;

private:
    TempFolder m_folder;
};

// An export file of that text, as the registry editor writes it.
inline std::string export_file(const Wide& text)
{
    const Wide line_end(ZOR_W("\r\n"));
    Wide all(ZOR_W("\uFEFFWindows Registry Editor Version 5.00\r\n\r\n"));
    Wide body = text;
    body.Replace(ZOR_W("\n"), line_end.c_str());
    all += body;
    return utf16(std::basic_string<WCHAR>(all.c_str(), all.length()));
}

// From UTF-8.
inline Wide wide_of(const std::string& text)
{
    return Wide(std::filesystem::u8path(text).string<WCHAR>().c_str());
}

} // namespace zor_test
