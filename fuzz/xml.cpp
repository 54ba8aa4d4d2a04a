// The token reader against the model of its rules.
#include <memory>

#include "fuzz/input_file.h"
#include "fuzz/properties.h"
#include "tests/support/xml_model.h"
#include "zorutils/xml/xml_parser.h"

using namespace zor_test;

namespace {

bool same(const Wide& text, const XmlModel::String& expected)
{
    return XmlModel::String(text.c_str(), static_cast<size_t>(text.GetLength())) == expected;
}

} // namespace

void zor_fuzz::xml(const unsigned char* data, size_t size)
{
    static const InputFile input(".xml");
    // A lone CR at the end is never read past, so every input ends in a line end.
    const std::string bytes = bytes_of(data, size) + "\n";
    XmlModel model(bytes);
    CXmlParser* opened = nullptr;
    const auto result = CXmlParser::Initialize(input.write(bytes), opened);
    const std::unique_ptr<CXmlParser> parser(opened);
    require(result == (model.is_xml() ? CXmlParserBase::RESULT_OK : CXmlParserBase::RESULT_NOT_XML),
            "what is no XML is told");
    if (parser == nullptr)
        return;
    Wide tag, attributes, value;
    XmlModel::Token expected;
    for (int i = 0; i < 1000; ++i) {
        const bool more = model.read_token(expected);
        require(parser->ReadToken(tag, attributes, value) == more,
                "tokens are as many as modelled");
        if (!more)
            return;
        require(same(tag, expected.tag) && same(attributes, expected.attributes) &&
                    same(value, expected.value),
                "a token is as modelled");
        const auto id = XmlModel::read_attribute(expected.attributes, lit<WCHAR>("id"));
        require(same(parser->ReadAttrib(attributes, ZOR_W("id")), id),
                "an attribute is as modelled");
    }
}
