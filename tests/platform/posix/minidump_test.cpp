// Minidumps, read back.
#include "zorutils/platform/posix/minidump.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <string.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include "tests/platform/posix/failing_calls.h"
#include "tests/support/temp_folder.h"
#include "zorutils/platform/posix/files.h"
#include "zorutils/platform/posix/minidump_format.h"
#include "zorutils/platform/posix/minidump_memory.h"
#include "zorutils/platform/winapi.h"

using namespace zor_test;
namespace format = zor::platform::minidump;

namespace {

class Minidump : public testing::Test
{
protected:
    Minidump() { EXPECT_TRUE(zor::platform::set_dump_memory_aside()); }

    // Writes a dump as of a fault here; its bytes.
    bool write(
        DWORD code = 0xC0000005, const std::function<void()>& before = [] {},
        const std::function<void()>& after = [] {})
    {
        EXCEPTION_RECORD record = {};
        record.ExceptionCode = code;
        record.ExceptionAddress = reinterpret_cast<void*>(uintptr_t{0x1234});
        record.NumberParameters = 2;
        record.ExceptionInformation[0] = 1;
        record.ExceptionInformation[1] = 0x5678;
        EXCEPTION_POINTERS pointers = {&record, reinterpret_cast<CONTEXT*>(&registers)};
        const MINIDUMP_EXCEPTION_INFORMATION information = {static_cast<DWORD>(gettid()), &pointers,
                                                            TRUE};
        const HANDLE file = CreateFileW(folder.wide("dump").c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        before();
        const BOOL written =
            MiniDumpWriteDump(GetCurrentProcess(), static_cast<DWORD>(getpid()), file,
                              MiniDumpNormal, &information, nullptr, nullptr);
        after();
        CloseHandle(file);
        bytes = folder.read("dump");
        return written != FALSE;
    }
    template <class T>
    T at(uint64_t offset) const
    {
        T value = {};
        EXPECT_LE(offset + sizeof value, bytes.size());
        if (offset + sizeof value <= bytes.size())
            memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    }
    format::Location stream(uint32_t type) const
    {
        const auto head = at<format::Header>(0);
        for (uint32_t i = 0; i < head.stream_count; ++i) {
            const auto entry =
                at<format::Directory>(head.directory_offset + i * sizeof(format::Directory));
            if (entry.type == type)
                return entry.location;
        }
        return {};
    }
    template <class T>
    std::vector<T> list(uint32_t type) const
    {
        const format::Location place = stream(type);
        std::vector<T> entries(at<uint32_t>(place.offset));
        EXPECT_EQ(place.size, 4 + entries.size() * sizeof(T));
        for (size_t i = 0; i < entries.size(); ++i)
            entries[i] = at<T>(place.offset + 4 + i * sizeof(T));
        return entries;
    }
    std::u16string text(uint32_t offset) const
    {
        const auto length = at<uint32_t>(offset);
        std::u16string units(length / 2, 0);
        memcpy(units.data(), bytes.data() + offset + 4, length);
        return units;
    }
    // The bytes at an address of the process, as far as the dump has them.
    std::string memory(uint64_t address, size_t size) const
    {
        for (const auto& range : list<format::Memory>(format::memory_list)) {
            if (address >= range.start && address + size <= range.start + range.location.size)
                return bytes.substr(range.location.offset + (address - range.start), size);
        }
        return "";
    }

    TempFolder folder;
    ucontext_t registers = {};
    std::string bytes;
};

} // namespace

TEST_F(Minidump, HasTheExceptionAndItsThread)
{
    getcontext(&registers);
    ASSERT_TRUE(write());
    const auto head = at<format::Header>(0);
    EXPECT_EQ(bytes.substr(0, 4), "MDMP");
    EXPECT_EQ(head.version, 0xA793u);
    const auto exception = at<format::Exception>(stream(format::exception_stream).offset);
    EXPECT_EQ(exception.thread_id, static_cast<uint32_t>(gettid()));
    EXPECT_EQ(exception.code, static_cast<uint32_t>(SIGSEGV));
    EXPECT_EQ(exception.flags, 0xC0000005u);
    EXPECT_EQ(exception.address, 0x5678u);
    EXPECT_EQ(exception.parameter_count, 2u);
    EXPECT_EQ(exception.parameters[0], 1u);
    const auto context = at<format::Context>(exception.context.offset);
    EXPECT_EQ(context.rip, static_cast<uint64_t>(registers.uc_mcontext.gregs[REG_RIP]));
    EXPECT_EQ(context.rsp, static_cast<uint64_t>(registers.uc_mcontext.gregs[REG_RSP]));
    EXPECT_EQ(context.r15, static_cast<uint64_t>(registers.uc_mcontext.gregs[REG_R15]));
    EXPECT_EQ(context.flags, format::context_flags);
    const auto system = at<format::SystemInfo>(stream(format::system_info).offset);
    EXPECT_EQ(system.architecture, 9);
    EXPECT_EQ(system.platform, 0x8201u);
    EXPECT_GE(system.processors, 1);
    EXPECT_EQ(text(system.version_text_offset).substr(0, 6), u"Linux ");
    EXPECT_EQ(at<format::MiscInfo>(stream(format::misc_info).offset).process_id,
              static_cast<uint32_t>(getpid()));
}

TEST_F(Minidump, NamesTheSignalOfEachCode)
{
    getcontext(&registers);
    const std::map<DWORD, int> signals = {
        {0xC0000005, SIGSEGV}, {0xC00000FD, SIGSEGV}, {0xC0000006, SIGBUS},
        {0x80000002, SIGBUS},  {0xC0000094, SIGFPE},  {0xC000001D, SIGILL},
        {0xC0000409, SIGABRT}, {0x20474343, SIGABRT}, {0x12345, 0x12345}};
    for (const auto& [code, signal] : signals) {
        ASSERT_TRUE(write(code));
        EXPECT_EQ(at<format::Exception>(stream(format::exception_stream).offset).code,
                  static_cast<uint32_t>(signal))
            << std::hex << code;
    }
}

TEST_F(Minidump, HasWhatStacksAndRegistersReferTo)
{
    std::vector<char> heap(100000, 'a');
    strcpy(heap.data() + 50000, "a text on the heap");
    volatile char stack[] = "a text on the stack";
    getcontext(&registers);
    registers.uc_mcontext.gregs[REG_RBX] = reinterpret_cast<greg_t>(heap.data() + 50000);
    registers.uc_mcontext.gregs[REG_R12] = 0x10; // of nothing
    ASSERT_TRUE(write());
    EXPECT_EQ(memory(reinterpret_cast<uintptr_t>(heap.data() + 50000), 18), "a text on the heap");
    EXPECT_EQ(memory(reinterpret_cast<uintptr_t>(&stack[0]), 19), "a text on the stack");
    EXPECT_EQ(memory(0x10, 1), "");
}

TEST_F(Minidump, HasEveryThread)
{
    std::atomic<int> ready{0};
    std::atomic<bool> done{false};
    std::set<uint32_t> ids = {static_cast<uint32_t>(gettid())};
    std::vector<std::thread> threads;
    pid_t numbers[20] = {};
    uint64_t places[20] = {};
    for (int i = 0; i < 20; ++i)
        threads.emplace_back([&, i] {
            volatile char text[] = "a thread's own text";
            numbers[i] = gettid();
            places[i] = reinterpret_cast<uintptr_t>(&text[0]);
            ++ready;
            // Half of them run, half of them wait in the system.
            while (!done) {
                if (i % 2 == 0)
                    usleep(1000);
            }
        });
    while (ready < 20)
        usleep(100);
    for (const pid_t number : numbers)
        ids.insert(static_cast<uint32_t>(number));
    getcontext(&registers);
    const bool written = write();
    const int after = ready;
    done = true;
    for (std::thread& thread : threads)
        thread.join();
    ASSERT_TRUE(written);
    EXPECT_EQ(after, 20);
    std::set<uint32_t> found;
    for (const auto& thread : list<format::Thread>(format::thread_list)) {
        found.insert(thread.id);
        const auto context = at<format::Context>(thread.context.offset);
        EXPECT_NE(context.rip, 0u) << thread.id;
        EXPECT_GT(thread.stack.location.size, 0u) << thread.id;
    }
    for (const uint32_t id : ids)
        EXPECT_EQ(found.count(id), 1u) << id;
    for (const uint64_t place : places)
        EXPECT_EQ(memory(place, 19), "a thread's own text");
}

TEST_F(Minidump, HasAThreadThatTakesNoSignals)
{
    std::atomic<pid_t> number{0};
    std::atomic<bool> done{false};
    std::thread deaf([&] {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, nullptr);
        number = gettid();
        while (!done)
            usleep(100000);
    });
    while (number == 0)
        usleep(100);
    getcontext(&registers);
    const bool written = write();
    done = true;
    deaf.join();
    ASSERT_TRUE(written);
    bool found = false;
    for (const auto& thread : list<format::Thread>(format::thread_list)) {
        if (thread.id != static_cast<uint32_t>(number))
            continue;
        found = true;
        const auto context = at<format::Context>(thread.context.offset);
        EXPECT_NE(context.rip, 0u) << "as the system tells of one that waits in it";
        EXPECT_GT(thread.stack.location.size, 0u);
    }
    EXPECT_TRUE(found);
}

