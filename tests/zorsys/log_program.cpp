// A host of its own for tests of the process-wide log: does what its arguments say, one after the
// other.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "tests/zorsys/die_now.h"
#include "zorutils/zorutils.h"

using Wide = zor_text::CZorStringT<WCHAR>;
using Narrow = zor_text::CZorStringT<char>;
using namespace zor_logging;

namespace {

bool is_asked_for()
{
    const char* const asked = getenv("LOG_PROGRAM_EARLY");
    return asked != nullptr && *asked != 0;
}

// Records in front of main and behind the log's own end.
struct Early
{
    Early()
    {
        if (is_asked_for())
            ZOR_TRACE_ALWAYS("before main");
    }
    ~Early()
    {
        if (is_asked_for())
            ZOR_TRACE_ALWAYS("after main");
    }
};

Early early;

void print(const char* name, const Wide& text)
{
    printf("%s=%s\n", name, Narrow(text.c_str()).c_str());
}

void print_folders()
{
    print("application", GetApplicationPath());
    print("exe", GetExeDir());
    print("root", GetRootDir());
    print("docs", GetDocsDir());
    print("data", GetOstrelAppDataDir());
    print("geo", GetOstrelAppGeoDataDir());
    print("geoids", GetOstrelAppGeoidsDataDir());
}

void log_from_threads()
{
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([t] {
            for (int i = 0; i < 100; ++i)
                ZOR_TRACE_ALWAYS("thread %d record %d", t, i);
        });
    for (std::thread& thread : threads)
        thread.join();
}

void run(const std::string& what)
{
    if (what == "folders")
        print_folders();
    else if (what == "name")
        print("log", getZorMainLogFileName());
    else if (what == "record")
        ZOR_TRACE_ALWAYS("a %s of %d", "record", 7);
    else if (what == "wide")
        ZOR_TRACE_ALWAYS(ZOR_W("a %s record"), ZOR_W("wide"));
    else if (what == "strings") {
        ZOR_TRACE_ALWAYS(Narrow("narrow %d"), 1);
        ZOR_TRACE_ALWAYS(Wide(ZOR_W("wide %d")), 2);
        ZOR_TRACE_DEBUG(Narrow("narrow debug %d"), 1);
        ZOR_TRACE_DEBUG(Wide(ZOR_W("wide debug %d")), 2);
    } else if (what == "levels") {
        for (int level = -2; level <= 5; ++level) {
            LOGMESSAGE(level, "level %d", level);
            LOGMESSAGE(level, ZOR_W("wide level %d"), level);
        }
    } else if (what == "debug") {
        ZOR_TRACE_DEBUG("debug %d", 1);
        ZOR_TRACE_DEBUG(ZOR_W("wide debug %d"), 1);
    } else if (what == "filter")
        SetLogFilter(7);
    else if (what == "binary")
        ZOR_TRACE_BIN_ALWAYS("data: ", reinterpret_cast<const unsigned char*>("a\0b"), 3);
    else if (what == "check")
        zor_err_log("a", 7, "oops");
    else if (what == "enforce") {
        try {
            zor_enforce("a", 7, "oops");
        } catch (const std::exception& failure) {
            printf("%s\n", failure.what());
            fflush(stdout);
        }
    } else if (what == "flush")
        zor_flush_log();
    else if (what == "threads")
        log_from_threads();
    else if (what == "die")
        die_now();
    else if (what == "exit")
        exit(0);
}

} // namespace

int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i)
        run(arguments[i]);
    return 0;
}
