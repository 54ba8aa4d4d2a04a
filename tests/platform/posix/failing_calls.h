// tests/platform/posix/failing_calls.h: makes the n-th system call of the platform layer fail.
#pragma once

#include <string>

namespace zor_test {

// From its making to its end every call through the table is counted; the `number`-th one, from 1,
// fails with `error`, once or from then on, or takes the process with it. A close that fails has
// closed, as the system's has. One at a time; other threads must make no calls meanwhile.
class FailingCalls
{
public:
    enum Times
    {
        once,
        from_then_on,
        killing // the process ends there and then, as by SIGKILL
    };
    FailingCalls(int number, int error, Times times = once);
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    // Whether so many calls were made at all.
    bool failed() const;
    // The name of the first call that failed.
    std::string name() const;
};

// The file descriptors that the process has open.
int open_descriptors();

} // namespace zor_test
