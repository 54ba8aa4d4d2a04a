// zorutils/platform/posix/minidump_format.h: the records of a minidump, as they stand in the file.
#pragma once

#include <stdint.h>
#include <ucontext.h>

namespace zor::platform::minidump {

enum StreamType : uint32_t
{
    thread_list = 3,
    module_list = 4,
    memory_list = 5,
    exception_stream = 6,
    system_info = 7,
    misc_info = 15,
    linux_proc_status = 0x47670004,
    linux_maps = 0x47670009,
};

#pragma pack(push, 4)

struct Location
{
    uint32_t size;
    uint32_t offset;
};

struct Header
{
    uint32_t signature; // "MDMP"
    uint32_t version;
    uint32_t stream_count;
    uint32_t directory_offset;
    uint32_t checksum;
    uint32_t time;
    uint64_t flags;
};

struct Directory
{
    uint32_t type;
    Location location;
};

struct Memory
{
    uint64_t start;
    Location location;
};

struct Thread
{
    uint32_t id;
    uint32_t suspend_count;
    uint32_t priority_class;
    uint32_t priority;
    uint64_t environment_block;
    Memory stack;
    Location context;
};

struct Exception
{
    uint32_t thread_id;
    uint32_t alignment;
    uint32_t code;
    uint32_t flags;
    uint64_t record;
    uint64_t address;
    uint32_t parameter_count;
    uint32_t unused;
    uint64_t parameters[15];
    Location context;
};

struct Module
{
    uint64_t base;
    uint32_t size;
    uint32_t checksum;
    uint32_t time;
    uint32_t name_offset;
    uint32_t version[13];
    Location identity;
    Location other;
    uint64_t reserved[2];
};

struct SystemInfo
{
    uint16_t architecture; // 9: x86-64
    uint16_t level;
    uint16_t revision;
    uint8_t processors;
    uint8_t product;
    uint32_t major, minor, build;
    uint32_t platform; // 0x8201: Linux
    uint32_t version_text_offset;
    uint16_t suites;
    uint16_t reserved;
    uint32_t processor[6];
};

struct MiscInfo
{
    uint32_t size;
    uint32_t flags; // 1: the process's number
    uint32_t process_id;
    uint32_t times[3];
};

// The registers of x86-64 in Microsoft's order.
struct Context
{
    uint64_t home[6];
    uint32_t flags;
    uint32_t mxcsr;
    uint16_t cs, ds, es, fs, gs, ss;
    uint32_t eflags;
    uint64_t debug[6];
    uint64_t rax, rcx, rdx, rbx, rsp, rbp, rsi, rdi, r8, r9, r10, r11, r12, r13, r14, r15;
    uint64_t rip;
    uint8_t float_save[512];
    uint64_t vector_registers[26][2];
    uint64_t vector_control;
    uint64_t debug_control[5];
};

#pragma pack(pop)

static_assert(sizeof(Header) == 32 && sizeof(Thread) == 48 && sizeof(Module) == 108);
static_assert(sizeof(Exception) == 168 && sizeof(SystemInfo) == 56 && sizeof(Context) == 1232);

// What the context's flags say is there: x86-64, control, integer, segments, floating point.
constexpr uint32_t context_flags = 0x0010000F;
// What stands in front of a module's build id.
constexpr uint32_t elf_identity = 0x4270454C; // "BpEL"

// A thread's registers in that order.
Context context_of(const ucontext_t& registers);

} // namespace zor::platform::minidump
