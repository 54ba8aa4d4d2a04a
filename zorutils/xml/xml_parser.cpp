#include "zorutils/xml/xml_parser.h"

#include <stdlib.h>

#include <memory>

#include "zorutils/zortext/text_growth_internal.h"

ZOR_DEFINE_LIBRARY_ALLOCATION(CXmlParserBase)

namespace {

using String = CXmlParserBase::String;

const WCHAR* const comment_end = ZOR_W("-->");

// Trims an item and takes the line ends out of it.
void clean(String& item)
{
    item.TrimLeft();
    item.TrimRight();
    item.Remove(static_cast<WCHAR>('\r'));
    item.Remove(static_cast<WCHAR>('\n'));
}

// Splits at `separator`. An item that holds `stop` ends the split with false; an empty `stop` is in
// none.
bool split_values(const String& text, CXmlParserBase::StringArray& values, WCHAR separator,
                  const WCHAR* stop)
{
    for (int position = 0; position <= text.GetLength();) {
        const int found = text.Find(separator, position);
        const int end = found < 0 ? text.GetLength() : found;
        String item = text.Mid(position, end - position);
        clean(item);
        if (*stop != 0 && item.Find(stop) >= 0)
            return false;
        values.Add(item);
        position = end + 1;
    }
    return true;
}

} // namespace

CXmlParserBase::CXmlParserBase(CTextFile* file) : m_pTextFile(file), m_bNoTokenRead(true) {}

CXmlParserBase::~CXmlParserBase()
{
    if (m_pTextFile != nullptr) {
        m_pTextFile->Close();
        delete m_pTextFile;
        m_pTextFile = nullptr;
    }
}

CXmlParser::CXmlParser(CTextFile* file) : CXmlParserBase(file) {}

CXmlParserBase::EResult CXmlParser::Initialize(const String& path, CXmlParser*& parser)
{
    std::unique_ptr<CXmlParser> made(new CXmlParser(nullptr));
    const EResult result = DoInitialize(path, *made);
    if (result == RESULT_OK)
        parser = made.release();
    return result;
}

CXmlParserBase::EResult CXmlParserBase::DoInitialize(const String& path, CXmlParserBase& parser)
{
    constexpr int buffer_size = 512;
    std::unique_ptr<CTextFile> file(new CTextFile(buffer_size));
    if (!file->Open(path))
        return RESULT_CANNOT_OPEN;
    parser.m_pTextFile = file.release();
    return parser.IsItXMLFile() ? RESULT_OK : RESULT_NOT_XML;
}

bool CXmlParserBase::IsItXMLFile()
{
    String line;
    m_pTextFile->GetNextLine(line, true);
    // A first line that is no declaration is content, and is read again.
    if (line.Find(ZOR_W("xml version=")) < 0)
        m_pTextFile->Reset();
    return line.Find(ZOR_W("xml")) >= 0;
}

// --- Tokens.

bool CXmlParserBase::ParseTokens(const String& line)
{
    int position = 0;
    int last_mark = -1;
    while (position < line.GetLength()) {
        const int open = line.Find(static_cast<WCHAR>('<'), position);
        String token;
        if (open > last_mark + 1) {
            token = line.Mid(last_mark + 1, open - (last_mark + 1));
            last_mark = open;
        } else {
            const int close = line.Find(static_cast<WCHAR>('>'), position);
            last_mark = close;
            if (open >= 0 && close > 0) {
                token = line.Mid(open, close - open + 1);
                position = close + 1;
            } else {
                token = line.Mid(position);
                position = line.GetLength();
            }
        }
        clean(token);
        if (!token.empty())
            delete m_tokens.AddTail(token);
    }
    return true;
}

// The text of the next token: the head of the list, or gathered from the lines that follow.
bool CXmlParserBase::ReadTokenText(String& text)
{
    if (m_tokens.IsEmpty()) {
        String line;
        do {
            if (!line.empty()) {
                make_room(text, line.GetLength() + 1);
                text += line;
                text += static_cast<WCHAR>(' ');
            }
            m_pTextFile->GetNextLine(line, true);
            line.TrimLeft();
            line.TrimRight();
            // What was gathered is dropped: the file ends inside a tag or a text.
            if (line.empty() && m_pTextFile->IsEndOfFile())
                return false;
        } while (line.Find(static_cast<WCHAR>('>')) < 0);
        ParseTokens(line);
        if (m_tokens.IsEmpty()) {
            text += line;
            return true;
        }
    }
    text += m_tokens.RemoveHead();
    return true;
}

