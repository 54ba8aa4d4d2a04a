// A program that faults as its first argument says, in a thread of its own.
#include "tests/faults/crash_faults.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>

#include "tests/support/threads.h"

using namespace zor::fault_handling;
using zor::thread::startThread;

namespace {

std::string mode, argument;
int* volatile nowhere = nullptr;
volatile int zero = 0, one = 1;

// A function with a name of its own, for debuggers.
__attribute__((noinline)) void write_to_nowhere()
{
    *nowhere = 1;
}

__attribute__((noinline)) int use_stack_up(int depth)
{
    volatile char block[512];
    block[0] = static_cast<char>(depth);
    return depth == -1 ? 0 : use_stack_up(depth + 1) + block[0];
}

struct FaultsAtTheEnd
{
    ~FaultsAtTheEnd()
    {
        if (mode == "static_destructor")
            write_to_nowhere();
    }
};
FaultsAtTheEnd faults_at_the_end;

// The log's lock, which is the log's own matter.
template <class Tag, typename Tag::Member member>
struct Opened
{
    friend typename Tag::Member open(Tag) { return member; }
};
struct LogLock
{
    typedef boost::recursive_mutex zor_logging::CZorLogger::*Member;
    friend Member open(LogLock);
};
template struct Opened<LogLock, &zor_logging::CZorLogger::m_lock>;

void hold_log_lock_elsewhere()
{
    std::atomic<bool> held{false};
    std::thread([&held] {
        (zor_logging::getMainLogger().*open(LogLock())).lock();
        held = true;
        for (;;)
            crash::rest(1000);
    }).detach();
    while (!held)
        crash::rest(1);
}

std::atomic<int> ready{0};

void fault_with_another()
{
    ++ready;
    while (ready < 2) {
    }
    write_to_nowhere();
}

// Calls handleCrash for a fault that did not happen; its answer.
unsigned handle(DWORD code, int action, CONTEXT* registers)
{
    EXCEPTION_RECORD record = {};
    record.ExceptionCode = code;
    _EXCEPTION_POINTERS fault = {&record, registers};
    return handleCrash(&fault, "made up", 1, static_cast<EZorCrashAction>(action));
}

unsigned handle_made_up(DWORD code, int action)
{
    return crash::with_registers(
        [&](CONTEXT* registers) { return handle(code, action, registers); });
}

// Threads that are busy with the heap, the log and files while another one faults.
void fault_among_busy_threads()
{
    for (int i = 0; i < 8; ++i)
        std::thread([i] {
            for (int k = 0;; ++k) {
                std::string text(static_cast<size_t>(100 + k % 1000), 'x');
                zor_logging::ZOR_TRACE_DEBUG("busy %d %d %s", i, k, text.c_str());
                FileFuncs::IsDirExist(GetRootDir());
            }
        }).detach();
    crash::rest(50);
    write_to_nowhere();
}

struct Fault
{
    const char* mode;
    void (*make)();
};

const Fault faults[] = {
    {"null_write", write_to_nowhere},
    {"wild_jump", [] { reinterpret_cast<void (*)()>(uintptr_t{0x10})(); }},
    {"misaligned", crash::read_misaligned},
    {"divide", [] { zero = one / zero; }},
    {"illegal", [] { __builtin_trap(); }},
    {"abort", [] { abort(); }},
    {"overflow", [] { zero = use_stack_up(0); }},
    {"stack_check", [] { crash::raise_code(0xC0000092); }},
    {"throw", [] { throw 7; }},
    {"heap_lock",
     [] {
         crash::hold_heap_lock();
         write_to_nowhere();
     }},
    {"broken_heap",
     [] {
         if (!crash::break_heap())
             exit(70);
         void* volatile block = malloc(10000);
         free(block);
         exit(71); // it went well after all
     }},
    {"loader_lock",
     [] {
         crash::hold_loader_lock();
         write_to_nowhere();
     }},
    {"loading_module",
     [] {
         const zor_text::CZorStringT<WCHAR> name(argument.c_str());
         TDLLFuncLoader::LoadDLL(name)->GetFunc(ZOR_W("anything"));
     }},
    {"log_lock",
     [] {
         hold_log_lock_elsewhere();
         write_to_nowhere();
     }},
    {"own_log_lock",
     [] {
         (zor_logging::getMainLogger().*open(LogLock())).lock();
         write_to_nowhere();
     }},
    {"static_destructor", [] { exit(0); }},
    {"in_clean_up",
     [] {
         atexit(write_to_nowhere);
         write_to_nowhere();
     }},
    {"two", fault_with_another},
    {"busy", fault_among_busy_threads},
    {"in_dump",
     [] {
         crash::fault_when_told("APPCRASH");
         write_to_nowhere();
     }},
    // Registers that cannot be read: the writing of the dump itself faults.
    {"wild_registers", [] { handle(0xC0000005, 0, reinterpret_cast<CONTEXT*>(uintptr_t{16})); }},
    {"overflow_code", [] { crash::raise_code(0xC00000FD); }},
    {"lost_log",
     [] {
         crash::show_debugger_stream();
         std::string path(
             zor_text::CZorStringT<char>(zor_logging::getZorMainLogFileName().c_str()));
         std::replace(path.begin(), path.end(), '\\', '/');
         remove(path.c_str());
         write_to_nowhere();
     }},
    {"behind_file",
     [] {
         if (!crash::read_behind_file(argument.c_str()))
             exit(70);
     }},
};

DWORD WINAPI work(void*)
{
    if (mode == "return7")
        return 7;
    for (const Fault& fault : faults) {
        if (mode == fault.mode)
            fault.make();
    }
    return 0;
}

// As many faults as the argument says, each taken for handled.
int record_many()
{
    const int count = atoi(argument.c_str());
    for (int i = 0; i < count; ++i) {
        if (handle_made_up(0xC0000005, 2) != 1)
            return 1;
    }
    return 0;
}

int answer()
{
    const auto code = static_cast<DWORD>(strtoul(argument.c_str(), nullptr, 16));
    const int action = mode == "answer_exit" ? 0 : mode == "answer_pass_on" ? 1 : 2;
    printf("%u\n", handle_made_up(code, action));
    return 0;
}

int start_suspended()
{
    mode = "return7";
    void* const thread = startThread("crash_program", __LINE__, "waiting", work, nullptr, 4);
    crash::rest(200);
    zor_logging::ZOR_TRACE_ALWAYS("before it goes");
    if (zor_test::resume(thread) != 1)
        return 1;
    return static_cast<int>(zor_test::wait_for(thread));
}

} // namespace

