// The token reader: what the dialect does with each construction, and its oddities.
#include "zorutils/xml/xml_parser.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"

using namespace zor_test;

namespace {

struct Parser : CXmlParser
{
    Parser() : CXmlParser(nullptr) {}
    using CXmlParser::DoInitialize;
    using CXmlParser::IsItXMLFile;
    using CXmlParser::m_bNoTokenRead;
    using CXmlParser::m_lastTag;
    using CXmlParser::m_pTextFile;
    using CXmlParser::m_tokens;
    using CXmlParser::ParseTokens;
    using CXmlParser::ReplaceReservedCharactersForImport;
};

struct Token
{
    std::string tag, attributes, value;
    bool operator==(const Token& other) const
    {
        return tag == other.tag && attributes == other.attributes && value == other.value;
    }
};

void PrintTo(const Token& token, std::ostream* out)
{
    *out << "{tag " << token.tag << ", attributes " << token.attributes << ", value " << token.value
         << "}";
}

using Tokens = std::vector<Token>;

std::unique_ptr<CXmlParser> opened(const Wide& path)
{
    CXmlParser* parser = nullptr;
    EXPECT_EQ(CXmlParser::Initialize(path, parser), CXmlParserBase::RESULT_OK);
    return std::unique_ptr<CXmlParser>(parser);
}

Tokens all_tokens(CXmlParser& parser)
{
    Tokens tokens;
    Wide tag, attributes, value;
    while (tokens.size() < 1000 && parser.ReadToken(tag, attributes, value))
        tokens.push_back({shown(tag), shown(attributes), shown(value)});
    return tokens;
}

// The tokens of a document behind its declaration.
Tokens tokens(const std::string& content)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<?xml version=\"1.0\"?>\r\n" + content));
    return all_tokens(*parser);
}

} // namespace

