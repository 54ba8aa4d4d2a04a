// What survives an allocation that fails, through every operation of the string that allocates.
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

#include "tests/support/failing_allocation.h"
#include "tests/support/text.h"
#include "zorutils/zortext/zor_string.h"

using namespace zor_test;
using zor_text::CZorStringT;

namespace {

enum class After
{
    Whole,
    Empty
};
enum class Start
{
    Exclusive,
    Shared
};

// An operation on a string of "abcdef", and what is left of it if its allocation fails.
template <class T>
struct Row
{
    const char* name;
    Start start;
    After after;
    std::function<void(CZorStringT<T>&)> operation;
};

template <class T>
const Text<T>& text_of(const char* ascii)
{
    // Built before the allocations fail.
    static Text<T> texts[16];
    static int used = 0;
    Text<T>& text = texts[used++ % 16];
    text.assign(ascii, ascii + std::char_traits<char>::length(ascii));
    return text;
}

template <class T>
void check_row(const Row<T>& row)
{
    SCOPED_TRACE(row.name);
    // The first conversion of a process makes its tables.
    const CZorStringT<WCHAR> first_wide("a");
    const CZorStringT<char> first_narrow(first_wide.c_str());
    const long live = live_blocks();
    bool failed_once = false;
    for (int n = 1;; ++n) {
        CZorStringT<T> s(text_of<T>("abcdef").c_str());
        CZorStringT<T> other;
        if (row.start == Start::Shared)
            other = s;
        bool threw = false;
        bool happened = false;
        {
            const FailingAllocation failing(n);
            try {
                row.operation(s);
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = failing.happened();
        }
        EXPECT_EQ(threw, happened) << n;
        if (row.start == Start::Shared) {
            EXPECT_EQ(shown(other), "abcdef") << n;
        }
        if (!happened)
            break;
        failed_once = true;
        EXPECT_EQ(shown(s), row.after == After::Whole ? "abcdef" : "") << n;
        EXPECT_EQ(s.GetLength(), row.after == After::Whole ? 6 : 0) << n;
    }
    EXPECT_TRUE(failed_once) << "the operation allocates nothing";
    EXPECT_EQ(live_blocks(), live) << "a block leaked";
}

} // namespace

template <class T>
class FailingAllocationOf : public testing::Test
{
};

using FailingWidths = testing::Types<char, WCHAR>;
TYPED_TEST_SUITE(FailingAllocationOf, FailingWidths);

TYPED_TEST(FailingAllocationOf, AppendersAndGetBufferLeaveTheStringWhole)
{
    using T = TypeParam;
    using S = CZorStringT<T>;
    // Made before the allocations fail.
    static const Text<T> tail = lit<T>("xyz"), set = lit<T>("c"), last = lit<T>("f");
    static const S tail_string(tail.c_str());
    const Row<T> rows[] = {
        {"GetBuffer", Start::Exclusive, After::Whole, [](S& s) { s.GetBuffer(100); }},
        {"GetBuffer shared", Start::Shared, After::Whole, [](S& s) { s.GetBuffer(0); }},
        {"GetBufferSetLength", Start::Exclusive, After::Whole,
         [](S& s) { s.GetBufferSetLength(9); }},
        {"Truncate", Start::Shared, After::Whole, [](S& s) { s.Truncate(2); }},
        {"LockBuffer", Start::Shared, After::Whole, [](S& s) { s.LockBuffer(); }},
        {"FreeExtra", Start::Exclusive, After::Whole,
         [](S& s) {
             s.GetBuffer(50);
             s.FreeExtra();
         }},
        {"append string", Start::Exclusive, After::Whole, [](S& s) { s += tail_string; }},
        {"append text", Start::Exclusive, After::Whole, [](S& s) { s += tail.c_str(); }},
        {"append char", Start::Exclusive, After::Whole, [](S& s) { s += 'x'; }},
        {"append unit", Start::Exclusive, After::Whole, [](S& s) { s += static_cast<WCHAR>('x'); }},
        {"append shared", Start::Shared, After::Whole, [](S& s) { s += tail.c_str(); }},
        {"append itself", Start::Exclusive, After::Whole, [](S& s) { s += s; }},
        {"Insert char", Start::Exclusive, After::Whole,
         [](S& s) { s.Insert(1, static_cast<T>('x')); }},
        {"Insert text", Start::Exclusive, After::Whole, [](S& s) { s.Insert(1, tail.c_str()); }},
        {"Insert own text", Start::Exclusive, After::Whole, [](S& s) { s.Insert(1, s.c_str()); }},
        {"push_back", Start::Exclusive, After::Whole,
         [](S& s) { s.push_back(static_cast<T>('x')); }},
        {"Replace growing", Start::Exclusive, After::Whole,
         [](S& s) { s.Replace(last.c_str(), tail.c_str()); }},
        {"Left", Start::Exclusive, After::Whole, [](S& s) { s.Left(2); }},
        {"Right", Start::Exclusive, After::Whole, [](S& s) { s.Right(2); }},
        {"Mid", Start::Exclusive, After::Whole, [](S& s) { s.Mid(1, 2); }},
        {"SpanIncluding", Start::Exclusive, After::Whole, [](S& s) { s.SpanIncluding(s.Left(3)); }},
        {"Tokenize", Start::Exclusive, After::Whole,
         [](S& s) {
             int position = 0;
             s.Tokenize(set.c_str(), position);
         }},
    };
    for (const auto& row : rows)
        check_row(row);
}

TYPED_TEST(FailingAllocationOf, WritersThatUnshareLeaveTheStringEmpty)
{
    using T = TypeParam;
    using S = CZorStringT<T>;
    // Made before the allocations fail.
    static const Text<T> tail = lit<T>("xyz"), longer = lit<T>("0123456789");
    using Other = std::conditional_t<std::is_same_v<T, char>, WCHAR, char>;
    static const Text<Other> other = lit<Other>("xyz");
    const Row<T> rows[] = {
        {"SetAt", Start::Shared, After::Empty, [](S& s) { s.SetAt(0, static_cast<T>('x')); }},
        {"ReleaseBuffer", Start::Shared, After::Empty, [](S& s) { s.ReleaseBuffer(3); }},
        {"Delete", Start::Shared, After::Empty, [](S& s) { s.Delete(0, 1); }},
        {"Remove", Start::Shared, After::Empty, [](S& s) { s.Remove(static_cast<T>('x')); }},
        {"Replace char", Start::Shared, After::Empty,
         [](S& s) { s.Replace(static_cast<T>('a'), static_cast<T>('b')); }},
        {"MakeUpper", Start::Shared, After::Empty, [](S& s) { s.MakeUpper(); }},
        {"MakeLower", Start::Shared, After::Empty, [](S& s) { s.MakeLower(); }},
        {"MakeReverse", Start::Shared, After::Empty, [](S& s) { s.MakeReverse(); }},
        {"TrimLeft", Start::Shared, After::Empty, [](S& s) { s.TrimLeft(); }},
        {"TrimRight", Start::Shared, After::Empty, [](S& s) { s.TrimRight(); }},
        {"Trim char", Start::Shared, After::Empty, [](S& s) { s.Trim(static_cast<T>('x')); }},
        {"Trim set", Start::Shared, After::Empty, [](S& s) { s.Trim(tail.c_str()); }},
        // AllocBeforeWrite lets go of a block that is shared or too small before it allocates.
        {"assign longer text", Start::Exclusive, After::Empty, [](S& s) { s = longer.c_str(); }},
        {"assign text to shared", Start::Shared, After::Empty, [](S& s) { s = tail.c_str(); }},
        {"assign char to shared", Start::Shared, After::Empty, [](S& s) { s = 'x'; }},
        {"assign other width", Start::Shared, After::Empty, [](S& s) { s = other.c_str(); }},
    };
    for (const auto& row : rows)
        check_row(row);
}

TYPED_TEST(FailingAllocationOf, FormatLeavesTheStringWhole)
{
    using T = TypeParam;
    using S = CZorStringT<T>;
    static const Text<T> format = lit<T>("%s"), text = lit<T>("0123456789");
    const Row<T> rows[] = {
        {"Format", Start::Exclusive, After::Whole,
         [](S& s) { s.Format(format.c_str(), text.c_str()); }},
        {"Format shared", Start::Shared, After::Whole,
         [](S& s) { s.Format(format.c_str(), text.c_str()); }},
    };
    for (const auto& row : rows)
        check_row(row);
}

namespace {

// Construction: nothing is made and nothing leaks.
void check_construction(const char* name, const std::function<void()>& construct)
{
    SCOPED_TRACE(name);
    const long live = live_blocks();
    int failures = 0;
    for (int n = 1;; ++n) {
        bool threw = false;
        bool happened = false;
        {
            const FailingAllocation failing(n);
            try {
                construct();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
            happened = failing.happened();
        }
        EXPECT_EQ(threw, happened);
        EXPECT_EQ(live_blocks(), live);
        if (!happened)
            break;
        ++failures;
    }
    EXPECT_GT(failures, 0);
}

} // namespace

TYPED_TEST(FailingAllocationOf, ConstructorsLeakNothing)
{
    using T = TypeParam;
    using S = CZorStringT<T>;
    const auto narrow = lit<char>("abc");
    const auto wide = lit<WCHAR>("abc");
    Core<T> locked(lit<T>("abc").c_str());
    locked.LockBuffer();
    check_construction("narrow text", [&] { S s(narrow.c_str()); });
    check_construction("wide text", [&] { S s(wide.c_str()); });
    check_construction("narrow counted", [&] { S s(narrow.c_str(), 2); });
    check_construction("wide counted", [&] { S s(wide.c_str(), 2); });
    check_construction("repeated", [&] { S s(static_cast<T>('x'), 5); });
    check_construction("locked source", [&] { S s(static_cast<const CZorStringT<T>&>(locked)); });
    check_construction("unsigned text",
                       [&] { S s(reinterpret_cast<const unsigned char*>(narrow.c_str())); });
}

TEST(FailingAllocationOfFields, LeakNothing)
{
    check_construction("fields", [] {
        zor_text::detail::zor_safefmt_impl(ZOR_W("a{1}b{2}"), 2, ZOR_W("first"), ZOR_W("second"));
    });
}

// The harness itself: an operation that allocates nothing never reports a failure.
TEST(FailingAllocationHarness, ReportsNothingWhereNothingIsAllocated)
{
    int checks = 0;
    for_each_failing_allocation([] {},
                                [&](int, bool happened) {
                                    EXPECT_FALSE(happened);
                                    ++checks;
                                });
    EXPECT_EQ(checks, 1);
}
