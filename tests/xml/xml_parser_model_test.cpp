// The token reader against the model of its rules, over random and broken documents.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "tests/support/xml_model.h"
#include "zorutils/xml/xml_parser.h"

using namespace zor_test;

namespace {

XmlModel::String text_of(const Wide& text)
{
    return XmlModel::String(text.c_str(), text.length());
}

std::string shown_text(const XmlModel::String& text)
{
    return shown(text.c_str(), text.size());
}

class XmlAgainstModel : public testing::Test
{
protected:
    void compare(const std::string& bytes)
    {
        SCOPED_TRACE(testing::PrintToString(bytes));
        XmlModel model(bytes);
        CXmlParser* opened = nullptr;
        const auto result = CXmlParser::Initialize(m_folder.write("text", bytes), opened);
        const std::unique_ptr<CXmlParser> parser(opened);
        ASSERT_EQ(result,
                  model.is_xml() ? CXmlParserBase::RESULT_OK : CXmlParserBase::RESULT_NOT_XML);
        if (parser == nullptr)
            return;
        Wide tag, attributes, value;
        XmlModel::Token expected;
        for (int i = 0;; ++i) {
            const bool more = model.read_token(expected);
            ASSERT_EQ(parser->ReadToken(tag, attributes, value), more) << i;
            ASSERT_EQ(shown(tag), shown_text(expected.tag)) << i;
            ASSERT_EQ(shown(attributes), shown_text(expected.attributes)) << i;
            ASSERT_EQ(shown(value), shown_text(expected.value)) << i;
            ASSERT_EQ(parser->IsEndOfFile(), model.file().is_end_of_file()) << i;
            if (!more)
                return;
            compare_parts(*parser, attributes, value);
        }
    }

    static void compare_parts(CXmlParser& parser, const Wide& attributes, Wide value)
    {
        for (const char* name : {"b", "id", ""}) {
            const auto expected = XmlModel::read_attribute(
                text_of(attributes), Text<WCHAR>(name, name + std::string(name).size()));
            EXPECT_EQ(shown(parser.ReadAttrib(attributes, Wide(name))), shown_text(expected));
        }
        if (value.empty())
            return;
        const auto expected = XmlModel::split_values(text_of(value), ' ');
        CXmlParserBase::StringArray values;
        ASSERT_TRUE(parser.ParseValuesInBrackets(value, values, ' '));
        ASSERT_EQ(values.GetSize(), static_cast<int>(expected.size()));
        int i = 0;
        for (const auto& item : expected)
            EXPECT_EQ(shown(values[i++]), shown_text(item));
    }

    // A document of `count` pieces at random.
    std::string document(size_t count)
    {
        static const std::string pieces[] = {
            "<",     ">",      "</",   "/>",    "<a",   " b=\"", "\"",  "<!--",   "-->",
            "\n-->", "&amp;",  "lt;",  "&",     "text", " ",     "\n",  "\r\n",   "\r\r",
            "<?xml", " id=\"", "=",    "'",     "\t",   "\xE9",  "xml", "<a b='", "xml version=",
            ">-->",  "<!-- >", "</a>", "1 2 3", "&gt;", "b=",    "\r<", "<>",     " >",
        };
        std::string text;
        for (; count > 0; --count)
            text += pieces[m_random() % (sizeof pieces / sizeof *pieces)];
        return text;
    }

    TempFolder m_folder;
    std::mt19937 m_random{7};
};

} // namespace

TEST_F(XmlAgainstModel, RandomPieces)
{
    for (int round = 0; round < 1000; ++round)
        ASSERT_NO_FATAL_FAILURE(compare("<xml>" + document(m_random() % 40) + "\n"));
}

TEST_F(XmlAgainstModel, RandomPiecesFromTheFirstLineOn)
{
    for (int round = 0; round < 200; ++round)
        ASSERT_NO_FATAL_FAILURE(compare(document(m_random() % 12) + "\n"));
}

TEST_F(XmlAgainstModel, RandomPiecesAsUnits)
{
    for (int round = 0; round < 200; ++round) {
        std::string text = "<xml>" + document(m_random() % 30) + "\n";
        Text<WCHAR> units;
        for (const char c : text)
            units += static_cast<WCHAR>(static_cast<unsigned char>(c));
        ASSERT_NO_FATAL_FAILURE(compare("\xFF\xFE" + utf16(units)));
        // Without a mark the first five characters are lost, or one.
        ASSERT_NO_FATAL_FAILURE(compare(utf16(units)));
    }
}

TEST_F(XmlAgainstModel, ADocumentWithBytesChangedAndLost)
{
    const std::string good = "<?xml version=\"1.0\"?>\r\n<Survey name=\"a &amp; b\">\r\n"
                             "\t<!-- >\r\n\t<Old/>\r\n\t-->\r\n"
                             "\t<Point name=\"P1\" id=\"7\">1000.5 2000.25 300.125</Point>\r\n"
                             "\t<List>\r\n1.5 2.5\r\n3.5 4.5\r\n\t</List>\r\n"
                             "\t<Empty b=\"\"/>\r\n</Survey>\r\n";
    ASSERT_NO_FATAL_FAILURE(compare(good));
    for (size_t size = 0; size < good.size(); ++size) {
        if (size != 0 && good[size - 1] == '\r')
            continue; // a lone CR at the end is never read past
        ASSERT_NO_FATAL_FAILURE(compare(good.substr(0, size)));
    }
    for (int round = 0; round < 600; ++round) {
        std::string text = good;
        for (auto i = m_random() % 4 + 1; i > 0; --i)
            text[m_random() % text.size()] = "<>\"= \n\r&;-!/?a\0"[m_random() % 16];
        ASSERT_NO_FATAL_FAILURE(compare(text + "\n"));
    }
}