int main(int count, char** arguments)
{
    mode = count > 1 ? arguments[1] : "";
    argument = count > 2 ? arguments[2] : "";
    if (mode == "many")
        return record_many();
    if (mode.compare(0, 7, "answer_") == 0)
        return answer();
    if (mode == "null") {
        printf("%u\n", handleCrash(nullptr, "file", 1, CRASH_ACTION_EXIT));
        return 0;
    }
    if (mode == "suspended")
        return start_suspended();
    if (mode == "unguarded") {
        // Another thread is guarded, and so the faults are caught.
        mode = "return7";
        zor_test::wait_for(startThread("crash_program", __LINE__, "guarded", work, nullptr, 0));
        write_to_nowhere();
    }
    if (mode == "host_handler") {
        crash::handle_faults_as_host();
        mode = "return7";
        zor_test::wait_for(startThread("crash_program", __LINE__, "guarded", work, nullptr, 0));
        write_to_nowhere();
    }
    if (mode == "post_other") {
        handleCrashPostAction(static_cast<EZorCrashAction>(2));
        return 5;
    }
    if (mode == "post_exit") {
        zor_logging::ZOR_TRACE_ALWAYS("before the end");
        handleCrashPostAction(CRASH_ACTION_EXIT);
        return 5;
    }
    void* second = nullptr;
    if (mode == "two")
        second = startThread("crash_program", __LINE__, "second", work, nullptr, 0);
    void* const thread =
        startThread("crash_program", __LINE__, "surveyor's worker", work, nullptr, 0);
    const DWORD code = zor_test::wait_for(thread);
    if (second != nullptr)
        zor_test::wait_for(second);
    return static_cast<int>(code);
}