TEST_F(Minidump, HasTheModulesAndTheirIdentities)
{
    getcontext(&registers);
    ASSERT_TRUE(write());
    bool program = false;
    for (const auto& module : list<format::Module>(format::module_list)) {
        EXPECT_GT(module.size, 0u);
        const std::u16string name = text(module.name_offset);
        EXPECT_EQ(name[0], u'/');
        ASSERT_GE(module.identity.size, 8u) << "all of the system's have one";
        EXPECT_EQ(at<uint32_t>(module.identity.offset), format::elf_identity);
        const auto here = reinterpret_cast<uintptr_t>(&open_descriptors);
        if (here >= module.base && here < module.base + module.size) {
            program = true;
            EXPECT_EQ(name, std::filesystem::canonical("/proc/self/exe").u16string());
        }
    }
    EXPECT_TRUE(program);
    const format::Location maps = stream(format::linux_maps);
    EXPECT_NE(bytes.substr(maps.offset, maps.size).find("[stack]"), std::string::npos);
    const format::Location status = stream(format::linux_proc_status);
    EXPECT_NE(bytes.substr(status.offset, status.size).find("Pid:\t" + std::to_string(getpid())),
              std::string::npos);
}

TEST_F(Minidump, OfAStackThatIsUsedUpHasWhatIsAboveIt)
{
    const size_t size = 256 << 10;
    auto* const map = static_cast<char*>(
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(map, 64 << 10, PROT_NONE);
    strcpy(map + (64 << 10) + 500, "the last frame");
    getcontext(&registers);
    registers.uc_mcontext.gregs[REG_RSP] = reinterpret_cast<greg_t>(map + (64 << 10) - 40);
    ASSERT_TRUE(write());
    EXPECT_EQ(memory(reinterpret_cast<uintptr_t>(map + (64 << 10) + 500), 14), "the last frame");
    munmap(map, size);
}

TEST_F(Minidump, IsWrittenAsFarAsTheSystemGoesAlong)
{
    getcontext(&registers);
    for (const int error : {EIO, ENOSPC, EMFILE}) {
        bool failed = true;
        for (int nth = 1; failed; ++nth) {
            SCOPED_TRACE(nth);
            std::unique_ptr<FailingCalls> failing;
            const bool written = write(
                0xC0000005, [&] { failing = std::make_unique<FailingCalls>(nth, error); },
                [&] {
                    failed = failing->failed();
                    failing.reset();
                });
            if (failed)
                continue;
            EXPECT_TRUE(written);
            EXPECT_GT(nth, 100);
        }
    }
}

TEST_F(Minidump, ForAHandleThatIsNoneFails)
{
    EXPECT_FALSE(MiniDumpWriteDump(GetCurrentProcess(), 0, nullptr, MiniDumpNormal, nullptr,
                                   nullptr, nullptr));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_HANDLE));
}
