// Loads the library beside it, logs a record and unloads it, as often as its argument says.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

int main(int count, char** arguments)
{
    const int rounds = count > 1 ? atoi(arguments[1]) : 0;
    for (int round = 0; round < rounds; ++round) {
        const HMODULE library = LoadLibraryW(L"zorutils.dll");
        if (library == nullptr)
            return 3;
        // zor_logging::ZOR_TRACE_ALWAYS(const char*, ...)
        void (*trace)(const char*, ...) = nullptr;
        const FARPROC found = GetProcAddress(library, "_ZN11zor_logging16ZOR_TRACE_ALWAYSEPKcz");
        if (found == nullptr)
            return 4;
        memcpy(&trace, &found, sizeof trace);
        trace("round %d", round);
        FreeLibrary(library);
        if (GetModuleHandleW(L"zorutils.dll") != nullptr) {
            puts("still loaded");
            return 5;
        }
    }
    printf("%d rounds\n", rounds);
    return 0;
}
