#include "tests/support/registry.h"

#include <windows.h>

namespace zor_test {

TestRegistry::TestRegistry(const std::string& text)
{
    m_folder.write("registry.reg", export_file(wide_of(text)));
    const std::string command = "regedit /S " + (m_folder / "registry.reg").string();
    // Wine now and then fails to start a program.
    int result = 1;
    for (int i = 0; i < 5 && result != 0; ++i)
        result = std::system(command.c_str());
    EXPECT_EQ(result, 0);
}

TestRegistry::~TestRegistry()
{
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\zorutils-tests");
}

} // namespace zor_test
