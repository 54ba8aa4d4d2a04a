// zorutils/core/zor_error_code.h: a returned truth value that the caller is meant to look at.
//
//     mandatory_error::ZorErrorCode<bool> open(const WCHAR* path);
//     if (!open(path))
//         return false;
//     open(path); // the compiler warns
//
// A caller who has good reason to ignore one says so with a cast to void.
#pragma once

namespace mandatory_error {

// For bool: true is success. Made from and read as the plain value, and nothing more than it.
template <class T>
class [[nodiscard]] ZorErrorCode
{
public:
    constexpr ZorErrorCode(T value) noexcept : m_value(value) {}

    constexpr operator T() const noexcept { return m_value; }

private:
    T m_value;
};

} // namespace mandatory_error
