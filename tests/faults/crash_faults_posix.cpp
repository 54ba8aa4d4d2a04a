#include "tests/faults/crash_faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <pthread.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <time.h>
#include <ucontext.h>
#include <unistd.h>

#include <string>

#include "tests/faults/heap_lock_posix.h"
#include "zorutils/platform/posix/debug_stream.h"

namespace crash {

void rest(unsigned milliseconds)
{
    const timespec time = {milliseconds / 1000, static_cast<long>(milliseconds % 1000) * 1000000};
    nanosleep(&time, nullptr);
}

void read_misaligned()
{
    // The processor checks the alignment of all accesses from here on.
    volatile char bytes[16] = {};
    asm volatile("sub $128, %%rsp\n pushf\n orl $0x40000, (%%rsp)\n popf\n add $128, %%rsp\n"
                 "movl 1(%0), %%eax"
                 :
                 : "r"(bytes)
                 : "rax", "cc", "memory");
}

bool read_behind_file(const char* path)
{
    const int file = open(path, O_RDWR | O_CREAT | O_TRUNC, 0600);
    const void* const view = mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file, 0);
    return *static_cast<const volatile char*>(view) == 0;
}

void raise_code(DWORD)
{
    _exit(70); // no signal has another code
}

unsigned with_registers(const std::function<unsigned(CONTEXT*)>& use)
{
    ucontext_t registers;
    getcontext(&registers);
    return use(reinterpret_cast<CONTEXT*>(&registers));
}

namespace {

std::string awaited;

void fault_in_stream(const WCHAR* text, void*)
{
    const zor_text::CZorStringT<char> shown(text);
    if (shown.Find(awaited.c_str()) >= 0)
        *static_cast<volatile int*>(nullptr) = 1;
}

void end_as_host(int)
{
    const char text[] = "the host's handler\n";
    const ssize_t ignored = write(1, text, sizeof text - 1);
    static_cast<void>(ignored);
    _exit(33);
}

} // namespace

void fault_when_told(const char* text)
{
    awaited = text;
    zor::platform::set_debug_stream(fault_in_stream, nullptr);
}

void show_debugger_stream()
{
    zor::platform::set_debug_stream(
        [](const WCHAR* text, void*) {
            char bytes[512];
            size_t length = 0;
            for (; text[length] != 0 && length < sizeof bytes; ++length)
                bytes[length] = static_cast<char>(text[length]);
            const ssize_t ignored = write(2, bytes, length);
            static_cast<void>(ignored);
        },
        nullptr);
}

void handle_faults_as_host()
{
    signal(SIGSEGV, end_as_host);
}

void hold_heap_lock()
{
    lock_heap();
}

void hold_loader_lock()
{
    // The list of libraries is locked as long as it is walked through.
    dl_iterate_phdr(
        [](dl_phdr_info*, size_t, void*) -> int {
            *static_cast<volatile int*>(nullptr) = 1;
            return 0;
        },
        nullptr);
}

bool break_heap()
{
    // What stands behind the last block is the size of the rest.
    constexpr size_t size = 100000;
    auto* const block = static_cast<volatile char*>(malloc(size));
    for (size_t i = 0; i < size + 64; ++i)
        block[i] = static_cast<char>(0xFF);
    return true;
}

} // namespace crash