TEST(XmlParser, EachConstructionOfTheDialect)
{
    const struct
    {
        const char* content;
        Tokens expected;
    } rows[] = {
        {"<a b=\"1\">", {{"a", " b=\"1\"", ""}}},
        {"<a>", {{"a", "<a>", ""}}},
        {"<a/>", {{"a/", "<a/>", ""}}},
        {"<a b=\"1\"/>", {{"a", " b=\"1\"/", ""}}},
        {"</a>", {{"/a", "</a>", ""}}},
        {"<a>text</a>", {{"a", "<a>", ""}, {"a", "", "text"}, {"/a", "</a>", ""}}},
        {"<a>\n text\n more\n</a>", {{"a", "<a>", ""}, {"a", "", "text more </a>"}}},
        {"<?later a=\"1\"?>", {{"?later", " a=\"1\"?", ""}}},
        {"<!DOCTYPE x>", {{"!DOCTYPE", " x", ""}}},
        {"<![CDATA[a>b]]>", {{"![CDATA[a", "<![CDATA[a>", ""}, {"![CDATA[a", "", "b]]>"}}},
        {"<a b=\"x>y\">", {{"a", " b=\"x", ""}, {"a", "", "y\">"}}},
        {"<a b=\"&lt;&amp;&gt;&apos;&quot;\">&lt;&amp;</a>",
         {{"a", " b=\"<&>'\"\"", ""}, {"a", "", "<&"}, {"/a", "</a>", ""}}},
        {"<a&amp;b>", {{"a&b", "<a&b>", ""}}},
        {"<a>&#65;&#x42;</a>", {{"a", "<a>", ""}, {"a", "", "&#65;&#x42;"}, {"/a", "</a>", ""}}},
        {"<a\n b=\"1\"\n c=\"2\">", {{"a", " b=\"1\" c=\"2\"", ""}}},
        {"text>", {{"", "", "text>"}}},
        {"</b></b>", {{"/b", "</b>", ""}, {"/b", "</b>", ""}}},
        {"<a>1</a>between<b>",
         {{"a", "<a>", ""},
          {"a", "", "1"},
          {"/a", "</a>", ""},
          {"/a", "", "between"},
          {"b", "<b>", ""}}},
        {"\n\n   \n<a>\n\n", {{"a", "<a>", ""}}},
        {"", {}},
        {"no mark at all", {}},
        {"<a", {}},
        {"<a><b\nc", {{"a", "<a>", ""}, {"a", "", "<b"}}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(tokens(row.content), row.expected) << row.content;
}

TEST(XmlParser, TextTokenComesWithTheTagInFrontOfItEvenAnEndTag)
{
    const Tokens read = tokens("<a></a>x<b>y");
    ASSERT_EQ(read.size(), 5u);
    EXPECT_EQ(read[2], (Token{"/a", "", "x"}));
    EXPECT_EQ(read[4], (Token{"b", "", "y"}));
}

TEST(XmlParser, EscapedTwiceComesBackWhole)
{
    EXPECT_EQ(tokens("<a>&amp;lt;</a>")[1].value, "<");
    EXPECT_EQ(shown(Parser::ReplaceReservedCharactersForImport(ZOR_W("&amp;amp;lt;"))), "&amp;lt;");
    EXPECT_EQ(shown(Parser::ReplaceReservedCharactersForImport(ZOR_W("&amp;quot;&nbsp;&amp"))),
              "\"&nbsp;&amp");
    EXPECT_TRUE(Parser::ReplaceReservedCharactersForImport(ZOR_W("")).empty());
}

// --- Opening.

TEST(XmlParser, ResultsOfOpening)
{
    const TempFolder folder;
    const struct
    {
        std::string bytes;
        int result;
    } rows[] = {
        {"<?xml version=\"1.0\"?>\n<a>", CXmlParserBase::RESULT_OK},
        {"\n\r\n  <?xml version=\"1.0\"?>", CXmlParserBase::RESULT_OK},
        {"\xEF\xBB\xBF<?xml version=\"1.0\"?>", CXmlParserBase::RESULT_OK},
        {"<xmlData>", CXmlParserBase::RESULT_OK},
        {"<a xmlns=\"b\">", CXmlParserBase::RESULT_OK},
        {"<XML>", CXmlParserBase::RESULT_NOT_XML},
        {"<a>\n<?xml version=\"1.0\"?>", CXmlParserBase::RESULT_NOT_XML},
        {"", CXmlParserBase::RESULT_NOT_XML},
        {"\n\n", CXmlParserBase::RESULT_NOT_XML},
        {"\xFF\xFE" + utf16({'<', 'x', 'm', 'l', '>'}), CXmlParserBase::RESULT_OK},
    };
    for (const auto& row : rows) {
        CXmlParser* parser = reinterpret_cast<CXmlParser*>(1);
        EXPECT_EQ(CXmlParser::Initialize(folder.write("a.xml", row.bytes), parser), row.result)
            << row.bytes;
        if (row.result == CXmlParserBase::RESULT_OK)
            delete parser;
        else
            EXPECT_EQ(parser, reinterpret_cast<CXmlParser*>(1)) << row.bytes;
    }
    CXmlParser* parser = reinterpret_cast<CXmlParser*>(1);
    EXPECT_EQ(CXmlParser::Initialize(folder.wide("missing"), parser),
              CXmlParserBase::RESULT_CANNOT_OPEN);
    EXPECT_EQ(parser, reinterpret_cast<CXmlParser*>(1));
}

TEST(XmlParser, OnlyADeclarationLineIsConsumed)
{
    const TempFolder folder;
    EXPECT_EQ(all_tokens(*opened(folder.write("a.xml", "<?xml version=\"1.0\"?><lost>\n<b>"))),
              (Tokens{{"b", "<b>", ""}}));
    EXPECT_EQ(all_tokens(*opened(folder.write("b.xml", "<xmlData>\n<b>"))),
              (Tokens{{"xmlData", "<xmlData>", ""}, {"b", "<b>", ""}}));
}

TEST(XmlParser, EncodingIsForwarded)
{
    const TempFolder folder;
    const auto bytes = opened(folder.write("a.xml", "\xEF\xBB\xBF<xml>"));
    EXPECT_TRUE(bytes->IsUTF8());
    EXPECT_FALSE(bytes->IsUTF16());
    const auto units = opened(folder.write(
        "b.xml", "\xFF\xFE" + utf16({'<', 'x', 'm', 'l', '>', 0x20AC, '<', '/', 'a', '>'})));
    EXPECT_TRUE(units->IsUTF16());
    EXPECT_EQ(all_tokens(*units)[1].value, "\\u20AC");
    EXPECT_TRUE(units->IsEndOfFile());
}

TEST(XmlParser, AtTheEndTheResultsStayAsTheyWere)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<xml b=\"1\">\n"));
    Wide tag, attributes, value;
    EXPECT_TRUE(parser->ReadToken(tag, attributes, value));
    tag = ZOR_W("old tag");
    value = ZOR_W("old value");
    EXPECT_FALSE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "old tag");
    EXPECT_EQ(shown(attributes), " b=\"1\"");
    EXPECT_EQ(shown(value), "old value");
}

// --- Lines into tokens.

