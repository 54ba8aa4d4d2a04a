#include "zorutils/zorsys/zor_thread.h"

#include <boost/shared_ptr.hpp>
#include <memory>
#include <mutex>

#include "zorutils/platform/fault_guard.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/crash_dump_internal.h"
#include "zorutils/zorsys/zor_crash.h"
#include "zorutils/zorsys/zor_logger.h"

namespace zor::thread {

namespace {

constexpr const char* source_path = "zorsys\\zor_thread";

typedef zor_text::CZorStringT<char> Narrow;

struct ZorThreadParam
{
    Narrow name;
    Narrow file;
    int line;
    ThreadFunction function;
    void* argument;
};

// A call of a thread's body, and whether it faulted.
struct GuardedBody
{
    bool faulted = false;
    int line = 0; // of the call
};

unsigned int filter(EXCEPTION_POINTERS* fault, void* context)
{
    auto& body = *static_cast<GuardedBody*>(context);
    body.faulted = true;
    return fault_handling::handleCrash(fault, source_path, body.line,
                                       fault_handling::CRASH_ACTION_EXIT);
}

DWORD WINAPI end_after_fault(void*)
{
    fault_handling::handleCrashPostAction(fault_handling::CRASH_ACTION_EXIT);
    return 0;
}

DWORD go_on(void*)
{
    return 0;
}

DWORD handler(void* context)
{
    if (!static_cast<GuardedBody*>(context)->faulted)
        return 0;
    // Guarded once more: a fault in the clean-up comes to the same filter, which ends the process.
    return platform::guarded_call({end_after_fault, nullptr, filter, go_on, context});
}

DWORD run_guarded(const ZorThreadParam& thread, int line)
{
    static std::once_flag prepared;
    std::call_once(prepared, fault_handling::prepare_dump_folder);
    GuardedBody body;
    body.line = line;
    return platform::guarded_call({thread.function, thread.argument, filter, handler, &body});
}

DWORD WINAPI guarded_entry(void* given)
{
    const boost::shared_ptr<ZorThreadParam> thread(static_cast<ZorThreadParam*>(given));
    const DWORD id = GetCurrentThreadId();
    setThreadName(id, thread->name.c_str());
    zor_logging::ZOR_TRACE_ALWAYS("THR_S #%u %s", id, thread->name.c_str());
    const DWORD result = run_guarded(*thread, __LINE__);
    zor_logging::ZOR_TRACE_ALWAYS("THR_F #%u %s", id, thread->name.c_str());
    return result;
}

// The way to what Boost's thread keeps to itself: access is not checked where a template is
// instantiated explicitly.
template <class Tag, typename Tag::Member member>
struct Opened
{
    friend typename Tag::Member open(Tag) { return member; }
};
struct ThreadInfo
{
    typedef boost::detail::thread_data_ptr boost::thread::*Member;
    friend Member open(ThreadInfo);
};
template struct Opened<ThreadInfo, &boost::thread::thread_info>;
struct StartThread
{
    typedef bool (boost::thread::*Member)();
    friend Member open(StartThread);
};
template struct Opened<StartThread, &boost::thread::start_thread_noexcept>;

} // namespace

void* startThread(const char* file, int line, const char* name, ThreadFunction function,
                  void* argument, DWORD flags)
{
    auto param = std::make_unique<ZorThreadParam>(
        ZorThreadParam{Narrow(name), Narrow(file), line, function, argument});
    // The thread takes it over; where none began it stays behind, as hosts know it.
    return CreateThread(nullptr, 0, guarded_entry, param.release(), flags, nullptr);
}

void setThreadName(DWORD threadId, const char* name)
{
    platform::name_thread(threadId, name);
}

// --- The class.

thread_data_base::thread_data_base(const char* threadName) : name(threadName) {}

thread_data_base::~thread_data_base() = default;

void thread_data_base::begin() const
{
    setThreadName(GetCurrentThreadId(), name.c_str());
}

void thread::adopt(boost::detail::thread_data_ptr data)
{
    static_cast<boost::thread*>(this)->*open(ThreadInfo()) = data;
}

void thread::start_thread()
{
    if (!start_thread_noexcept())
        boost::throw_exception(boost::thread_resource_error());
}

bool thread::start_thread_noexcept()
{
    return (static_cast<boost::thread*>(this)->*open(StartThread()))();
}

thread_data_base* thread::get_thread_info() const
{
    const boost::detail::thread_data_ptr data =
        static_cast<const boost::thread*>(this)->*open(ThreadInfo());
    return static_cast<thread_data_base*>(data.get());
}

} // namespace zor::thread
