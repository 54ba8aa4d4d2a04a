#include "zorutils/platform/posix/minidump.h"

#include <cpuid.h>
#include <errno.h>
#include <sched.h>
#include <string.h>
#include <sys/utsname.h>
#include <time.h>

#include <algorithm>
#include <atomic>

#include "zorutils/platform/posix/elf_identity.h"
#include "zorutils/platform/posix/fault_codes.h"
#include "zorutils/platform/posix/held_threads.h"
#include "zorutils/platform/posix/memory_map.h"
#include "zorutils/platform/posix/minidump_format.h"
#include "zorutils/platform/posix/minidump_memory.h"
#include "zorutils/platform/posix/open_file.h"
#include "zorutils/platform/posix/system_error.h"

using namespace zor::platform;
namespace format = zor::platform::minidump;

namespace {

constexpr size_t most_modules = 4096;
constexpr size_t most_ranges = 65536;
constexpr size_t block_size = 65536;
constexpr uint64_t most_of_faulting_stack = 1 << 20, most_of_stack = 256 << 10;
// What is kept around an address that a register holds.
constexpr uint64_t bytes_before = 256, bytes_behind = 768;

// All that the writing needs, set aside before.
struct Workspace
{
    MemoryMap map;
    HeldThread others[most_held_threads];
    format::Thread threads[most_held_threads + 1];
    format::Module modules[most_modules];
    format::Memory ranges[most_ranges];
    char block[block_size];
};

std::atomic<Workspace*> workspace{nullptr};

class Writer
{
public:
    Writer(int file, int memory, Workspace& space) : m_file(file), m_memory(memory), m_space(space)
    {
    }

    bool write(const MINIDUMP_EXCEPTION_INFORMATION* exception)
    {
        m_position = sizeof(format::Header) + sizeof m_directory;
        m_space.map.read();
        const int others = hold_other_threads(m_space.others);
        write_threads(exception, others);
        let_threads_go();
        write_exception(exception);
        write_modules();
        write_memory_list();
        write_system();
        write_misc();
        add_stream(format::linux_maps, append(m_space.map.text, m_space.map.text_length));
        write_status();
        write_head();
        return m_ok;
    }

private:
    static constexpr size_t most_streams = 8;

    void put(uint64_t position, const void* bytes, size_t size)
    {
        const auto* const from = static_cast<const char*>(bytes);
        for (size_t done = 0; m_ok && done < size;) {
            const ssize_t written = system_calls().pwrite(m_file, from + done, size - done,
                                                          static_cast<off_t>(position + done));
            if (written < 0 && errno == EINTR)
                continue;
            m_ok = written > 0;
            done += m_ok ? static_cast<size_t>(written) : 0;
        }
    }

    format::Location append(const void* bytes, size_t size)
    {
        m_position = (m_position + 7) & ~uint64_t{7};
        const format::Location place = {static_cast<uint32_t>(size),
                                        static_cast<uint32_t>(m_position)};
        put(m_position, bytes, size);
        m_position += size;
        return place;
    }

    void add_stream(uint32_t type, format::Location place)
    {
        if (m_streams < most_streams)
            m_directory[m_streams++] = {type, place};
    }

    // A count and what it counts.
    void add_list(uint32_t type, const void* entries, size_t count, size_t size)
    {
        const auto number = static_cast<uint32_t>(count);
        m_position = (m_position + 7) & ~uint64_t{7};
        const auto start = static_cast<uint32_t>(m_position);
        put(m_position, &number, sizeof number);
        put(m_position + sizeof number, entries, count * size);
        m_position += sizeof number + count * size;
        add_stream(type, {static_cast<uint32_t>(sizeof number + count * size), start});
    }