TEST(XmlParser, ALineIsCutAtItsMarks)
{
    const struct
    {
        const WCHAR* line;
        std::vector<std::string> expected;
    } rows[] = {
        {ZOR_W("<a>text</a>"), {"<a>", "text", "</a>"}},
        {ZOR_W("text"), {"text"}},
        {ZOR_W(""), {}},
        {ZOR_W("   "), {}},
        {ZOR_W("a<b>c"), {"a", "<b>", "c"}},
        {ZOR_W("a>b<c>"), {"a>b", "b", "<c>"}},
        {ZOR_W("<a>text<b"), {"<a>", "text", "text<b"}},
        {ZOR_W(">"), {">"}},
        {ZOR_W("<"), {"<"}},
        {ZOR_W("<>"), {"<>"}},
        {ZOR_W("<a> \t <b>"), {"<a>", "<b>"}},
        {ZOR_W(" -->"), {"-->"}},
        {ZOR_W("<a>-->"), {"<a>", "-->"}},
    };
    for (const auto& row : rows) {
        Parser parser;
        EXPECT_TRUE(parser.ParseTokens(row.line));
        std::vector<std::string> found;
        while (!parser.m_tokens.IsEmpty())
            found.push_back(shown(parser.m_tokens.RemoveHead()));
        EXPECT_EQ(found, row.expected) << shown(row.line);
    }
}

// --- Comments.

