#include "tests/support/box_answer.h"

#include <windows.h>

#include <atomic>
#include <mutex>
#include <thread>

namespace zor_test {

struct BoxAnswer::State
{
    std::wstring caption;
    WPARAM answer = 0;
    void (*behind)() = nullptr;
    std::atomic<bool> ended{false};
    mutable std::mutex mutex;
    std::vector<std::u16string> texts;
    std::thread thread;

    // The longest text among the box's controls is what it says; words on buttons are the user's
    // language's, and don't count.
    static BOOL CALLBACK take_text(HWND control, LPARAM longest)
    {
        wchar_t text[5000];
        if (GetClassNameW(control, text, 5000) > 0 && lstrcmpiW(text, L"Button") == 0)
            return TRUE;
        const int length = GetWindowTextW(control, text, 5000);
        auto* const kept = reinterpret_cast<std::u16string*>(longest);
        if (static_cast<size_t>(length) > kept->size())
            kept->assign(text, text + length);
        return TRUE;
    }

    void watch()
    {
        HWND answered = nullptr;
        while (!ended) {
            const HWND box = FindWindowW(nullptr, caption.c_str());
            if (box == nullptr || box == answered || !IsWindowVisible(box)) {
                Sleep(10);
                answered = box == nullptr ? nullptr : answered;
                continue;
            }
            std::u16string text;
            EnumChildWindows(box, take_text, reinterpret_cast<LPARAM>(&text));
            {
                const std::lock_guard<std::mutex> guard(mutex);
                texts.push_back(text);
            }
            if (behind != nullptr)
                behind();
            answered = box;
            PostMessageW(box, WM_COMMAND, answer, 0);
        }
    }
};

BoxAnswer::BoxAnswer(const std::string& caption, BoxButton button, void (*behind)())
    : m_state(new State)
{
    m_state->caption.assign(caption.begin(), caption.end());
    m_state->answer = static_cast<WPARAM>(button);
    m_state->behind = behind;
    m_state->thread = std::thread([state = m_state.get()] { state->watch(); });
}

BoxAnswer::~BoxAnswer()
{
    m_state->ended = true;
    m_state->thread.join();
}

std::vector<std::u16string> BoxAnswer::texts() const
{
    const std::lock_guard<std::mutex> guard(m_state->mutex);
    return m_state->texts;
}

} // namespace zor_test
