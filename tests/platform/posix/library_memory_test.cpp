// A library that cannot be loaded for want of memory.
#include <errno.h>
#include <gtest/gtest.h>

#include "tests/support/debug_capture.h"
#include "tests/support/text.h"
#include "zorutils/platform/posix/module.h"
#include "zorutils/platform/posix/system_calls.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/dll_loader.h"
#include "zorutils/zortext/zor_ui.h"

using namespace zor_test;
using zor::platform::system_calls;

namespace {

int reason = 0;

void* refuse(const char*)
{
    errno = reason;
    return nullptr;
}

class Refusing
{
public:
    explicit Refusing(int error) : m_before(system_calls().load_library)
    {
        reason = error;
        system_calls().load_library = refuse;
    }
    ~Refusing() { system_calls().load_library = m_before; }

private:
    void* (*m_before)(const char*);
};

class Message final : public zor_ui::IZorUiMsg
{
public:
    int showMessage(const WCHAR* shown_text) override
    {
        text = shown(shown_text);
        return 1;
    }
    int askYesNo(const WCHAR*) override { return 6; }
    int showNotice(const WCHAR*) override { return 1; }
    std::string text;
};

} // namespace

TEST(LibraryMemory, ErrorsOfTheLoaderHaveTheirNumbers)
{
    const struct
    {
        int error;
        DWORD number;
    } cases[] = {{ENOENT, ERROR_MOD_NOT_FOUND},
                 {ENOMEM, ERROR_OUTOFMEMORY},
                 {ENOSYS, ERROR_PROC_NOT_FOUND},
                 {ENOEXEC, ERROR_BAD_EXE_FORMAT},
                 {EACCES, ERROR_ACCESS_DENIED}};
    for (const auto& row : cases) {
        const Refusing refusing(row.error);
        EXPECT_EQ(LoadLibraryW(ZOR_W("x.so")), nullptr);
        EXPECT_EQ(GetLastError(), row.number);
    }
}

TEST(LibraryMemory, IsLoggedWithTheSystemsFigures)
{
    Message message;
    zor_ui::set_msg(&message);
    HINSTANCE library = nullptr;
    const DebugCapture capture;
    {
        const Refusing refusing(ENOMEM);
        EXPECT_FALSE(GetLibraryFunction(&library, nullptr, nullptr, ZOR_W("x.so")));
    }
    zor_ui::set_msg(nullptr);
    EXPECT_EQ(message.text.find("Could not load module x.so.\\u000D\\u000A\\u000D\\u000A"
                                "Save your work and quit application. "),
              0u)
        << message.text;
    std::vector<std::string> lines;
    for (const std::u16string& text : capture.texts())
        lines.push_back(shown(text.data(), text.size()));
    ASSERT_GE(lines.size(), 2u);
    EXPECT_NE(lines[lines.size() - 2].find("x.so err code = 14"), std::string::npos);
    unsigned total = 0, available = 0, total_virtual = 0, available_virtual = 0;
    const std::string& figures = lines.back();
    const size_t start = figures.find("Total Memory: ");
    ASSERT_NE(start, std::string::npos) << figures;
    EXPECT_EQ(sscanf(figures.c_str() + start,
                     "Total Memory: %u bytes, Free Memory: %u bytes, "
                     "Total VM: %u bytes, Free VM: %u bytes",
                     &total, &available, &total_virtual, &available_virtual),
              4)
        << figures;
    EXPECT_GE(total, available);
    EXPECT_GE(total_virtual, available_virtual);
    EXPECT_GT(available, 0u);
}
