#include "tests/support/modules.h"

#include <windows.h>

#include <tlhelp32.h>

namespace zor_test {

namespace {

template <class Visit>
void each_child(Visit visit)
{
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(all, &entry); more; more = Process32Next(all, &entry)) {
        if (entry.th32ParentProcessID == GetCurrentProcessId())
            visit(entry.th32ProcessID);
    }
    CloseHandle(all);
}

} // namespace

HINSTANCE find_module(const std::string& path)
{
    return GetModuleHandleA(path.c_str());
}

unsigned long open_handles()
{
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

unsigned long child_count()
{
    unsigned long count = 0;
    each_child([&](DWORD) { ++count; });
    return count;
}

void end_children()
{
    each_child([](DWORD child) {
        const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, child);
        TerminateProcess(process, 137);
        CloseHandle(process);
    });
}

} // namespace zor_test
