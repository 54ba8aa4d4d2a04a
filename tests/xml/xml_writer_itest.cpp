// Tag scopes, which are internal: a tag written at construction and its end at destruction.
#include "zorutils/xml/xml_writer_internal.h"

#include <gtest/gtest.h>

#include "tests/support/failing_allocation.h"
#include "tests/support/text.h"

using namespace zor_test;

namespace {

struct Level : CXmlParserBase
{
    using CXmlParserBase::m_nOpenTags;
};

DWORD flag(CXmlParserBase::ETagType type)
{
    return CXmlParserBase::TagTypeFlag(type);
}

} // namespace

TEST(XmlTagScope, InlineAndBlockForms)
{
    Wide text;
    {
        const CXmlBlockTagScope outer(text, ZOR_W("a"), CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
        const CXmlInlineTagScope inner(text, ZOR_W("b"),
                                       CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
        text += ZOR_W("1");
    }
    EXPECT_EQ(shown(text), "<a>\\u000D\\u000A\\u0009<b>1</b>\\u000D\\u000A</a>\\u000D\\u000A");
    EXPECT_EQ(Level::m_nOpenTags, 0);
}

TEST(XmlTagScope, AnEmptyTagHasNoEnd)
{
    Wide text;
    {
        const CXmlTagScope scope(text, ZOR_W("a"), flag(CXmlParserBase::TAG_TYPE_EMPTY));
    }
    EXPECT_EQ(shown(text), "<a/>\\u000D\\u000A");
    EXPECT_EQ(Level::m_nOpenTags, 0);
}

TEST(XmlTagScope, ATagLeftOpenForAttributesGetsAFullEnd)
{
    Wide text;
    {
        const CXmlTagScope scope(text, ZOR_W("a"), flag(CXmlParserBase::TAG_TYPE_OPEN_ATTRIBUTES));
        text += ZOR_W(" b=\"1\">");
    }
    EXPECT_EQ(shown(text), "<a b=\"1\"></a>\\u000D\\u000A");
    EXPECT_EQ(Level::m_nOpenTags, 0);
}

TEST(XmlTagScope, ANullNameIsEmpty)
{
    Wide text;
    {
        const CXmlInlineTagScope scope(text, nullptr, CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
    }
    EXPECT_EQ(shown(text), "<></>\\u000D\\u000A");
}

TEST(XmlTagScope, FailedAllocationsLeaveTheIndentRight)
{
    const long live = live_blocks();
    for_each_failing_allocation(
        [] {
            try {
                Wide text;
                const CXmlBlockTagScope outer(text, ZOR_W("a"),
                                              CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
                const CXmlInlineTagScope inner(text, ZOR_W("b"),
                                               CXmlParserBase::TAG_TYPE_CLOSED_ATTRIBUTES);
                text += ZOR_W("value");
            } catch (const std::bad_alloc&) {
            }
        },
        [&](int n, bool) {
            EXPECT_EQ(Level::m_nOpenTags, 0) << n;
            EXPECT_EQ(live_blocks(), live) << n;
        });
}