// One token as it stands, comments included.
bool CXmlParserBase::ReadOneToken(String& tag, String& attributes, String& value)
{
    String text;
    if (!ReadTokenText(text))
        return false;
    tag.Empty();
    attributes.Empty();
    value.Empty();
    if (text[0] != '<') {
        value = text;
    } else {
        const int blank = text.Find(static_cast<WCHAR>(' '));
        const int close = text.Find(static_cast<WCHAR>('>'));
        if (close > blank && blank >= 0) {
            tag = text.Mid(1, blank - 1);
            attributes = text.Mid(blank, close - blank);
        } else if (close > blank) {
            tag = text.Mid(1, close - 1);
            // The whole tag with its brackets, on purpose: hosts look for it there.
            attributes = text.Mid(-1, close + 1);
        } else if (blank >= 0) {
            tag = text.Mid(1, close - 1);
        }
        value = text.Mid(close + 1);
    }
    if (tag.empty())
        tag = m_lastTag;
    else
        m_lastTag = tag;
    m_bNoTokenRead = false;
    tag = ReplaceReservedCharactersForImport(tag);
    attributes = ReplaceReservedCharactersForImport(attributes);
    value = ReplaceReservedCharactersForImport(value);
    return true;
}

// The rule is recursive: a comment token anywhere begins a passage of its own inside those that are
// `open`, and a "-->" ends the innermost. A count serves, so that no file can exhaust the stack.
bool CXmlParserBase::ReadPastComments(int open, String& tag, String& attributes, String& value)
{
    while (ReadOneToken(tag, attributes, value)) {
        const bool comment =
            tag.GetLength() >= 3 && tag[0] == '!' && tag[1] == '-' && tag[2] == '-';
        if (comment)
            ++open;
        else if (open == 0)
            return true;
        else if (value.Compare(comment_end) == 0)
            --open;
    }
    return false;
}

bool CXmlParserBase::ReadToken(String& tag, String& attributes, String& value)
{
    return ReadPastComments(0, tag, attributes, value);
}

bool CXmlParserBase::ReadAndMissDisabledTags(String& tag, String& attributes, String& value)
{
    return ReadPastComments(1, tag, attributes, value);
}

// --- Attributes and values.

CXmlParserBase::String CXmlParserBase::ReadAttrib(const String& attributes, const String& name)
{
    String wanted = name;
    wanted += static_cast<WCHAR>('=');
    int hit = attributes.Find(wanted.c_str());
    while (hit > 0 && attributes[hit - 1] != ' ')
        hit = attributes.Find(wanted.c_str(), hit + 1);
    if (hit < 0)
        return String();
    const int first = attributes.Find(static_cast<WCHAR>('"'), hit);
    if (first < 0)
        return String();
    const int second = attributes.Find(static_cast<WCHAR>('"'), first + 1);
    return ReplaceReservedCharactersForImport(attributes.Mid(first + 1, second - first - 1));
}

bool CXmlParserBase::ParseValuesInBrackets(String& value, StringArray& values, WCHAR separator)
{
    bool ok = true;
    if (value.empty()) {
        String tag, attributes;
        ok = ReadToken(tag, attributes, value);
    }
    // An end tag may have been gathered into the value, from lines without ">".
    const int end = value.Find(static_cast<WCHAR>('<'));
    String text = end < 0 ? value : value.Left(end);
    text.TrimLeft();
    text.TrimRight();
    return ok && split_values(text, values, separator, ZOR_W(""));
}

bool CXmlParserBase::IsEndOfFile() const
{
    return m_pTextFile->IsEndOfFile();
}

bool CXmlParserBase::IsUTF8() const
{
    return m_pTextFile->IsUTF8();
}

bool CXmlParserBase::IsUTF16() const
{
    return m_pTextFile->IsUTF16();
}
