#include "zorutils/platform/fault_guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "zorutils/platform/fault_state.h"
#include "zorutils/platform/winapi.h"

using namespace zor::platform;

namespace {

// What a guard saw.
struct Watch
{
    unsigned int answer = 1;
    int asked = 0, handled = 0;
    DWORD code = 0;
    size_t parameters = 0;
    ULONG_PTR parameter[2] = {};
    void* address = nullptr;
    bool has_registers = false;
};

unsigned int filter(EXCEPTION_POINTERS* fault, void* context)
{
    auto& watch = *static_cast<Watch*>(context);
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    ++watch.asked;
    watch.code = record.ExceptionCode;
    watch.parameters = record.NumberParameters;
    watch.parameter[0] = record.ExceptionInformation[0];
    watch.parameter[1] = record.ExceptionInformation[1];
    watch.address = record.ExceptionAddress;
    watch.has_registers = fault->ContextRecord != nullptr;
    return watch.answer;
}

DWORD handler(void* context)
{
    ++static_cast<Watch*>(context)->handled;
    return 99;
}

DWORD guarded(DWORD(WINAPI* function)(void*), void* argument, Watch& watch)
{
    return guarded_call({function, argument, filter, handler, &watch});
}

DWORD WINAPI add_one(void* argument)
{
    return *static_cast<DWORD*>(argument) + 1;
}

// The place is a volatile one, so that the compiler cannot tell what becomes of it.
char* volatile place = nullptr;

__attribute__((no_sanitize("undefined"))) DWORD WINAPI write_to_place(void*)
{
    *place = 1;
    return 0;
}

__attribute__((no_sanitize("undefined"))) DWORD WINAPI read_from_place(void*)
{
    return static_cast<DWORD>(*const_cast<const volatile char*>(place));
}

DWORD WINAPI throw_error(void*)
{
    throw std::runtime_error("of the body");
}

struct Inner
{
    Watch watch;
    DWORD result = 0;
};

DWORD WINAPI guard_within(void* argument)
{
    auto& inner = *static_cast<Inner*>(argument);
    inner.result = guarded(write_to_place, nullptr, inner.watch);
    return 5;
}

class FaultGuards : public testing::Test
{
protected:
    void SetUp() override { place = nullptr; }
};

} // namespace

TEST_F(FaultGuards, GiveTheResultWithoutAFault)
{
    Watch watch;
    DWORD six = 6;
    EXPECT_EQ(guarded(add_one, &six, watch), 7u);
    EXPECT_EQ(watch.asked, 0);
    EXPECT_EQ(watch.handled, 0);
}

TEST_F(FaultGuards, CallTheHandlerForAFault)
{
    for (int i = 0; i < 3; ++i) {
        Watch watch;
        EXPECT_EQ(guarded(write_to_place, nullptr, watch), 99u);
        EXPECT_EQ(watch.asked, 1);
        EXPECT_EQ(watch.handled, 1);
        EXPECT_EQ(watch.code, 0xC0000005);
        EXPECT_TRUE(watch.has_registers);
        EXPECT_NE(watch.address, nullptr);
    }
}

TEST_F(FaultGuards, TellWhatWasDoneAndWhere)
{
    place = reinterpret_cast<char*>(uintptr_t{0x1230});
    Watch watch;
    guarded(write_to_place, nullptr, watch);
    EXPECT_EQ(watch.parameters, 2u);
    EXPECT_EQ(watch.parameter[0], 1u) << "a write";
    EXPECT_EQ(watch.parameter[1], 0x1230u);
    guarded(read_from_place, nullptr, watch);
    EXPECT_EQ(watch.parameter[0], 0u) << "a read";
    EXPECT_EQ(watch.parameter[1], 0x1230u);
}

TEST_F(FaultGuards, LeaveAFaultToTheOnesOutside)
{
    Watch outer;
    Inner inner;
    inner.watch.answer = 0;
    EXPECT_EQ(guarded(guard_within, &inner, outer), 99u);
    EXPECT_EQ(inner.watch.asked, 1);
    EXPECT_EQ(inner.watch.handled, 0);
    EXPECT_EQ(outer.asked, 1);
    EXPECT_EQ(outer.handled, 1);
}

TEST_F(FaultGuards, WithinOneThatTakesItGoOn)
{
    Watch outer;
    Inner inner;
    EXPECT_EQ(guarded(guard_within, &inner, outer), 5u);
    EXPECT_EQ(inner.result, 99u);
    EXPECT_EQ(outer.asked, 0);
}

TEST_F(FaultGuards, TakeAnExceptionThatNobodyTook)
{
    Watch watch;
    EXPECT_EQ(guarded(throw_error, nullptr, watch), 99u);
    EXPECT_EQ(watch.asked, 1);
    EXPECT_EQ(watch.code, 0x20474343u);
    watch = Watch();
    watch.answer = 0;
    try {
        guarded(throw_error, nullptr, watch);
        ADD_FAILURE() << "it goes on to the host";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "of the body");
    }
    EXPECT_EQ(watch.handled, 0);
    // And the guards are as they were.
    Watch after;
    EXPECT_EQ(guarded(write_to_place, nullptr, after), 99u);
    EXPECT_EQ(watch.asked, 1);
}

TEST(FaultState, LastsFromTheFirstScopeToTheLast)
{
    EXPECT_FALSE(handles_fault());
    {
        const FaultScope one;
        EXPECT_TRUE(handles_fault());
        {
            const FaultScope other;
            EXPECT_TRUE(handles_fault());
        }
        EXPECT_TRUE(handles_fault());
    }
    EXPECT_FALSE(handles_fault());
}

TEST(FaultState, GivesALockUpOnce)
{
    LONG given_up = 0;
    EXPECT_TRUE(wait_in_fault(0, given_up));
    EXPECT_EQ(given_up, 0);
    EXPECT_FALSE(wait_in_fault(50, given_up));
    EXPECT_FALSE(wait_in_fault(0, given_up)) << "and nobody waits for it again";
}
