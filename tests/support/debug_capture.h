// tests/support/debug_capture.h: what the process sends to the debugger stream.
//
//     DebugCapture capture;
//     OutputDebugStringA("a");
//     EXPECT_EQ(capture.texts(), std::vector<std::u16string>{u"a"});
#pragma once

#include <string>
#include <vector>

// Takes the stream from its making to its end; one at a time in the process.
class DebugCapture
{
public:
    DebugCapture();
    ~DebugCapture();
    DebugCapture(const DebugCapture&) = delete;
    DebugCapture& operator=(const DebugCapture&) = delete;

    // The texts so far, in order.
    std::vector<std::u16string> texts() const;
};
