#include "zorutils/platform/posix/thread.h"

#include <errno.h>
#include <pthread.h>
#include <time.h>
#include <unistd.h>

#include <condition_variable>
#include <mutex>

#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/posix/waitable.h"

using namespace zor::platform;

namespace {

class Thread : public Waitable
{
public:
    Thread(LPTHREAD_START_ROUTINE start, void* argument, bool suspended)
        : m_start(start), m_argument(argument), m_suspended(suspended)
    {
    }

    void run()
    {
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_changed.wait(lock, [this] { return !m_suspended; });
        }
        const DWORD code = m_start(m_argument);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_code = code;
        m_ended = true;
        m_changed.notify_all();
    }

    bool wait() override
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_ended; });
        return true;
    }

    DWORD resume()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const DWORD before = m_suspended ? 1 : 0;
        m_suspended = false;
        m_changed.notify_all();
        return before;
    }

    DWORD code()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_code;
    }

private:
    const LPTHREAD_START_ROUTINE m_start;
    void* const m_argument;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_suspended;
    bool m_ended = false;
    DWORD m_code = STILL_ACTIVE;
};

void* thread_entry(void* given)
{
    const std::unique_ptr<std::shared_ptr<Thread>> thread(
        static_cast<std::shared_ptr<Thread>*>(given));
    (*thread)->run();
    return nullptr;
}

} // namespace

HANDLE CreateThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE start, void* argument,
                    DWORD flags, LPDWORD)
{
    return without_exceptions(HANDLE{}, [&]() -> HANDLE {
        const auto thread =
            std::make_shared<Thread>(start, argument, (flags & CREATE_SUSPENDED) != 0);
        auto counted = std::make_unique<std::shared_ptr<Thread>>(thread);
        const HANDLE handle = add_handle(thread);
        if (system_calls().start_thread(thread_entry, counted.get()) != 0) {
            const DWORD error = win32_error_of(errno);
            close_handle(handle);
            return fail_with(error, HANDLE{});
        }
        counted.release(); // the thread's own
        return handle;
    });
}

DWORD ResumeThread(HANDLE thread)
{
    const auto object = handle_as<Thread>(thread);
    return object ? object->resume() : ~DWORD{0};
}

BOOL GetExitCodeThread(HANDLE thread, LPDWORD code)
{
    const auto object = handle_as<Thread>(thread);
    if (!object)
        return FALSE;
    *code = object->code();
    return TRUE;
}

DWORD GetCurrentThreadId()
{
    return static_cast<DWORD>(gettid());
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

void Sleep(DWORD milliseconds)
{
    timespec rest = {static_cast<time_t>(milliseconds / 1000),
                     static_cast<long>(milliseconds % 1000) * 1000000};
    while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}
