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

// How many of the texts end in `record` and its line end, as a record of the log does.
inline int records(const DebugCapture& capture, const std::u16string& record)
{
    const std::u16string line = record + u"\r\n";
    int count = 0;
    for (const std::u16string& text : capture.texts())
        count += text.size() >= line.size() && text.substr(text.size() - line.size()) == line;
    return count;
}
