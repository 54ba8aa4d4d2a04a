// zorutils/xml/xml_writer_internal.h: tags that open and close with a scope.
#pragma once

#include "zorutils/xml/xml_parser.h"

// Appends a start tag to `output` when made and its end when destroyed. The name is not copied; it
// may be null, which is the empty name. An end that finds no memory is std::bad_alloc, or is left
// out if another exception is on its way already; the indent counter goes back in either case.
class CXmlTagScope
{
public:
    CXmlTagScope(CXmlParserBase::String& output, const WCHAR* name, DWORD flags);
    ~CXmlTagScope() noexcept(false);
    CXmlTagScope(const CXmlTagScope&) = delete;
    CXmlTagScope& operator=(const CXmlTagScope&) = delete;

private:
    const WCHAR* m_name;
    DWORD m_flags;
    CXmlParserBase::String* m_output;
    int m_exceptions;
};

// The forms of one tag type: with its value on the line of its tags, and with lines of its own.
class CXmlInlineTagScope : public CXmlTagScope
{
public:
    CXmlInlineTagScope(CXmlParserBase::String& output, const WCHAR* name,
                       CXmlParserBase::ETagType type)
        : CXmlTagScope(output, name,
                       CXmlParserBase::TagTypeFlag(type) |
                           CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_INLINE))
    {
    }
};

class CXmlBlockTagScope : public CXmlTagScope
{
public:
    CXmlBlockTagScope(CXmlParserBase::String& output, const WCHAR* name,
                      CXmlParserBase::ETagType type)
        : CXmlTagScope(output, name,
                       CXmlParserBase::TagTypeFlag(type) |
                           CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_BLOCK))
    {
    }
};
