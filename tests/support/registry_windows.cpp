#include "tests/support/registry.h"

#include <windows.h>

namespace zor_test {

TestRegistry::TestRegistry(const std::string& text)
{
    m_folder.write("registry.reg", export_file(wide_of(text)));
    const std::string command = "regedit /S " + (m_folder / "registry.reg").string();
    EXPECT_EQ(std::system(command.c_str()), 0);
}

TestRegistry::~TestRegistry()
{
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\zorutils-tests");
}

} // namespace zor_test
