#include <algorithm>
#include <exception>
#include <new>

#include "zorutils/xml/xml_writer_internal.h"

namespace {

using String = CXmlParserBase::String;

const WCHAR* const line_end = ZOR_W("\r\n");

struct Entity
{
    WCHAR character;
    const WCHAR* text;
};

// The order counts in both directions.
constexpr Entity entities[] = {
    {'&', ZOR_W("&amp;")},   {'<', ZOR_W("&lt;")},   {'>', ZOR_W("&gt;")},
    {'\'', ZOR_W("&apos;")}, {'"', ZOR_W("&quot;")},
};

bool has(DWORD flags, CXmlParserBase::ETagType type)
{
    return (flags & CXmlParserBase::TagTypeFlag(type)) != 0;
}

} // namespace

int CXmlParserBase::m_nOpenTags = 0;

DWORD CXmlParserBase::TagTypeFlag(ETagType type)
{
    return static_cast<DWORD>(1) << (static_cast<unsigned>(type) & 31);
}

CXmlParserBase::String CXmlParserBase::OpenTag(const String& name, DWORD flags)
{
    String text(static_cast<WCHAR>('\t'), m_nOpenTags);
    text += static_cast<WCHAR>('<');
    text += name;
    const bool empty = has(flags, TAG_TYPE_EMPTY);
    if (!has(flags, TAG_TYPE_OPEN_ATTRIBUTES)) {
        if (empty)
            text += static_cast<WCHAR>('/');
        text += static_cast<WCHAR>('>');
        if (empty || !has(flags, TAG_TYPE_INLINE))
            text += line_end;
    }
    if (!empty)
        ++m_nOpenTags;
    return text;
}

CXmlParserBase::String CXmlParserBase::CloseTag(const String& name, DWORD flags)
{
    --m_nOpenTags;
    String text;
    if (!has(flags, TAG_TYPE_INLINE)) {
        // A tag left open for attributes closes itself.
        if (has(flags, TAG_TYPE_OPEN_ATTRIBUTES))
            return String(ZOR_W("/>\r\n"));
        text = String(static_cast<WCHAR>('\t'), m_nOpenTags);
    }
    text += ZOR_W("</");
    text += name;
    text += static_cast<WCHAR>('>');
    text += line_end;
    return text;
}

CXmlParserBase::String CXmlParserBase::CloseEmptyTag()
{
    --m_nOpenTags;
    // The blank is on purpose: CloseTag writes none.
    return String(ZOR_W(" />\r\n"));
}

CXmlParserBase::String CXmlParserBase::FormAttrib(const String& name, const String& value,
                                                  bool writeEmpty)
{
    String text;
    if (value.empty() && !writeEmpty)
        return text;
    text += static_cast<WCHAR>(' ');
    text += ReplaceReservedCharactersForExport(name);
    text += ZOR_W("=\"");
    text += ReplaceReservedCharactersForExport(value);
    text += static_cast<WCHAR>('"');
    return text;
}

CXmlParserBase::String CXmlParserBase::ReplaceReservedCharactersForExport(const String& text)
{
    String result = text;
    for (const Entity& entity : entities) {
        const WCHAR character[] = {entity.character, 0};
        result.Replace(character, entity.text);
    }
    return result;
}

CXmlParserBase::String CXmlParserBase::ReplaceReservedCharactersForImport(const String& text)
{
    // Nearly every text of a document: one look instead of five.
    const WCHAR* const end = text.c_str() + text.GetLength();
    if (std::find(text.c_str(), end, static_cast<WCHAR>('&')) == end)
        return text;
    String result = text;
    for (const Entity& entity : entities) {
        const WCHAR character[] = {entity.character, 0};
        result.Replace(entity.text, character);
    }
    return result;
}

// --- Tag scopes.

CXmlTagScope::CXmlTagScope(CXmlParserBase::String& output, const WCHAR* name, DWORD flags)
    : m_name(name), m_flags(flags), m_output(&output), m_exceptions(std::uncaught_exceptions())
{
    String text = CXmlParserBase::OpenTag(name, flags);
    try {
        output += text;
    } catch (...) {
        // Nothing was opened.
        if (!has(flags, CXmlParserBase::TAG_TYPE_EMPTY))
            CXmlParserBase::CloseTag(String(), flags);
        throw;
    }
}

CXmlTagScope::~CXmlTagScope() noexcept(false)
{
    if (has(m_flags, CXmlParserBase::TAG_TYPE_EMPTY))
        return;
    DWORD flags = m_flags;
    if (has(flags, CXmlParserBase::TAG_TYPE_OPEN_ATTRIBUTES)) {
        // The caller has finished the start tag, so the end is a full end tag.
        flags &= ~CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_OPEN_ATTRIBUTES);
        flags |= CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
    }
    try {
        String name;
        try {
            name = m_name;
        } catch (const std::bad_alloc&) {
            // The counter goes back even if there is no memory for the name.
            CXmlParserBase::CloseTag(String(), flags);
            throw;
        }
        *m_output += CXmlParserBase::CloseTag(name, flags);
    } catch (const std::bad_alloc&) {
        if (std::uncaught_exceptions() == m_exceptions)
            throw;
    }
}
