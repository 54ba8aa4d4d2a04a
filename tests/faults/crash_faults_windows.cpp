#include <string.h>
#include <windows.h>

#include <string>

#include "tests/faults/crash_faults.h"

namespace crash {

void rest(unsigned milliseconds)
{
    Sleep(milliseconds);
}

void read_misaligned()
{
    // An instruction that takes aligned addresses only.
    alignas(16) volatile char bytes[64] = {};
    asm volatile("movaps 1(%0), %%xmm0" : : "r"(bytes) : "xmm0", "memory");
}

bool read_behind_file(const char*)
{
    return false;
}

void raise_code(DWORD code)
{
    RaiseException(code, 0, 0, nullptr);
}

unsigned with_registers(const std::function<unsigned(CONTEXT*)>& use)
{
    CONTEXT registers = {};
    RtlCaptureContext(&registers);
    return use(&registers);
}

namespace {

std::string awaited;

LONG CALLBACK fault_in_stream(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    constexpr DWORD shown_narrow = 0x40010006; // the text stands in the second word
    if (record.ExceptionCode == shown_narrow &&
        strstr(reinterpret_cast<const char*>(record.ExceptionInformation[1]), awaited.c_str()) !=
            nullptr) {
        awaited = "never again";
        *static_cast<volatile int*>(nullptr) = 1;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

void fault_when_told(const char* text)
{
    awaited = text;
    AddVectoredExceptionHandler(1, fault_in_stream);
}

void show_debugger_stream() {}

void handle_faults_as_host() {}

void hold_heap_lock()
{
    HeapLock(GetProcessHeap());
}

void hold_loader_lock()
{
    typedef LONG(NTAPI * Lock)(ULONG, ULONG*, ULONG_PTR*);
    const auto lock = reinterpret_cast<Lock>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "LdrLockLoaderLock")));
    ULONG state = 0;
    ULONG_PTR cookie = 0;
    lock(0, &state, &cookie);
}

bool break_heap()
{
    return false;
}

} // namespace crash