    format::Location append_text(const char* utf8)
    {
        uint32_t bytes = 0;
        auto* const out = m_space.block;
        char* at = out + sizeof bytes;
        const auto unit = [&](uint32_t value) {
            const auto half = static_cast<uint16_t>(value);
            memcpy(at, &half, sizeof half);
            at += sizeof half;
        };
        for (const auto* in = reinterpret_cast<const unsigned char*>(utf8);
             *in != 0 && at < out + block_size - 8;) {
            uint32_t point = *in++;
            const int tail = point >= 0xF0 ? 3 : point >= 0xE0 ? 2 : point >= 0xC0 ? 1 : 0;
            point &= tail == 0 ? 0xFFu : 0x3Fu >> tail;
            for (int i = 0; i < tail && (*in & 0xC0) == 0x80; ++i)
                point = point << 6 | (*in++ & 0x3Fu);
            if (point >= 0x10000) {
                unit(0xD800 + ((point - 0x10000) >> 10));
                point = 0xDC00 + ((point - 0x10000) & 0x3FF);
            }
            unit(point);
        }
        bytes = static_cast<uint32_t>(at - out - static_cast<ptrdiff_t>(sizeof bytes));
        memcpy(out, &bytes, sizeof bytes);
        unit(0);
        return append(out, static_cast<size_t>(at - out));
    }

    // --- Memory.

    bool is_kept(uint64_t start, uint64_t end) const
    {
        return std::any_of(
            m_space.ranges, m_space.ranges + m_range_count, [&](const format::Memory& range) {
                return start >= range.start && end <= range.start + range.location.size;
            });
    }

    format::Memory keep(uint64_t start, uint64_t end)
    {
        m_position = (m_position + 7) & ~uint64_t{7};
        const format::Memory range = {
            start, {static_cast<uint32_t>(end - start), static_cast<uint32_t>(m_position)}};
        for (uint64_t at = start; at < end;) {
            const size_t size = static_cast<size_t>(std::min<uint64_t>(end - at, block_size));
            read_memory(m_memory, at, m_space.block, size);
            put(m_position, m_space.block, size);
            m_position += size;
            at += size;
        }
        if (m_range_count < most_ranges)
            m_space.ranges[m_range_count++] = range;
        return range;
    }

    // From the stack pointer on. Where the stack is used up, the pointer lies below it.
    format::Memory keep_stack(uint64_t pointer, uint64_t most)
    {
        const MemoryRange* range = m_space.map.find(pointer);
        if (range == nullptr || !range->readable) {
            const uint64_t step = 1 << 20;
            range = m_space.map.find_above(pointer);
            if (range == nullptr || range->start - pointer > step)
                return {};
        }
        // What lies below the pointer may be a leaf function's.
        constexpr uint64_t red_zone = 128;
        const uint64_t start = std::max(range->start, pointer - std::min(pointer, red_zone));
        return keep(start, std::min(range->end, start + most));
    }

    void keep_around(uint64_t address)
    {
        const MemoryRange* const range = m_space.map.find(address);
        if (range == nullptr || !range->readable || strncmp(range->path, "/dev/", 5) == 0)
            return;
        const uint64_t start = std::max(range->start, address - std::min(address, bytes_before));
        const uint64_t end = std::min(range->end, address + bytes_behind);
        if (!is_kept(start, end))
            keep(start, end);
    }

    void keep_around_registers(const format::Context& registers)
    {
        const uint64_t values[] = {registers.rip, registers.rax, registers.rbx, registers.rcx,
                                   registers.rdx, registers.rsi, registers.rdi, registers.rbp,
                                   registers.r8,  registers.r9,  registers.r10, registers.r11,
                                   registers.r12, registers.r13, registers.r14, registers.r15};
        for (const uint64_t value : values)
            keep_around(value);
    }

    // --- Streams.

    void write_thread(pid_t id, const format::Context& registers, uint64_t most_of_it)
    {
        format::Thread& thread = m_space.threads[m_thread_count++];
        thread = {};
        thread.id = static_cast<uint32_t>(id);
        thread.context = append(&registers, sizeof registers);
        if (registers.rsp != 0)
            thread.stack = keep_stack(registers.rsp, most_of_it);
        keep_around_registers(registers);
    }

