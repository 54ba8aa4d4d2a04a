// zorutils/zorsys/zor_thread.h: threads with a name.
//
//     DWORD WINAPI Survey(void* job);
//     void* const handle = zor::thread::startThread(__FILE__, __LINE__, "survey", Survey, &job, 0);
//
//     zor::thread::thread reader("reader", [&] { read(file); });
//     reader.join();
//
// startThread guards the thread against faults (zor_crash.h) and logs its start and its end; the
// class is Boost's thread with a name, whose body takes care of itself.
#pragma once

#include <boost/thread/detail/thread_heap_alloc.hpp>
#include <boost/thread/thread.hpp>
#include <utility>

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"
#include "zorutils/zortext/zor_string.h"

namespace zor::thread {

typedef DWORD(WINAPI* ThreadFunction)(void* argument);

// Starts a thread and returns its handle, which the caller closes; null if it could not be started,
// and what was made for it is then lost, on purpose. `flags` go to the system: CREATE_SUSPENDED (4)
// holds the thread until ResumeThread. The thread's exit code is what `function` returns. The log
// gets "THR_S #<id> <name>" and "THR_F #<id> <name>"; a thread that faults never logs the second,
// and the process ends. `name` and `file` are copied.
ZOR_API void* startThread(const char* file, int line, const char* name, ThreadFunction function,
                          void* argument, DWORD flags);

// Names a thread for debuggers. Any thread.
ZOR_API void setThreadName(DWORD threadId, const char* name);

// What a thread of the class carries besides Boost's own.
struct ZOR_API thread_data_base : boost::detail::thread_data_base
{
    explicit thread_data_base(const char* threadName);
    ~thread_data_base() override;

    zor_text::CZorStringT<char> name;

protected:
    // First on the new thread: it gets its name.
    void begin() const;
};

namespace detail {

template <class Body>
struct thread_data final : thread_data_base
{
    thread_data(const char* threadName, Body threadBody)
        : thread_data_base(threadName), body(std::move(threadBody))
    {
    }
    void run() override
    {
        begin();
        body();
    }
    Body body;
};

} // namespace detail

class ZOR_API thread : public boost::thread
{
public:
    // No thread.
    thread() = default;

    // Starts at once. boost::thread_interrupted ends the body quietly; every other exception ends
    // the process. Errors: boost::thread_resource_error.
    template <class Body>
    thread(const char* name, Body body)
    {
        adopt(boost::detail::thread_data_ptr(
            boost::detail::heap_new<detail::thread_data<Body>>(name, std::move(body))));
        start_thread();
    }

    // The data of this object, which keeps it; null without a thread.
    thread_data_base* get_thread_info() const;

private:
    void adopt(boost::detail::thread_data_ptr data);
    void start_thread();
    bool start_thread_noexcept();
};

} // namespace zor::thread
