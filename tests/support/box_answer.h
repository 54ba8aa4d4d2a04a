// tests/support/box_answer.h: answers message boxes while it lives.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace zor_test {

enum class BoxButton
{
    Abort = 3,
    Retry = 4,
    Ignore = 5,
};

class BoxAnswer
{
public:
    // Answers each box whose caption is `caption`: with the button, after `behind` ran while it was
    // open.
    BoxAnswer(const std::string& caption, BoxButton button, void (*behind)() = nullptr);
    ~BoxAnswer();
    BoxAnswer(const BoxAnswer&) = delete;
    BoxAnswer& operator=(const BoxAnswer&) = delete;

    // The texts of the boxes so far.
    std::vector<std::u16string> texts() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace zor_test