    void write_threads(const MINIDUMP_EXCEPTION_INFORMATION* exception, int others)
    {
        // The faulting thread first: a disk that fills up keeps the rest out.
        ucontext_t here;
        getcontext(&here);
        const ucontext_t* at_fault = &here;
        if (exception != nullptr && exception->ExceptionPointers != nullptr &&
            exception->ExceptionPointers->ContextRecord != nullptr)
            at_fault =
                reinterpret_cast<const ucontext_t*>(exception->ExceptionPointers->ContextRecord);
        m_registers = format::context_of(*at_fault);
        write_thread(gettid(), m_registers, most_of_faulting_stack);
        m_faulting_context = m_space.threads[0].context;
        for (int i = 0; i < others; ++i) {
            const HeldThread& thread = m_space.others[i];
            if (thread.has_registers) {
                m_registers = format::context_of(thread.registers);
            } else {
                m_registers = {};
                m_registers.flags = format::context_flags;
                m_registers.rsp = thread.stack_pointer;
                m_registers.rip = thread.instruction_pointer;
            }
            write_thread(thread.id, m_registers, most_of_stack);
        }
        add_list(format::thread_list, m_space.threads, m_thread_count, sizeof(format::Thread));
    }

    void write_exception(const MINIDUMP_EXCEPTION_INFORMATION* exception)
    {
        if (exception == nullptr || exception->ExceptionPointers == nullptr)
            return;
        const EXCEPTION_RECORD& record = *exception->ExceptionPointers->ExceptionRecord;
        format::Exception stream = {};
        stream.thread_id = exception->ThreadId;
        // The signal, as in other dumps of this system; the code that Windows has for it beside it.
        stream.code = signal_of(record.ExceptionCode);
        stream.flags = record.ExceptionCode;
        stream.address = reinterpret_cast<uintptr_t>(record.ExceptionAddress);
        if (record.NumberParameters >= 2)
            stream.address = record.ExceptionInformation[1];
        stream.parameter_count = std::min<uint32_t>(record.NumberParameters, 15);
        for (uint32_t i = 0; i < stream.parameter_count; ++i)
            stream.parameters[i] = record.ExceptionInformation[i];
        stream.context = m_faulting_context;
        add_stream(format::exception_stream, append(&stream, sizeof stream));
    }

    // The build id behind its mark; nothing if there is none.
    format::Location append_identity(uint64_t base)
    {
        char identity[sizeof format::elf_identity + most_build_id_bytes];
        memcpy(identity, &format::elf_identity, sizeof format::elf_identity);
        const size_t length = read_build_id(m_memory, base, identity + sizeof format::elf_identity);
        return length == 0 ? format::Location{}
                           : append(identity, sizeof format::elf_identity + length);
    }

    void write_modules()
    {
        size_t count = 0;
        const MemoryMap& map = m_space.map;
        for (size_t i = 0; i < map.count && count < most_modules; ++i) {
            const MemoryRange& first = map.ranges[i];
            if (first.path[0] != '/' || first.file_offset != 0 || first.inode == 0 ||
                !first.readable || !begins_elf(m_memory, first.start))
                continue;
            uint64_t end = first.end;
            for (; i + 1 < map.count && map.ranges[i + 1].inode == first.inode; ++i)
                end = map.ranges[i + 1].end;
            format::Module& module = m_space.modules[count++];
            module = {};
            module.base = first.start;
            module.size = static_cast<uint32_t>(end - first.start);
            module.identity = append_identity(first.start);
            module.name_offset = append_text(first.path).offset;
        }
        add_list(format::module_list, m_space.modules, count, sizeof(format::Module));
    }

    void write_memory_list()
    {
        add_list(format::memory_list, m_space.ranges, m_range_count, sizeof(format::Memory));
    }

