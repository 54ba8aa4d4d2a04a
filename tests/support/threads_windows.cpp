#include <windows.h>

#include <map>
#include <mutex>

#include "tests/support/threads.h"

namespace zor_test {

namespace {

std::mutex mutex;
std::map<DWORD, std::string>& names()
{
    static std::map<DWORD, std::string> all;
    return all;
}

// What a debugger takes from the record.
LONG CALLBACK note_name(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == 0x406D1388 && record.NumberParameters == 4 &&
        record.ExceptionFlags == 0 && record.ExceptionInformation[0] == 0x1000 &&
        record.ExceptionInformation[3] == 0) {
        const auto* const name = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        const std::lock_guard<std::mutex> lock(mutex);
        names()[static_cast<DWORD>(record.ExceptionInformation[2])] = name == nullptr ? "" : name;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

DWORD wait_for(void* thread)
{
    DWORD code = 0;
    WaitForSingleObject(thread, INFINITE);
    GetExitCodeThread(thread, &code);
    CloseHandle(thread);
    return code;
}

DWORD resume(void* thread)
{
    return ResumeThread(thread);
}

DWORD current_thread()
{
    return GetCurrentThreadId();
}

void watch_names()
{
    static void* const once = AddVectoredExceptionHandler(1, note_name);
    static_cast<void>(once);
}

std::string name_of_this_thread()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return names()[GetCurrentThreadId()];
}

std::string kept_of(const std::string& name)
{
    return name;
}

} // namespace zor_test
