// The text file and the token reader where memory ends: nothing is leaked, and nothing but
// "bad allocation" comes out.
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

#include "tests/support/failing_allocation.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text.h"
#include "zorutils/xml/xml_parser.h"
#include "zorutils/zortext/text_file.h"

using namespace zor_test;

namespace {

// Runs `operation` with each of its allocations failing; all blocks are back after each run.
template <class Operation>
void expect_no_leak(Operation operation)
{
    operation(); // what is made once per process is made now
    const long live = live_blocks();
    int failures = 0;
    for_each_failing_allocation(
        [&] {
            try {
                operation();
            } catch (const std::bad_alloc&) {
                ++failures;
            }
        },
        [&](int n, bool happened) {
            EXPECT_EQ(live_blocks(), live) << n;
            EXPECT_EQ(failures, happened ? n : n - 1) << n << ": a failure was swallowed";
        });
    EXPECT_GT(failures, 0);
}

} // namespace

TEST(TextFileAllocation, AConstructorThatFailsLeavesNothing)
{
    expect_no_leak([] { const CTextFile file(64); });
    expect_no_leak([] { const std::unique_ptr<CTextFile> file(new CTextFile(64)); });
    const long live = live_blocks();
    EXPECT_THROW(CTextFile(-1), std::bad_alloc);
    EXPECT_EQ(live_blocks(), live);
}

TEST(TextFileAllocation, LinesOfManyChunks)
{
    const TempFolder folder;
    const Wide bytes = folder.write("bytes", std::string(100, 'x') + "\nend");
    const Wide units =
        folder.write("units", "\xFF\xFE" + utf16(Text<WCHAR>(100, static_cast<WCHAR>('x'))));
    for (const Wide& path : {bytes, units})
        expect_no_leak([&] {
            CTextFile file(16);
            if (!file.Open(path))
                throw std::bad_alloc(); // a path that could not be brought to the system
            Wide line;
            while (file.GetNextLine(line, true))
                continue;
        });
}

TEST(TextFileAllocation, ALineCanBeReadAgainAfterAFailure)
{
    const TempFolder folder;
    CTextFile file(16);
    ASSERT_EQ(file.Open(folder.write("text", std::string(40, 'x') + "\nend")), 1);
    Wide line;
    {
        const FailingAllocation failing(1);
        EXPECT_THROW(file.GetNextLine(line, true), std::bad_alloc);
    }
    file.Reset();
    EXPECT_EQ(file.GetNextLine(line, true), 1u);
    EXPECT_EQ(shown(line), std::string(40, 'x'));
}

TEST(XmlParserAllocation, OpeningAndReadingADocument)
{
    const TempFolder folder;
    const Wide path =
        folder.write("a.xml", "<?xml version=\"1.0\"?>\n<a b=\"1 &amp; 2\">text &lt;\n"
                              "more\nand more</a><!-- >\n<x>\n-->\n<c>1,2</c>");
    expect_no_leak([&] {
        CXmlParser* opened = nullptr;
        if (CXmlParser::Initialize(path, opened) != CXmlParserBase::RESULT_OK) {
            EXPECT_EQ(opened, nullptr);
            throw std::bad_alloc();
        }
        const std::unique_ptr<CXmlParser> parser(opened);
        Wide tag, attributes, value;
        CXmlParserBase::StringArray values;
        while (parser->ReadToken(tag, attributes, value)) {
            parser->ReadAttrib(attributes, ZOR_W("b"));
            if (!value.empty())
                parser->ParseValuesInBrackets(value, values, ',');
        }
    });
}
