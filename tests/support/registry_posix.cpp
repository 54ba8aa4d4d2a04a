#include "tests/support/registry.h"

#include <stdlib.h>

namespace zor_test {

TestRegistry::TestRegistry(const std::string& text)
{
    m_folder.write("registry.reg", export_file(wide_of(text)));
    setenv("ZOR_REGISTRY", (m_folder / "registry.reg").c_str(), 1);
}

TestRegistry::~TestRegistry()
{
    unsetenv("ZOR_REGISTRY");
}

} // namespace zor_test
