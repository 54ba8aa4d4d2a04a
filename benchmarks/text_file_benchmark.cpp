// Text files line by line, and XML as tokens, beside the C++ library's stream and Expat.
#include <benchmark/benchmark.h>
#include <expat.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "zorutils/xml/xml_parser.h"
#include "zorutils/zortext/text_file.h"

using Wide = zor_text::CZorStringT<WCHAR>;

namespace {

constexpr int lines = 20000;

// A file for the whole run, gone at its end.
class File
{
public:
    File(const char* name, const std::string& content)
        : path(std::filesystem::temp_directory_path() / name)
    {
        std::ofstream(path, std::ios::binary) << content;
    }
    ~File() { std::filesystem::remove(path); }

    const std::filesystem::path path;
};

const File& list()
{
    static const File file("zor_benchmark.txt", [] {
        std::string text;
        for (int i = 0; i < lines; ++i)
            text += "P" + std::to_string(i) + ",5538012.345,3459871.220,231.074,nail in kerb\r\n";
        return text;
    }());
    return file;
}

const File& document()
{
    static const File file("zor_benchmark.xml", [] {
        std::string text = "<?xml version=\"1.0\"?>\r\n<LandXML>\r\n";
        for (int i = 0; i < lines; ++i)
            text += "<CgPoint name=\"P" + std::to_string(i) +
                    "\">5538012.345 3459871.220 231.074</CgPoint>\r\n";
        return text + "</LandXML>\r\n";
    }());
    return file;
}

// A benchmark that read something else than it should has measured nothing.
void expect(benchmark::State& state, int count, int wanted)
{
    if (count != wanted)
        state.SkipWithError("read a wrong number of items");
}

} // namespace

static void BM_lines_zor(benchmark::State& state)
{
    const Wide path(list().path.u16string().c_str());
    for (auto _ : state) {
        CTextFile file(65536);
        file.Open(path.c_str());
        Wide line;
        int count = 0;
        while (file.GetNextLine(line, true) != 0)
            ++count;
        file.Close();
        expect(state, count, lines);
    }
}
BENCHMARK(BM_lines_zor);

static void BM_lines_getline(benchmark::State& state)
{
    for (auto _ : state) {
        std::ifstream file(list().path);
        std::string line;
        int count = 0;
        while (std::getline(file, line))
            ++count;
        expect(state, count, lines);
    }
}
BENCHMARK(BM_lines_getline);

static void BM_xml_zor(benchmark::State& state)
{
    const Wide path(document().path.u16string().c_str());
    for (auto _ : state) {
        CXmlParser* opened = nullptr;
        CXmlParser::Initialize(path, opened);
        const std::unique_ptr<CXmlParser> parser(opened);
        Wide tag, attributes, value;
        int count = 0;
        while (parser->ReadToken(tag, attributes, value))
            count += !value.IsEmpty();
        expect(state, count, lines);
    }
}
BENCHMARK(BM_xml_zor);

static void BM_xml_expat(benchmark::State& state)
{
    for (auto _ : state) {
        int count = 0;
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, &count);
        XML_SetCharacterDataHandler(parser, [](void* data, const XML_Char* text, int) {
            *static_cast<int*>(data) += text[0] != '\n' && text[0] != '\r';
        });
        std::ifstream file(document().path, std::ios::binary);
        char block[65536];
        for (bool more = true; more;) {
            file.read(block, sizeof block);
            more = file.gcount() == sizeof block;
            XML_Parse(parser, block, static_cast<int>(file.gcount()), !more);
        }
        XML_ParserFree(parser);
        if (count < lines)
            state.SkipWithError("read too little");
    }
}
BENCHMARK(BM_xml_expat);
