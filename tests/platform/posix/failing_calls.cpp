#include "tests/platform/posix/failing_calls.h"

#include <errno.h>
#include <signal.h>

#include <filesystem>
#include <iterator>
#include <type_traits>

#include "zorutils/platform/posix/system_calls.h"

namespace zor_test {

namespace {

using zor::platform::SystemCalls;

struct Plan
{
    SystemCalls original;
    int left = 0; // calls until the one that fails
    int error = 0;
    bool forever = false;
    bool killing = false;
    const char* name = nullptr;
};

Plan plan;

bool fails_now(const char* name)
{
    if (plan.name != nullptr && !plan.forever)
        return false;
    if (plan.name == nullptr && --plan.left > 0)
        return false;
    if (plan.name == nullptr)
        plan.name = name;
    return true;
}

template <class R>
R failure()
{
    if constexpr (std::is_same_v<R, void*>)
        return MAP_FAILED;
    else if constexpr (std::is_pointer_v<R>)
        return nullptr;
    else
        return static_cast<R>(-1);
}

template <auto Field, class F>
struct Wrapper;

template <auto Field, class R, class... A>
struct Wrapper<Field, R (*SystemCalls::*)(A...)>
{
    static inline const char* name = nullptr;

    static R call(A... arguments)
    {
        if (!fails_now(name))
            return (plan.original.*Field)(arguments...);
        if (plan.killing)
            raise(SIGKILL);
        const std::string called = name;
        if (called == "close")
            (plan.original.*Field)(arguments...);
        errno = plan.error;
        return failure<R>();
    }
};

} // namespace

FailingCalls::FailingCalls(int number, int error, Times times)
{
    SystemCalls& calls = zor::platform::system_calls();
    plan = Plan{calls, number, error, times == from_then_on, times == killing, nullptr};
#define WRAP(result, field, arguments)                                                             \
    Wrapper<&SystemCalls::field, decltype(&SystemCalls::field)>::name = #field;                    \
    calls.field = Wrapper<&SystemCalls::field, decltype(&SystemCalls::field)>::call;
    ZOR_SYSTEM_CALLS(WRAP)
#undef WRAP
}

FailingCalls::~FailingCalls()
{
    zor::platform::system_calls() = plan.original;
}

bool FailingCalls::failed() const
{
    return plan.name != nullptr;
}

std::string FailingCalls::name() const
{
    return plan.name == nullptr ? "none" : plan.name;
}

int open_descriptors()
{
    using std::filesystem::directory_iterator;
    // One of them is the listing's own.
    return static_cast<int>(std::distance(directory_iterator("/proc/self/fd"), {})) - 1;
}

} // namespace zor_test
