// tests/formats/exact_text.h: a text whose terminator is the last unit of its heap block, so that a
// reader that runs past it is seen by the address sanitizer.
#pragma once

#include <algorithm>
#include <memory>
#include <string>

#include "zorutils/core/zor_api.h"

class ExactText
{
public:
    explicit ExactText(const std::basic_string<WCHAR>& text)
        : m_units(new WCHAR[text.size() + 1]), m_length(text.size())
    {
        std::copy_n(text.c_str(), text.size() + 1, m_units.get());
    }

    const WCHAR* get() const { return m_units.get(); }
    size_t length() const { return m_length; }

private:
    std::unique_ptr<WCHAR[]> m_units;
    size_t m_length;
};
