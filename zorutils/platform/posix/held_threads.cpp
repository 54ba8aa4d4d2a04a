#include "zorutils/platform/posix/held_threads.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <linux/futex.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include "zorutils/platform/posix/system_calls.h"

namespace zor::platform {

namespace {

enum State : int
{
    asked = 1,
    noting,
    held,
    left_alone, // it did not come in time
};

// One holding after the other; odd while threads are held. Threads wait for it to change.
int holding = 0;
HeldThread* held_threads = nullptr;

constexpr int most_rounds = 4;  // new threads may start while the others are asked
constexpr int most_waits = 300; // of a millisecond each, in all
constexpr int idle_waits = 50;  // without any thread that comes
constexpr int no_message = -1;

int hold_signal()
{
    return SIGRTMAX - 2;
}

long futex(int* word, int operation, int value)
{
    return syscall(SYS_futex, word, operation, value, nullptr, nullptr, 0);
}

// On the thread that is to stand still.
void stand_still(int, siginfo_t* message, void* given)
{
    const int error = errno;
    const int now = __atomic_load_n(&holding, __ATOMIC_ACQUIRE);
    const int index = message->si_code == SI_QUEUE ? message->si_value.sival_int : no_message;
    if ((now & 1) == 0 || index < 0 || index >= most_held_threads)
        return;
    HeldThread& thread = held_threads[index];
    int expected = asked;
    if (__atomic_load_n(&thread.state, __ATOMIC_ACQUIRE) != asked || thread.id != gettid() ||
        !__atomic_compare_exchange_n(&thread.state, &expected, noting, false, __ATOMIC_ACQ_REL,
                                     __ATOMIC_ACQUIRE))
        return;
    memcpy(&thread.registers, given, sizeof(ucontext_t));
    if (thread.registers.uc_mcontext.fpregs != nullptr)
        memcpy(&thread.float_state, thread.registers.uc_mcontext.fpregs, sizeof thread.float_state);
    thread.registers.uc_mcontext.fpregs = &thread.float_state;
    __atomic_store_n(&thread.state, held, __ATOMIC_RELEASE);
    while (__atomic_load_n(&holding, __ATOMIC_ACQUIRE) == now)
        futex(&holding, FUTEX_WAIT, now);
    errno = error;
}

void ask(HeldThread& thread, int index)
{
    siginfo_t message = {};
    message.si_code = SI_QUEUE;
    message.si_pid = getpid();
    message.si_uid = getuid();
    message.si_value.sival_int = index;
    if (syscall(SYS_rt_tgsigqueueinfo, getpid(), thread.id, hold_signal(), &message) != 0)
        __atomic_store_n(&thread.state, left_alone, __ATOMIC_RELEASE);
}

bool is_known(const HeldThread* threads, int count, pid_t id)
{
    for (int i = 0; i < count; ++i) {
        if (threads[i].id == id)
            return true;
    }
    return false;
}

// Asks the threads that have not been asked yet; how many there are now.
int ask_new_threads(HeldThread* threads, int count)
{
    const int folder =
        system_calls().open("/proc/self/task", O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (folder < 0)
        return count;
    alignas(dirent64) char block[4096];
    const pid_t self = gettid();
    for (;;) {
        const ssize_t length = system_calls().getdents64(folder, block, sizeof block);
        if (length <= 0)
            break;
        for (ssize_t at = 0; at < length && count < most_held_threads;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(block + at);
            at += entry->d_reclen;
            const pid_t id = static_cast<pid_t>(strtol(entry->d_name, nullptr, 10));
            if (id <= 0 || id == self || is_known(threads, count, id))
                continue;
            memset(&threads[count], 0, sizeof threads[count]);
            threads[count].id = id;
            __atomic_store_n(&threads[count].state, asked, __ATOMIC_RELEASE);
            ask(threads[count], count);
            ++count;
        }
    }
    system_calls().close(folder);
    return count;
}

int count_waiting(HeldThread* threads, int count)
{
    int waiting = 0;
    for (int i = 0; i < count; ++i) {
        const int state = __atomic_load_n(&threads[i].state, __ATOMIC_ACQUIRE);
        waiting += state == asked || state == noting;
    }
    return waiting;
}

void wait_for(HeldThread* threads, int count)
{
    int before = count + 1;
    for (int waits = 0, idle = 0; waits < most_waits && idle < idle_waits; ++waits) {
        const int waiting = count_waiting(threads, count);
        if (waiting == 0)
            return;
        idle = waiting == before ? idle + 1 : 0;
        before = waiting;
        const timespec moment = {0, 1000000};
        nanosleep(&moment, nullptr);
    }
}

// What the system tells of a thread that waits in it.
void look_at(HeldThread& thread)
{
    char path[64], text[512];
    snprintf(path, sizeof path, "/proc/self/task/%d/syscall", thread.id);
    const int file = system_calls().open(path, O_RDONLY | O_CLOEXEC, 0);
    if (file < 0)
        return;
    const ssize_t length = system_calls().read(file, text, sizeof text - 1);
    system_calls().close(file);
    text[length < 0 ? 0 : length] = 0;
    // The call's number, its six arguments, the stack and the instruction; or a word.
    char* const instruction = strrchr(text, ' ');
    if (instruction == nullptr || strncmp(text, "running", 7) == 0)
        return;
    *instruction = 0;
    const char* const stack = strrchr(text, ' ');
    if (stack == nullptr)
        return;
    thread.instruction_pointer = strtoull(instruction + 1, nullptr, 16);
    thread.stack_pointer = strtoull(stack + 1, nullptr, 16);
}

void finish(HeldThread& thread)
{
    int expected = asked;
    __atomic_compare_exchange_n(&thread.state, &expected, left_alone, false, __ATOMIC_ACQ_REL,
                                __ATOMIC_ACQUIRE);
    thread.has_registers = __atomic_load_n(&thread.state, __ATOMIC_ACQUIRE) == held;
    if (!thread.has_registers) {
        look_at(thread);
        return;
    }
    const greg_t* const values = thread.registers.uc_mcontext.gregs;
    thread.stack_pointer = static_cast<uint64_t>(values[REG_RSP]);
    thread.instruction_pointer = static_cast<uint64_t>(values[REG_RIP]);
}

} // namespace

int hold_other_threads(HeldThread* threads)
{
    held_threads = threads;
    __atomic_add_fetch(&holding, 1, __ATOMIC_ACQ_REL);
    struct sigaction action = {};
    action.sa_sigaction = stand_still;
    action.sa_flags = SA_SIGINFO | SA_RESTART | SA_ONSTACK;
    sigfillset(&action.sa_mask);
    sigaction(hold_signal(), &action, nullptr);
    int count = 0;
    for (int round = 0; round < most_rounds; ++round) {
        const int known = count;
        count = ask_new_threads(threads, count);
        if (count == known)
            break;
        wait_for(threads, count);
    }
    for (int i = 0; i < count; ++i)
        finish(threads[i]);
    return count;
}

void let_threads_go()
{
    __atomic_add_fetch(&holding, 1, __ATOMIC_ACQ_REL);
    futex(&holding, FUTEX_WAKE, INT_MAX);
    // The action stays while a thread may still have the signal before it: what it meets does
    // nothing.
}

} // namespace zor::platform
