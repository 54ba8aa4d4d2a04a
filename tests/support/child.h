// tests/support/child.h: a program as a child process, with a time limit.
#pragma once

#include <string>

namespace zor_test {

struct Ended
{
    bool in_time = false; // false: it was killed at its limit
    int signal = 0;       // that ended it, where the target has them
    unsigned code = 0;    // its exit code otherwise

    // By that code, of which a target may keep a part.
    bool with(unsigned expected) const;
};

// Runs a program with arguments without blanks, its output going to `output` if that is not empty,
// and kills it after so many milliseconds.
Ended run_child(const std::string& program, const std::string& arguments, unsigned limit_ms,
                const std::string& output = "");

// What a debugger sees of a program.
struct Debugged
{
    Ended end;
    int faults = 0; // wild accesses, each time they are told
    int breaks = 0; // stops that the program asks for
};
Debugged debug_child(const std::string& program, const std::string& arguments, unsigned limit_ms);

} // namespace zor_test