    void write_system()
    {
        constexpr uint16_t x86_64 = 9;
        constexpr uint32_t system_linux = 0x8201;
        format::SystemInfo info = {};
        info.architecture = x86_64;
        info.platform = system_linux;
        cpu_set_t processors;
        CPU_ZERO(&processors);
        sched_getaffinity(0, sizeof processors, &processors);
        info.processors = static_cast<uint8_t>(std::min(CPU_COUNT(&processors), 255));
        unsigned a = 0, b = 0, c = 0, d = 0;
        __cpuid(0, a, b, c, d);
        info.processor[0] = b;
        info.processor[1] = d;
        info.processor[2] = c;
        __cpuid(1, a, b, c, d);
        info.processor[3] = a;
        info.processor[4] = d;
        info.level = static_cast<uint16_t>(a >> 8 & 0xF);
        info.revision = static_cast<uint16_t>((a >> 4 & 0xF) << 8 | (a & 0xF));
        utsname system = {};
        uname(&system);
        char text[3 * sizeof system.release];
        char* at = text;
        const char* const parts[] = {system.sysname, " ", system.release, " ", system.version};
        for (const char* const part : parts) {
            const size_t length =
                std::min<size_t>(strlen(part), static_cast<size_t>(text + sizeof text - 1 - at));
            memcpy(at, part, length);
            at += length;
        }
        *at = 0;
        info.version_text_offset = append_text(text).offset;
        add_stream(format::system_info, append(&info, sizeof info));
    }

    void write_misc()
    {
        format::MiscInfo info = {};
        info.size = sizeof info;
        info.flags = 1;
        info.process_id = static_cast<uint32_t>(getpid());
        add_stream(format::misc_info, append(&info, sizeof info));
    }

    void write_status()
    {
        const int file = system_calls().open("/proc/self/status", O_RDONLY | O_CLOEXEC, 0);
        if (file < 0)
            return;
        const ssize_t length = system_calls().read(file, m_space.block, block_size);
        system_calls().close(file);
        if (length > 0)
            add_stream(format::linux_proc_status,
                       append(m_space.block, static_cast<size_t>(length)));
    }

    void write_head()
    {
        format::Header head = {};
        memcpy(&head.signature, "MDMP", 4);
        head.version = 0xA793;
        head.stream_count = static_cast<uint32_t>(m_streams);
        head.directory_offset = sizeof head;
        head.time = static_cast<uint32_t>(::time(nullptr));
        put(sizeof head, m_directory, sizeof m_directory);
        put(0, &head, sizeof head);
    }

    const int m_file, m_memory;
    Workspace& m_space;
    bool m_ok = true;
    uint64_t m_position = 0;
    format::Directory m_directory[most_streams] = {};
    size_t m_streams = 0, m_thread_count = 0, m_range_count = 0;
    format::Context m_registers; // large, and the stack may be small
    format::Location m_faulting_context = {};
};

} // namespace

bool zor::platform::set_dump_memory_aside()
{
    if (workspace.load(std::memory_order_acquire) != nullptr)
        return true;
    // Pages that are not used cost nothing.
    void* const place = system_calls().mmap(nullptr, sizeof(Workspace), PROT_READ | PROT_WRITE,
                                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (place == MAP_FAILED)
        return false;
    Workspace* expected = nullptr;
    if (!workspace.compare_exchange_strong(expected, static_cast<Workspace*>(place)))
        system_calls().munmap(place, sizeof(Workspace));
    return true;
}

HANDLE GetCurrentProcess()
{
    return reinterpret_cast<HANDLE>(~uintptr_t{0}); // what the system calls it everywhere
}

BOOL MiniDumpWriteDump(HANDLE, DWORD, HANDLE handle, MINIDUMP_TYPE,
                       const MINIDUMP_EXCEPTION_INFORMATION* exception, void*, void*)
{
    const auto file = handle_as<OpenFile>(handle);
    if (!file)
        return FALSE;
    if (!set_dump_memory_aside())
        return fail_with_errno(FALSE);
    const int memory = system_calls().open("/proc/self/mem", O_RDONLY | O_CLOEXEC, 0);
    if (memory < 0)
        return fail_with_errno(FALSE);
    const bool written = Writer(file->descriptor(), memory, *workspace.load()).write(exception);
    const int error = errno;
    system_calls().close(memory);
    errno = error;
    return written ? TRUE : fail_with_errno(FALSE);
}
