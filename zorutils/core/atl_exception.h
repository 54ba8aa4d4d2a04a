// zorutils/core/atl_exception.h: the exception that carries a 32-bit result code.
//
//     try { base::CTime(1899, 12, 31, 0, 0, 0, -1); }
//     catch (const CAtlException& error) { /* error.m_hr is E_FAIL, 0x80004005 */ }
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/platform/win_types.h"

// Not of the family of std::exception: a handler of that doesn't see it.
class ZOR_API CAtlException
{
public:
    explicit CAtlException(HRESULT code = static_cast<HRESULT>(0x80004005)) noexcept : m_hr(code) {}

    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr;
};
