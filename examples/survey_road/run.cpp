
#include <chrono>

#include "options.h"
#include "output.h"
#include "preferences.h"
#include "reader.h"
#include "texts.h"

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
    const auto number = [](double value, int decimals) {
        return utf8(zor_formats::DoubleToString(value, decimals));
    };
    fprintf(stderr, "%s\n",
            tr("read {1} points in {2} s: {3} points per second, {4} MB/s", std::to_string(points),
               number(seconds, 3), number(static_cast<double>(points) / seconds, 0),
               number(bytes / 1e6 / seconds, 1))
                .c_str());
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

// A fault as a mistake in the program would make it. Debuggers show it by this name.
__attribute__((noinline)) void fault_on_purpose()
{
    static volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
}

// Where support looks for what a fault leaves.
void print_places()
{
    printf("%s\n", tr("log: {1}", utf8(zor_logging::getZorMainLogFileName())).c_str());
    Text dumps = GetRootDir();
    dumps += ZOR_W("\\SupportInfo\\Dumps");
    printf("%s\n", tr("records of faults: {1}", utf8(dumps)).c_str());
    fflush(stdout);
}

int run_road(const std::vector<Text>& arguments)
{
    host::prepare_console();
    Options options;
    UsageError error;
    const bool parsed = parse_options(arguments, options, error);
    const Preferences preferences = read_preferences();
    const Text language = options.language.value_or(preferences.language);
    if (!use_language(language))
        fprintf(stderr, "survey_road: there is no translation for the language \"%s\"\n",
                utf8(language).c_str());
    if (!parsed) {
        fprintf(stderr, "survey_road: %s\n%s", tr(error.text, error.value).c_str(),
                usage().c_str());
        return wrong_usage;
    }
    if (options.help || options.version) {
        fputs(options.help ? usage().c_str() : "survey_road " ZORUTILS_VERSION "\n", stdout);
        return all_well;
    }

    print_complaints(preferences);
    if (!language.empty())
        zor_logging::ZOR_TRACE_ALWAYS(ZOR_W("language: %s"), language.c_str());
    set_list_delimiter(preferences.delimiter);
    const int precision = options.precision.value_or(preferences.precision.value_or(3));
    if (options.log)
        printf("%s\n", tr("log: {1}", utf8(zor_logging::getZorMainLogFileName())).c_str());
    if (options.crash_test) {
        print_places();
        fault_on_purpose();
    }
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
        fprintf(stderr, "%s\n",
                tr("{1} lines or points skipped, {2} files not read, {3} points not written",
                   std::to_string(report.skipped_count()), std::to_string(report.failed_count()),
                   std::to_string(lost))
                    .c_str());
    if (points.empty() || !written)
        return nothing_read;
    return report.skipped_count() + report.failed_count() + lost > 0 ? some_skipped : all_well;
}

} // namespace

} // namespace survey_road

int host::run(const std::vector<Text>& arguments)
{
    return host::in_guarded_thread("survey_road", [&] { return survey_road::run_road(arguments); });
}
