// Whole documents: large ones, those that end in a lone CR, and files of units.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/xml/xml_parser.h"

using namespace zor_test;

namespace {

std::unique_ptr<CXmlParser> opened(const Wide& path)
{
    CXmlParser* parser = nullptr;
    EXPECT_EQ(CXmlParser::Initialize(path, parser), CXmlParserBase::RESULT_OK);
    return std::unique_ptr<CXmlParser>(parser);
}

} // namespace

TEST(XmlDocument, AMillionPointsInOrder)
{
    constexpr int count = 1000000;
    const TempFolder folder;
    {
        std::ofstream file(folder / "a.xml", std::ios::binary);
        file << "<?xml version=\"1.0\"?>\r\n<Points>\r\n";
        for (int i = 0; i < count; ++i)
            file << "\t<P n=\"" << i << "\"/>\r\n";
        file << "</Points>\r\n";
    }
    const auto parser = opened(folder.wide("a.xml"));
    const Wide name(ZOR_W("n"));
    Wide tag, attributes, value;
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "Points");
    for (int i = 0; i < count; ++i) {
        ASSERT_TRUE(parser->ReadToken(tag, attributes, value)) << i;
        ASSERT_EQ(shown(parser->ReadAttrib(attributes, name)), std::to_string(i));
    }
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "/Points");
    EXPECT_FALSE(parser->ReadToken(tag, attributes, value));
}

TEST(XmlDocument, AListOfManyLinesIsGatheredInTimeOfItsLength)
{
    // A text that were copied once per line would take minutes.
    constexpr int count = 200000;
    const TempFolder folder;
    std::string text = "<xml><List>\n";
    for (int i = 0; i < count; ++i)
        text += "1.5 2.5\n";
    const auto parser = opened(folder.write("a.xml", text + "</List>\n"));
    Wide tag, attributes, value;
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "List");
    value.Empty();
    CXmlParserBase::StringArray values;
    ASSERT_TRUE(parser->ParseValuesInBrackets(value, values, ' '));
    ASSERT_EQ(values.GetSize(), 2 * count);
    EXPECT_EQ(shown(values[0]), "1.5");
    EXPECT_EQ(shown(values[2 * count - 1]), "2.5");
    EXPECT_FALSE(parser->ReadToken(tag, attributes, value));
}

TEST(XmlDocument, ADocumentOnOneLineIsCutIntoAllItsTokens)
{
    constexpr int count = 50000;
    const TempFolder folder;
    std::string text = "<xml>";
    for (int i = 0; i < count; ++i)
        text += "<a>&lt;</a>";
    const auto parser = opened(folder.write("a.xml", text));
    Wide tag, attributes, value;
    int tokens = 0;
    while (parser->ReadToken(tag, attributes, value))
        ++tokens;
    EXPECT_EQ(tokens, 3 * count + 1);
}

// The text file never passes a lone CR at its end, on purpose: a host looks at the last byte of a
// file first, or sees to it that the file ends in another way.
TEST(XmlDocument, ATextOfManyEntitiesIsReplacedInTimeOfItsLength)
{
    const TempFolder folder;
    std::string text = "<xml>";
    for (int i = 0; i < 200000; ++i)
        text += "&amp;&quot;";
    const auto parser = opened(folder.write("a.xml", text + "</xml>"));
    Wide tag, attributes, value;
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(value.GetLength(), 400000);
    EXPECT_EQ(shown(value.Left(4)), "&\"&\"");
}

TEST(XmlDocument, AfterALoneCarriageReturnAtTheEndReadingGoesOnOnlyWhenTheFileGrows)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<xml>\r"));
    Wide tag, attributes, value;
    ASSERT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "xml");
    // By this a host can leave off in time.
    EXPECT_TRUE(parser->IsEndOfFile());
    std::promise<bool> result;
    auto more = result.get_future();
    std::thread reader([&] { result.set_value(parser->ReadToken(tag, attributes, value)); });
    EXPECT_EQ(more.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
    std::ofstream(folder / "a.xml", std::ios::binary | std::ios::app) << "\n";
    reader.join();
    EXPECT_FALSE(more.get());
}

TEST(XmlDocument, UnitsWithoutAMarkBeginAtTheSixthCharacterOrAtTheSecond)
{
    const TempFolder folder;
    const auto file = [&](const std::string& text) {
        return folder.write("a.xml", utf16(Text<WCHAR>(text.begin(), text.end())));
    };
    Wide tag, attributes, value;
    // The declaration is still known without its first five characters, and is consumed.
    CXmlParser* parser = nullptr;
    ASSERT_EQ(CXmlParser::Initialize(file(" <?xml version=\"1.0\"?>\n<a>"), parser),
              CXmlParserBase::RESULT_NOT_XML);
    ASSERT_EQ(CXmlParser::Initialize(file("      <?xml version=\"1.0\"?>\n<a>"), parser),
              CXmlParserBase::RESULT_OK);
    EXPECT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(tag), "a");
    delete parser;
    // A first line that is content is read again, from its second character.
    ASSERT_EQ(CXmlParser::Initialize(file("<Surveyxml>\n<a>"), parser), CXmlParserBase::RESULT_OK);
    EXPECT_TRUE(parser->ReadToken(tag, attributes, value));
    EXPECT_EQ(shown(value), "Surveyxml>");
    delete parser;
}

TEST(XmlDocument, AnAttributeNeedsItsOwnQuotes)
{
    const TempFolder folder;
    const auto parser = opened(folder.write("a.xml", "<xml>"));
    EXPECT_EQ(shown(parser->ReadAttrib(ZOR_W(" a=\"1\" id='2'"), ZOR_W("id"))), "");
    EXPECT_EQ(shown(parser->ReadAttrib(ZOR_W(" a=\"1\" id="), ZOR_W("id"))), "");
    EXPECT_EQ(shown(parser->ReadAttrib(ZOR_W(" a=\"1\" id=\""), ZOR_W("id"))), "");
    // The next quotes behind the name serve, whoever's they are.
    EXPECT_EQ(shown(parser->ReadAttrib(ZOR_W(" id='2' a=\"1\""), ZOR_W("id"))), "1");
}