TEST(XmlParser, CommentsDisableTagsUpToALoneEnd)
{
    const struct
    {
        const char* content;
        std::vector<std::string> tags;
    } rows[] = {
        {"<!-- >\n<a>\n-->\n<b>", {"b"}},
        {"<!-- ><a>--><b>", {"b"}},
        {"<c><!-- ><a>-->\n<b>", {"c", "b"}},
        // The end inside the token that opened the comment does not count.
        {"<!-- x -->\n<a>\n<b>", {}},
        {"<!-- x -->\n<a>\n-->\n<b>", {"b"}},
        // An end right behind the comment's own token carries the comment's tag, and begins again.
        {"<!--\n<a>\n-->\n<b>", {}},
        {"<!--\n<a>\n-->\n<b>\n-->\n<c>\n-->\n<d>", {"d"}},
        {"<!-- ><a>--><!-- ><b>--><c>", {"c"}},
        {"<!-- >", {}},
        {"<!-- ><a>-->", {}},
        {"<!-x>", {"!-x"}},
        {"<!--x>\n<a>\n-->\n<b>", {"b"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> tags;
        for (const Token& token : tokens(row.content))
            tags.push_back(token.tag);
        EXPECT_EQ(tags, row.tags) << row.content;
    }
}

TEST(XmlParser, MissingDisabledTagsCanBeAskedFor)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<xml>\n<a>\n<b>\n-->\n<c>\n<d>"));
    Wide tag, attributes, value;
    EXPECT_TRUE(parser->ReadAndMissDisabledTags(tag, attributes, value));
    EXPECT_EQ(shown(tag), "c");
    EXPECT_FALSE(parser->ReadAndMissDisabledTags(tag, attributes, value));
}

TEST(XmlParser, ALongRunOfCommentsDoesNotExhaustTheStack)
{
    std::string content;
    for (int i = 0; i < 200000; ++i)
        content += "<!-- >\n";
    EXPECT_EQ(tokens(content), Tokens{});
}

// --- Attributes.

TEST(XmlParser, AttributesByName)
{
    Parser parser;
    const struct
    {
        const WCHAR *attributes, *name;
        const char* value;
    } rows[] = {
        {ZOR_W(" id=\"2\""), ZOR_W("id"), "2"},
        {ZOR_W("id=\"2\""), ZOR_W("id"), "2"},
        {ZOR_W(" xid=\"1\" id=\"2\""), ZOR_W("id"), "2"},
        {ZOR_W(" id = \"2\""), ZOR_W("id"), ""},
        {ZOR_W(" id='2'"), ZOR_W("id"), ""},
        {ZOR_W(" ID=\"2\""), ZOR_W("id"), ""},
        {ZOR_W(" id=\"1\" id=\"2\""), ZOR_W("id"), "1"},
        {ZOR_W(" id=\"\""), ZOR_W("id"), ""},
        {ZOR_W(" id=\"a&lt;b\""), ZOR_W("id"), "a<b"},
        {ZOR_W(" xid=\"1\""), ZOR_W("id"), ""},
        {ZOR_W(" id=\"open"), ZOR_W("id"), ""},
        {ZOR_W(" id=2 b=\"3\""), ZOR_W("id"), "3"},
        {ZOR_W(""), ZOR_W("id"), ""},
        {ZOR_W("\tid=\"2\""), ZOR_W("id"), ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(parser.ReadAttrib(row.attributes, row.name)), row.value)
            << shown(row.attributes);
}

// --- Values.

TEST(XmlParser, ValuesAreSplitAndAppended)
{
    const struct
    {
        const WCHAR* value;
        std::vector<std::string> expected;
    } rows[] = {
        {ZOR_W("1, 2,3"), {"1", "2", "3"}},
        {ZOR_W("1,2,"), {"1", "2", ""}},
        {ZOR_W(",1"), {"", "1"}},
        {ZOR_W("1"), {"1"}},
        {ZOR_W(" 1 </a>"), {"1"}},
        {ZOR_W("1,,2"), {"1", "", "2"}},
        {ZOR_W(" "), {""}},
        {ZOR_W("1,\r\n2"), {"1", "2"}},
    };
    for (const auto& row : rows) {
        Parser parser;
        Wide value = row.value;
        CXmlParserBase::StringArray values;
        values.Add(ZOR_W("kept"));
        EXPECT_TRUE(parser.ParseValuesInBrackets(value, values, static_cast<WCHAR>(',')));
        std::vector<std::string> found;
        for (const Wide& item : values)
            found.push_back(shown(item));
        std::vector<std::string> expected = row.expected;
        expected.insert(expected.begin(), "kept");
        EXPECT_EQ(found, expected) << shown(row.value);
    }
}

TEST(XmlParser, AnEmptyValueIsReadFromTheNextToken)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<xml>\n<a>1 2</a>"));
    Wide tag, attributes, value;
    parser->ReadToken(tag, attributes, value);
    parser->ReadToken(tag, attributes, value);
    CXmlParserBase::StringArray values;
    EXPECT_TRUE(parser->ParseValuesInBrackets(value, values, static_cast<WCHAR>(' ')));
    EXPECT_EQ(values.GetSize(), 2);
    EXPECT_EQ(shown(value), "1 2");
    parser->ReadToken(tag, attributes, value);
    value.Empty();
    EXPECT_FALSE(parser->ParseValuesInBrackets(value, values, static_cast<WCHAR>(' ')));
    EXPECT_EQ(values.GetSize(), 2);
}

// --- The object.

TEST(XmlParser, CopiesShareTheTextFileAndOneIsDestroyed)
{
    const TempFolder folder;
    Parser original;
    EXPECT_TRUE(original.m_bNoTokenRead);
    ASSERT_EQ(Parser::DoInitialize(folder.write("a.xml", "<xml><b>\n<c>"), original),
              CXmlParserBase::RESULT_OK);
    Wide tag, attributes, value;
    original.ReadToken(tag, attributes, value);
    EXPECT_FALSE(original.m_bNoTokenRead);
    Parser copy(original);
    EXPECT_EQ(copy.m_pTextFile, original.m_pTextFile);
    EXPECT_FALSE(copy.m_bNoTokenRead);
    EXPECT_EQ(shown(copy.m_lastTag), "xml");
    copy.ReadToken(tag, attributes, value);
    EXPECT_EQ(shown(tag), "b");
    copy.m_pTextFile = nullptr; // the other one owns it
}

TEST(XmlParser, NumbersOfResultsAndTypes)
{
    EXPECT_EQ(CXmlParserBase::RESULT_OK, 0);
    EXPECT_EQ(CXmlParserBase::RESULT_CANNOT_OPEN, 1);
    EXPECT_EQ(CXmlParserBase::RESULT_NOT_XML, 2);
    EXPECT_TRUE(std::has_virtual_destructor_v<CXmlParserBase>);
}

TEST(XmlParser, RandomAndBrokenTextsAreReadToTheirEnd)
{
    const char pieces[][12] = {"<",    ">",     "</",    "/>", "<a",   " b=\"",    "\"",
                               "<!--", "-->",   "&amp;", "&",  "text", " ",        "\n",
                               "\r\n", "<?xml", "=",     "'",  "\t",   "\xC3\xA9", "xml"};
    std::mt19937 random(5);
    const TempFolder folder;
    for (int round = 0; round < 300; ++round) {
        std::string content = "<xml>";
        for (auto i = random() % 60; i > 0; --i)
            content += pieces[random() % (sizeof pieces / sizeof *pieces)];
        content += '\n';
        const auto parser = opened(folder.write("a.xml", content));
        Wide tag, attributes, value;
        size_t count = 0;
        while (parser->ReadToken(tag, attributes, value)) {
            parser->ReadAttrib(attributes, ZOR_W("b"));
            ASSERT_LT(++count, content.size() + 2) << testing::PrintToString(content);
        }
        ASSERT_TRUE(parser->IsEndOfFile());
    }
}
