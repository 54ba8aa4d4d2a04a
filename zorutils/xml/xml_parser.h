// zorutils/xml/xml_parser.h: an XML dialect, read as a flat stream of tokens and formed as text.
//
//     CXmlParser* parser = nullptr;
//     if (CXmlParser::Initialize(path, parser) == CXmlParserBase::RESULT_OK) {
//         zor_text::CZorStringT<WCHAR> tag, attributes, value;
//         while (parser->ReadToken(tag, attributes, value))
//             if (tag.Compare(ZOR_W("CgPoint")) == 0)
//                 name = parser->ReadAttrib(attributes, ZOR_W("name"));
//         delete parser;
//     }
//
// There is no tree, no validation and no error position; docs/xml-dialect.md tells what the dialect
// reads and what it does not. Malformed text yields odd tokens, never an error.
//
// Errors: a failed allocation is std::bad_alloc. Threads: one parser belongs to one thread; the
// indent counter of the writing members is one for the process, so one document is formed at a
// time.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_array.h"
#include "zorutils/core/zor_list.h"
#include "zorutils/zorsys/library_allocation.h"
#include "zorutils/zortext/text_file.h"
#include "zorutils/zortext/zor_string.h"

class ZOR_API CXmlParserBase
{
public:
    typedef zor_text::CZorStringT<WCHAR> String;
    typedef zor_templ::CZorArray<String, const String&> StringArray;

    enum EResult
    {
        RESULT_OK = 0,
        RESULT_CANNOT_OPEN = 1,
        RESULT_NOT_XML = 2, // the first line that is not empty lacks the word "xml"
    };

    // Bit numbers of the tag flags; see TagTypeFlag.
    enum ETagType
    {
        TAG_TYPE_EMPTY = 0,             // a tag that closes itself
        TAG_TYPE_CLOSED_ATTRIBUTES = 1, // stands in for the next one at the end of a tag scope
        TAG_TYPE_OPEN_ATTRIBUTES = 2,   // the start tag is left open for attributes
        TAG_TYPE_INLINE = 3,            // the value stands on the line of its tags
        TAG_TYPE_BLOCK = 4,             // the ordinary form, with a line of its own
    };

    // Copies share the text file, and each believes that it owns it: destroy only one of them.
    CXmlParserBase(const CXmlParserBase&) = default;
    CXmlParserBase& operator=(const CXmlParserBase&) = default;
    virtual ~CXmlParserBase();

    ZOR_LIBRARY_ALLOCATION

    // --- Reading.

    // The next token. A text comes with the tag that stands in front of it, which may be the end
    // tag of an earlier element. False at the end of the file, with the results as they were.
    // Comments are passed over as ReadAndMissDisabledTags tells.
    bool ReadToken(String& tag, String& attributes, String& value);

    // Passes over everything up to a token whose value is exactly "-->", and gives the one behind
    // it. False at the end of the file.
    bool ReadAndMissDisabledTags(String& tag, String& attributes, String& value);

    // The value of the attribute `name` in an attribute text, empty if it is missing. Only
    // name="value" is understood: double quotes, no blanks around the "=".
    String ReadAttrib(const String& attributes, const String& name);

    // Splits a token's value at `separator` and appends the items to `values`, empty ones included.
    // An empty `value` is read from the next token first; false if there is none.
    bool ParseValuesInBrackets(String& value, StringArray& values, WCHAR separator);

    bool IsEndOfFile() const;
    bool IsUTF8() const;
    bool IsUTF16() const;

    // --- Forming. Each returns text, with CR LF line ends and one tab of indent per open tag.

    static String OpenTag(const String& name, DWORD flags);
    static String CloseTag(const String& name, DWORD flags);
    // Ends a tag that was left open for attributes.
    static String CloseEmptyTag();
    // One attribute with a blank in front of it; the empty text for an empty value unless
    // `writeEmpty`.
    static String FormAttrib(const String& name, const String& value, bool writeEmpty);
    static DWORD TagTypeFlag(ETagType type);
    // Writes & < > ' " as entities.
    static String ReplaceReservedCharactersForExport(const String& text);

protected:
    // Takes over `file`, which may be null.
    explicit CXmlParserBase(CTextFile* file);

    static EResult DoInitialize(const String& path, CXmlParserBase& parser);
    bool IsItXMLFile();
    bool ParseTokens(const String& line);
    // The five entities back to their characters; "&amp;" first, on purpose, so that text escaped
    // twice comes back whole.
    static String ReplaceReservedCharactersForImport(const String& text);

    CTextFile* m_pTextFile;
    zor_templ::CZorList<String, const String&> m_tokens; // of the current line, not yet delivered
    String m_lastTag;
    bool m_bNoTokenRead;

    static int m_nOpenTags; // tags now open: the indent. Negative after more closes than opens.

private:
    bool ReadTokenText(String& text);
    bool ReadOneToken(String& tag, String& attributes, String& value);
    bool ReadPastComments(int open, String& tag, String& attributes, String& value);
};

class ZOR_API CXmlParser : public CXmlParserBase
{
public:
    // Opens the file at `path` and stands behind its declaration line. `parser` receives an object
    // that the caller deletes, and is left alone on any other result than RESULT_OK.
    static EResult Initialize(const String& path, CXmlParser*& parser);

protected:
    explicit CXmlParser(CTextFile* file);
};
