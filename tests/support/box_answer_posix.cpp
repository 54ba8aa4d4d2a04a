#include "tests/support/box_answer.h"

#include "tests/support/memory_windows.h"

namespace zor_test {

struct BoxAnswer::State : MemoryWindows
{
    std::u16string caption;
    int answer = 0;
    void (*behind)() = nullptr;
    std::vector<std::u16string> texts;

    State() { zor::platform::set_window_system(this); }
    ~State() override { zor::platform::set_window_system(nullptr); }

    int MessageBoxW(HWND, LPCWSTR text, LPCWSTR shown_caption, UINT style) override
    {
        if (caption != shown_caption || style != 0x52012)
            return 0;
        texts.push_back(text);
        if (behind != nullptr)
            behind();
        return answer;
    }
};

BoxAnswer::BoxAnswer(const std::string& caption, BoxButton button, void (*behind)())
    : m_state(new State)
{
    m_state->caption.assign(caption.begin(), caption.end());
    m_state->answer = static_cast<int>(button);
    m_state->behind = behind;
}

BoxAnswer::~BoxAnswer() = default;

std::vector<std::u16string> BoxAnswer::texts() const
{
    return m_state->texts;
}

} // namespace zor_test
