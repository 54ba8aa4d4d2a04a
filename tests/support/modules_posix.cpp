#include "tests/support/modules.h"

#include <dirent.h>
#include <dlfcn.h>
#include <link.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>

namespace zor_test {

namespace {

// Calls `visit` with each entry's name.
template <class Visit>
void each_entry(const char* folder, Visit visit)
{
    DIR* const entries = opendir(folder);
    if (entries == nullptr)
        return;
    while (const dirent* entry = readdir(entries))
        visit(std::string(entry->d_name));
    closedir(entries);
}

template <class Visit>
void each_child(Visit visit)
{
    each_entry("/proc", [&](const std::string& name) {
        std::ifstream status("/proc/" + name + "/stat");
        std::string text;
        if (!std::getline(status, text))
            return;
        // "id (name) state parent ..."
        const size_t end = text.rfind(')');
        if (end != std::string::npos && atol(text.c_str() + end + 4) == getpid())
            visit(static_cast<pid_t>(atol(name.c_str())));
    });
}

} // namespace

HINSTANCE find_module(const std::string& path)
{
    void* const handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr)
        return nullptr;
    const link_map* map = nullptr;
    dlinfo(handle, RTLD_DI_LINKMAP, &map);
    Dl_info info = {};
    dladdr(map->l_ld, &info);
    dlclose(handle);
    return static_cast<HINSTANCE>(info.dli_fbase);
}

unsigned long open_handles()
{
    unsigned long count = 0;
    each_entry("/proc/self/fd", [&](const std::string&) { ++count; });
    return count;
}

unsigned long child_count()
{
    unsigned long count = 0;
    each_child([&](pid_t) { ++count; });
    return count;
}

void end_children()
{
    each_child([](pid_t child) { kill(child, SIGKILL); });
}

} // namespace zor_test
