// Numbers to text and back, beside the C library and the C++ library's own conversions.
#include <benchmark/benchmark.h>
#include <stdio.h>
#include <stdlib.h>

#include <charconv>

#include "zorutils/formats/angle_text.h"
#include "zorutils/formats/number_text.h"

using Wide = zor_text::CZorStringT<WCHAR>;

namespace {

constexpr double coordinate = 5538012.3457;

} // namespace

static void BM_number_to_text_zor(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zor_formats::DoubleToString(coordinate, 3));
}
BENCHMARK(BM_number_to_text_zor);

static void BM_number_to_text_snprintf(benchmark::State& state)
{
    for (auto _ : state) {
        char text[64];
        benchmark::DoNotOptimize(snprintf(text, sizeof text, "%.3f", coordinate));
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_number_to_text_snprintf);

static void BM_text_to_number_zor(benchmark::State& state)
{
    const Wide text(ZOR_W("5538012.3457"));
    for (auto _ : state) {
        double value = 0;
        benchmark::DoNotOptimize(zor_formats::StringToDouble(text, value));
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_text_to_number_zor);

static void BM_text_to_number_strtod(benchmark::State& state)
{
    const char* text = "5538012.3457";
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(strtod(text, nullptr));
    }
}
BENCHMARK(BM_text_to_number_strtod);

static void BM_angle_to_text_zor(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zor_formats::DegreeToString(180312.5, true, 2));
}
BENCHMARK(BM_angle_to_text_zor);

static void BM_angle_to_text_snprintf(benchmark::State& state)
{
    for (auto _ : state) {
        const double seconds = 180312.5;
        const int whole = static_cast<int>(seconds);
        char text[64];
        benchmark::DoNotOptimize(snprintf(text, sizeof text, "%d\xC2\xB0%02d'%05.2f\"",
                                          whole / 3600, whole / 60 % 60,
                                          seconds - whole / 60 * 60));
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_angle_to_text_snprintf);
