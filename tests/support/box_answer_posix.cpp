#include "tests/support/box_answer.h"

#include "zorutils/platform/posix/message_box.h"

namespace zor_test {

struct BoxAnswer::State
{
    std::u16string caption;
    int answer = 0;
    void (*behind)() = nullptr;
    std::vector<std::u16string> texts;

    static int show(const WCHAR* text, const WCHAR* caption, UINT style, void* context)
    {
        auto* const state = static_cast<State*>(context);
        if (state->caption != caption || style != 0x52012)
            return 0;
        state->texts.push_back(text);
        if (state->behind != nullptr)
            state->behind();
        return state->answer;
    }
};

BoxAnswer::BoxAnswer(const std::string& caption, BoxButton button, void (*behind)())
    : m_state(new State)
{
    m_state->caption.assign(caption.begin(), caption.end());
    m_state->answer = static_cast<int>(button);
    m_state->behind = behind;
    zor::platform::set_message_box(State::show, m_state.get());
}

BoxAnswer::~BoxAnswer()
{
    zor::platform::set_message_box(nullptr, nullptr);
}

std::vector<std::u16string> BoxAnswer::texts() const
{
    return m_state->texts;
}

} // namespace zor_test
