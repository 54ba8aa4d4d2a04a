// Texts measured in windows, and paths that are shortened to them.
#include <gtest/gtest.h>

#include "tests/support/text.h"
#include "zorutils/fs/FileFunctions.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/platform/window_text.h"

using namespace zor_test;

TEST(WindowText, WithoutAWindowEverythingFits)
{
    const zor::platform::WindowText measure(nullptr);
    EXPECT_TRUE(measure.fits(ZOR_W("text"), 4));
    EXPECT_EQ(shown(FileFuncs::CompactPath(nullptr, ZOR_W("C:\\a\\b\\c.txt"))), "C:\\a\\b\\c.txt");
}

#ifdef _WIN32

TEST(WindowText, APathIsShortenedToItsWindow)
{
    const Wide path(ZOR_W("C:\\a long folder\\another long folder\\a third one\\points.txt"));
    const auto compact = [&](int width) {
        const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, width, 20, nullptr,
                                            nullptr, GetModuleHandleW(nullptr), nullptr);
        EXPECT_NE(window, nullptr);
        const Wide text = FileFuncs::CompactPath(window, path);
        const zor::platform::WindowText measure(window);
        if (text.GetLength() > 10) {
            EXPECT_TRUE(measure.fits(text.c_str(), text.GetLength())) << shown(text);
        }
        DestroyWindow(window);
        return shown(text);
    };
    EXPECT_EQ(compact(2000), shown(path));
    const std::string half = compact(250);
    EXPECT_LT(half.size(), static_cast<size_t>(path.GetLength()));
    EXPECT_EQ(half.substr(0, 7), "C:\\...\\");
    EXPECT_EQ(half.substr(half.size() - 11), "\\points.txt");
    EXPECT_EQ(compact(1), "points.txt");
}

#endif
