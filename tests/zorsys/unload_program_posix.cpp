// Loads the library beside it, logs a record and unloads it, as often as its argument says.
#include <dlfcn.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

// What the library keeps to the end of the process, tables and folders, stays behind when it is
// unloaded: destroying it would take it from under records that come later.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options();
extern "C" const char* __lsan_default_options()
{
    return "detect_leaks=0";
}

namespace {

// A guarded thread leaves handlers behind, and the library with them.
int stays_after_guard(void* library, const std::string& path)
{
    // zor::thread::startThread(const char*, int, const char*, unsigned (*)(void*), void*, unsigned)
    const auto start = reinterpret_cast<void* (*)(const char*, int, const char*,
                                                  unsigned (*)(void*), void*, unsigned)>(
        dlsym(library, "_ZN3zor6thread11startThreadEPKciS2_PFjPvES3_j"));
    // WaitForSingleObject(void*, unsigned)
    const auto wait = reinterpret_cast<unsigned (*)(void*, unsigned)>(
        dlsym(library, "_Z19WaitForSingleObjectPvj"));
    if (start == nullptr || wait == nullptr)
        return 4;
    wait(start(
             "unload_program", 1, "guarded", [](void*) { return 0u; }, nullptr, 0),
         ~0u);
    dlclose(library);
    const bool stays = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr;
    puts(stays ? "it stays" : "it went");
    return stays ? 0 : 5;
}

} // namespace

int main(int count, char** arguments)
{
    const int rounds = count > 1 ? atoi(arguments[1]) : 0;
    char own[PATH_MAX] = {};
    if (readlink("/proc/self/exe", own, sizeof own - 1) <= 0)
        return 2;
    const std::string folder(own, std::string(own).rfind('/'));
    for (int round = 0; round < rounds; ++round) {
        void* const library = dlopen((folder + "/libzorutils.so").c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            puts(dlerror());
            return 3;
        }
        // zor_logging::ZOR_TRACE_ALWAYS(const char*, ...)
        const auto trace = reinterpret_cast<void (*)(const char*, ...)>(
            dlsym(library, "_ZN11zor_logging16ZOR_TRACE_ALWAYSEPKcz"));
        if (trace == nullptr)
            return 4;
        trace("round %d", round);
        if (count > 2)
            return stays_after_guard(library, folder + "/libzorutils.so");
        dlclose(library);
        if (dlopen((folder + "/libzorutils.so").c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
            puts("still loaded");
            return 5;
        }
    }
    printf("%d rounds\n", rounds);
    return 0;
}
