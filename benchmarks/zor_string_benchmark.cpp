// The string beside std::u16string and, for the code pages, beside ICU's own converter.
#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>

#include <string>

#include "zorutils/zortext/zor_string.h"

using Wide = zor_text::CZorStringT<WCHAR>;
using Narrow = zor_text::CZorStringT<char>;

static void BM_copy_zor(benchmark::State& state)
{
    const Wide source(ZOR_W("a point name that is longer than any small buffer"));
    for (auto _ : state) {
        Wide copy = source;
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_copy_zor);

static void BM_copy_std(benchmark::State& state)
{
    const std::u16string source(u"a point name that is longer than any small buffer");
    for (auto _ : state) {
        std::u16string copy = source;
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_copy_std);

static void BM_find_zor(benchmark::State& state)
{
    const Wide text(std::u16string(1000, u'x').append(u"needle").c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(text.Find(ZOR_W("needle")));
}
BENCHMARK(BM_find_zor);

static void BM_find_std(benchmark::State& state)
{
    const std::u16string text = std::u16string(1000, u'x').append(u"needle");
    for (auto _ : state)
        benchmark::DoNotOptimize(text.find(u"needle"));
}
BENCHMARK(BM_find_std);

static void BM_append_zor(benchmark::State& state)
{
    for (auto _ : state) {
        Wide text;
        text.GetBuffer(100);
        for (int i = 0; i < 100; ++i)
            text += static_cast<WCHAR>('x');
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_append_zor);

static void BM_append_std(benchmark::State& state)
{
    for (auto _ : state) {
        std::u16string text;
        text.reserve(100);
        for (int i = 0; i < 100; ++i)
            text += u'x';
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_append_std);

static void BM_from_bytes_zor(benchmark::State& state)
{
    const std::string line = "P0099,5538012.345,3459871.220,231.07,edge of asphalt";
    for (auto _ : state) {
        Wide text(line.c_str());
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_from_bytes_zor);

static void BM_from_bytes_icu(benchmark::State& state)
{
    const std::string line = "P0099,5538012.345,3459871.220,231.07,edge of asphalt";
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open("windows-1252", &error);
    for (auto _ : state) {
        std::u16string text(line.size(), u'\0');
        ucnv_toUChars(converter, text.data(), static_cast<int>(text.size()) + 1, line.data(),
                      static_cast<int>(line.size()), &error);
        benchmark::DoNotOptimize(text);
    }
    ucnv_close(converter);
}
BENCHMARK(BM_from_bytes_icu);
