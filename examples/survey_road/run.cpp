#include "run.h"

#include <chrono>

#include "console.h"
#include "options.h"
#include "output.h"
#include "preferences.h"
#include "reader.h"

namespace survey_road {

namespace {

double size_of(const std::vector<Text>& files)
{
    double bytes = 0;
    for (const Text& file : files) {
        const UINT64 length = base::CFile::GetLength(file.c_str());
        if (length != ~static_cast<UINT64>(0))
            bytes += static_cast<double>(length);
    }
    return bytes;
}

void print_timing(double seconds, size_t points, double bytes)
{
    if (seconds <= 0)
        seconds = 1e-9;
    fprintf(stderr, "read %zu points in %.3f s: %.0f points per second, %.1f MB/s\n", points,
            seconds, static_cast<double>(points) / seconds, bytes / 1e6 / seconds);
}

bool write(const Options& options, const PointSet& points, size_t& lost)
{
    std::string error;
    const bool written = write_job(options.out, points, lost, error);
    zor_logging::ZOR_TRACE_ALWAYS(written ? ZOR_W("job written: %s") : ZOR_W("job not written: %s"),
                                  options.out.c_str());
    if (written)
        return true;
    fprintf(stderr, "%s: %s\n", utf8(options.out).c_str(), error.c_str());
    return false;
}

} // namespace

int run(const std::vector<Text>& arguments)
{
    prepare_console();
    Options options;
    std::string error;
    if (!parse_options(arguments, options, error)) {
        fprintf(stderr, "survey_road: %s\n%s", error.c_str(), usage());
        return wrong_usage;
    }
    if (options.help || options.version) {
        fputs(options.help ? usage() : "survey_road " ZORUTILS_VERSION "\n", stdout);
        return all_well;
    }

    const Preferences preferences = read_preferences();
    set_list_delimiter(preferences.delimiter);
    const int precision = options.precision.value_or(preferences.precision.value_or(3));
    if (options.log)
        printf("log: %s\n", utf8(zor_logging::getZorMainLogFileName()).c_str());
    if (options.files.empty())
        return all_well;

    Report report;
    if (options.columns) {
        size_t told = 0;
        for (const Text& file : options.files)
            told += print_columns(file, report);
        return told == 0 ? nothing_read : report.failed_count() > 0 ? some_skipped : all_well;
    }

    PointSet points;
    const auto start = std::chrono::steady_clock::now();
    {
        Progress progress;
        for (const Text& file : options.files)
            read_file(file, points, report, progress);
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    if (!points.empty() && !options.check) {
        print_table(points, precision);
        puts("");
        if (options.bearings) {
            print_legs(points, precision);
            puts("");
        }
    }
    if (!points.empty())
        print_summary(points, precision);
    zor_logging::ZOR_TRACE_ALWAYS("%u points read from %u files, %u lines or points skipped",
                                  static_cast<unsigned>(points.size()),
                                  static_cast<unsigned>(options.files.size()),
                                  static_cast<unsigned>(report.skipped_count()));
    size_t lost = 0;
    const bool written =
        options.out.empty() || points.empty() || options.check || write(options, points, lost);
    fflush(stdout);
    if (options.timing)
        print_timing(elapsed.count(), points.size(), size_of(options.files));
    if (report.skipped_count() + report.failed_count() + lost > 0)
        fprintf(stderr, "%zu lines or points skipped, %zu files not read, %zu points not written\n",
                report.skipped_count(), report.failed_count(), lost);
    if (points.empty() || !written)
        return nothing_read;
    return report.skipped_count() + report.failed_count() + lost > 0 ? some_skipped : all_well;
}

} // namespace survey_road
