// tests/support/failing_allocation.h: the global allocation operators under a test's control.
//
// Linked into the program of internal tests alone, where the library's objects use them too.
#pragma once

namespace zor_test {

// Between its construction and its destruction the n-th allocation of the calling thread, counted
// from 1, fails with std::bad_alloc, and so do `failures - 1` after it. 0 never fails.
class FailingAllocation
{
public:
    explicit FailingAllocation(int n, int failures = 1);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // Whether a failure was made.
    bool happened() const;
};

// Blocks allocated and not yet freed, over all threads.
long live_blocks();

// Runs `operation` with the first allocation failing, then the second, and so on until a run makes
// no failure; `check(n, failed)` follows each run, with the thread's allocations working again.
template <class Operation, class Check>
void for_each_failing_allocation(Operation operation, Check check)
{
    for (int n = 1;; ++n) {
        bool happened = false;
        {
            const FailingAllocation failing(n);
            operation();
            happened = failing.happened();
        }
        check(n, happened);
        if (!happened)
            return;
    }
}

} // namespace zor_test
