// The text forms of XML: tags, attributes, entities and the indent counter.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/text.h"
#include "zorutils/xml/xml_parser.h"

using namespace zor_test;

namespace {

// The counter in reach; each test starts at level 0.
struct Writer : CXmlParserBase
{
    using CXmlParserBase::m_nOpenTags;
    using CXmlParserBase::ReplaceReservedCharactersForImport;
};

class XmlWriter : public testing::Test
{
protected:
    void SetUp() override { Writer::m_nOpenTags = 0; }
    void TearDown() override { Writer::m_nOpenTags = 0; }
};

constexpr DWORD empty = 1, closed_attributes = 2, open_attributes = 4, inline_tag = 8, block = 16;

const Wide name(ZOR_W("a"));

} // namespace

TEST_F(XmlWriter, FlagsAreBitsOfTheTypes)
{
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_EMPTY), empty);
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES),
              closed_attributes);
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_OPEN_ATTRIBUTES),
              open_attributes);
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_INLINE), inline_tag);
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_BLOCK), block);
    EXPECT_EQ(CXmlParserBase::TagTypeFlag(CXmlParserBase::TAG_TYPE_BLOCK), 1u << 4);
}

TEST_F(XmlWriter, StartTagByItsFlags)
{
    const struct
    {
        DWORD flags;
        const char* text;
        int change;
    } rows[] = {
        {0, "<a>\\u000D\\u000A", 1},
        {block, "<a>\\u000D\\u000A", 1},
        {closed_attributes, "<a>\\u000D\\u000A", 1},
        {inline_tag, "<a>", 1},
        {empty, "<a/>\\u000D\\u000A", 0},
        {empty | inline_tag, "<a/>\\u000D\\u000A", 0},
        {open_attributes, "<a", 1},
        {open_attributes | inline_tag, "<a", 1},
        {open_attributes | empty, "<a", 0},
        {open_attributes | empty | inline_tag, "<a", 0},
    };
    for (const auto& row : rows) {
        Writer::m_nOpenTags = 0;
        EXPECT_EQ(shown(CXmlParserBase::OpenTag(name, row.flags)), row.text) << row.flags;
        EXPECT_EQ(Writer::m_nOpenTags, row.change) << row.flags;
    }
}

TEST_F(XmlWriter, EndTagByItsFlags)
{
    const struct
    {
        DWORD flags;
        const char* text;
    } rows[] = {
        {0, "\\u0009</a>\\u000D\\u000A"},
        {block | closed_attributes, "\\u0009</a>\\u000D\\u000A"},
        {inline_tag, "</a>\\u000D\\u000A"},
        {open_attributes, "/>\\u000D\\u000A"},
        {open_attributes | inline_tag, "</a>\\u000D\\u000A"},
        {empty, "\\u0009</a>\\u000D\\u000A"},
    };
    for (const auto& row : rows) {
        Writer::m_nOpenTags = 2;
        EXPECT_EQ(shown(CXmlParserBase::CloseTag(name, row.flags)), row.text) << row.flags;
        EXPECT_EQ(Writer::m_nOpenTags, 1);
    }
}

TEST_F(XmlWriter, IndentIsOneTabPerOpenTag)
{
    Writer::m_nOpenTags = 2;
    EXPECT_EQ(shown(CXmlParserBase::OpenTag(name, 0)), "\\u0009\\u0009<a>\\u000D\\u000A");
    Writer::m_nOpenTags = 0;
    EXPECT_EQ(shown(CXmlParserBase::OpenTag(name, 0)), "<a>\\u000D\\u000A");
    EXPECT_EQ(shown(CXmlParserBase::CloseTag(name, 0)), "</a>\\u000D\\u000A");
    EXPECT_EQ(Writer::m_nOpenTags, 0);
}

TEST_F(XmlWriter, MoreClosesThanOpensGoBelowZero)
{
    EXPECT_EQ(shown(CXmlParserBase::CloseTag(name, 0)), "</a>\\u000D\\u000A");
    EXPECT_EQ(Writer::m_nOpenTags, -1);
    EXPECT_EQ(shown(CXmlParserBase::OpenTag(name, 0)), "<a>\\u000D\\u000A");
    EXPECT_EQ(Writer::m_nOpenTags, 0);
}

TEST_F(XmlWriter, AnElementOfAttributesAlone)
{
    Wide text = CXmlParserBase::OpenTag(name, open_attributes);
    text += CXmlParserBase::FormAttrib(ZOR_W("b"), ZOR_W("1"), false);
    text += CXmlParserBase::CloseEmptyTag();
    EXPECT_EQ(shown(text), "<a b=\"1\" />\\u000D\\u000A");
    EXPECT_EQ(Writer::m_nOpenTags, 0);
}

TEST_F(XmlWriter, AnInlineElementIsOneLine)
{
    Wide text = CXmlParserBase::OpenTag(name, inline_tag);
    text += ZOR_W("value");
    text += CXmlParserBase::CloseTag(name, inline_tag);
    EXPECT_EQ(shown(text), "<a>value</a>\\u000D\\u000A");
}

TEST_F(XmlWriter, Attributes)
{
    EXPECT_TRUE(CXmlParserBase::FormAttrib(ZOR_W("b"), ZOR_W(""), false).empty());
    EXPECT_EQ(shown(CXmlParserBase::FormAttrib(ZOR_W("b"), ZOR_W(""), true)), " b=\"\"");
    EXPECT_EQ(shown(CXmlParserBase::FormAttrib(ZOR_W("b"), ZOR_W("x<y"), false)), " b=\"x&lt;y\"");
    EXPECT_EQ(shown(CXmlParserBase::FormAttrib(ZOR_W("b&c"), ZOR_W("'\""), false)),
              " b&amp;c=\"&apos;&quot;\"");
}

TEST_F(XmlWriter, NamesOfTagsAreNotEscaped)
{
    EXPECT_EQ(shown(CXmlParserBase::OpenTag(ZOR_W("a<b"), inline_tag)), "<a<b>");
    EXPECT_EQ(shown(CXmlParserBase::CloseTag(ZOR_W("a&b"), inline_tag)), "</a&b>\\u000D\\u000A");
}

TEST_F(XmlWriter, EntitiesInTheirOrder)
{
    EXPECT_EQ(shown(CXmlParserBase::ReplaceReservedCharactersForExport(ZOR_W("&<>'\"x"))),
              "&amp;&lt;&gt;&apos;&quot;x");
    EXPECT_EQ(shown(CXmlParserBase::ReplaceReservedCharactersForExport(ZOR_W("&lt;"))), "&amp;lt;");
    EXPECT_TRUE(CXmlParserBase::ReplaceReservedCharactersForExport(ZOR_W("")).empty());
    EXPECT_EQ(shown(Writer::ReplaceReservedCharactersForImport(ZOR_W("&amp;&lt;&gt;&apos;&quot;"))),
              "&<>'\"");
    // Not the identity, on purpose, for text that looks like an entity.
    EXPECT_EQ(shown(Writer::ReplaceReservedCharactersForImport(
                  CXmlParserBase::ReplaceReservedCharactersForExport(ZOR_W("&lt;")))),
              "<");
}
