// The one log of the process, and the functions that write to it.
#include <stdlib.h>

#include <atomic>
#include <boost/filesystem.hpp>
#include <mutex>
#include <new>

#include "zorutils/fs/FileFunctions.h"
#include "zorutils/fs/app_dirs.h"
#include "zorutils/fs/app_dirs_internal.h"
#include "zorutils/fs/file_names.h"
#include "zorutils/fs/seq_file_names.h"
#include "zorutils/platform/crt.h"
#include "zorutils/platform/system_path.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_logger.h"
#include "zorutils/zorsys/zor_logger_internal.h"

namespace zor_logging {

namespace {

typedef CZorStringT<WCHAR> String;

constexpr DWORD kept_runs = 10;

// In static memory and never destroyed: records come while the process ends, in any order.
alignas(CZorLogger) unsigned char storage[sizeof(CZorLogger)];
std::atomic<CZorLogger*> main_logger{nullptr};
std::mutex creation;
thread_local bool opening = false;

String log_folder()
{
    const String root = GetRootDir();
    if (!FileFuncs::IsDirExist(root))
        CreateDirectoryW(root.c_str(), nullptr);
    return FileFuncs::IsDirExist(root) ? root : FileFuncs::GetTempDirWithoutSlash();
}

// A link in the log's place may have been put there to have another file emptied: it goes, and what
// it names stays.
void remove_link(const String& path)
{
    namespace fs = boost::filesystem;
    boost::system::error_code code;
    const fs::path place = zor::platform::to_boost_path(path.c_str());
    if (fs::is_symlink(fs::symlink_status(place, code)))
        fs::remove(place, code);
}

String next_log_path()
{
    String name = zor::file_names::ExtractFileNameWithoutExtFromPathName(GetApplicationPath());
    if (name.empty())
        name = ZOR_W("zor");
    const SeqFileNames names = {log_folder(), name, ZOR_W(".log.txt"), kept_runs};
    return names.getNext();
}

void log_start(CZorLogger& logger)
{
    const auto now = _time64(nullptr);
    tm fields = {};
    if (_gmtime64_s(&fields, &now) != 0)
        return;
    String text;
    text.Format(ZOR_W("Program %s started on %d/%02d/%02d %02d:%02d:%02d UTC"),
                GetApplicationPath().c_str(), fields.tm_year + 1900, fields.tm_mon + 1,
                fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec);
    logger.logText(log_mask_always, text);
}

// Ends the log when the library is unloaded, or the process ends: behind the ends of the host's own
// static objects, since it is there before them.
struct AtTheEnd
{
    ~AtTheEnd()
    {
        if (CZorLogger* const logger = main_logger.load())
            logger->finish();
    }
};
const AtTheEnd at_the_end;

CZorLogger* make_main_logger()
{
    auto* const logger = new (storage) CZorLogger;
    try {
        if (const char* const filter = getenv("ZOR_LOG_FILTER"))
            logger->setFilter(static_cast<DWORD>(strtoul(filter, nullptr, 0)));
        const String path = next_log_path();
        remove_link(path);
        if (logger->openFile(path.c_str()))
            log_start(*logger);
    } catch (...) {
        logger->~CZorLogger();
        throw;
    }
    return logger;
}

// Tells when the thread leaves the making of the log, also by an exception.
class Opening
{
public:
    Opening() { opening = true; }
    ~Opening() { opening = false; }
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;
};

bool is_always(LONG level)
{
    return level >= 0 && level <= 3;
}

template <class T>
void trace(DWORD mask, const T* format, va_list arguments)
{
    if (!opens_main_logger()) {
        getMainLogger().logFormat(mask, format, arguments);
        return;
    }
    if (mask != log_mask_always)
        return;
    CZorStringT<T> text;
    text.FormatV(format, arguments);
    String line(text.c_str());
    line += ZOR_W("\r\n");
    show_on_debugger_stream(line);
}

} // namespace

bool opens_main_logger()
{
    return opening || finds_application_dirs();
}

CZorLogger& getMainLogger()
{
    if (CZorLogger* const logger = main_logger.load(std::memory_order_acquire))
        return *logger;
    const std::lock_guard<std::mutex> guard(creation);
    if (CZorLogger* const logger = main_logger.load(std::memory_order_acquire))
        return *logger;
    const Opening making;
    CZorLogger* const logger = make_main_logger();
    main_logger.store(logger, std::memory_order_release);
    return *logger;
}

CZorStringT<WCHAR> getZorMainLogFileName()
{
    return getMainLogger().getFileName();
}

void SetLogFilter(DWORD filter)
{
    getMainLogger().setFilter(filter);
}

void zor_flush_log()
{
    if (!opens_main_logger())
        getMainLogger().flush();
}

void ZOR_TRACE_BIN_ALWAYS(const char* title, const unsigned char* data, unsigned int size)
{
    String text(title);
    text += String(reinterpret_cast<const char*>(data), static_cast<int>(size));
    if (!opens_main_logger())
        getMainLogger().logText(log_mask_always, text);
}

// The functions with arguments of their own; each in both widths.

#define ZOR_TRACE_WITH(mask)                                                                       \
    va_list arguments;                                                                             \
    va_start(arguments, format);                                                                   \
    trace(mask, format, arguments);                                                                \
    va_end(arguments)

void LOGMESSAGE(LONG level, const char* format, ...)
{
    ZOR_TRACE_WITH(is_always(level) ? log_mask_always : log_mask_debug);
}

void LOGMESSAGE(LONG level, const WCHAR* format, ...)
{
    ZOR_TRACE_WITH(is_always(level) ? log_mask_always : log_mask_debug);
}

void ZOR_TRACE_ALWAYS(const char* format, ...)
{
    ZOR_TRACE_WITH(log_mask_always);
}

void ZOR_TRACE_ALWAYS(const WCHAR* format, ...)
{
    ZOR_TRACE_WITH(log_mask_always);
}

void ZOR_TRACE_DEBUG(const char* format, ...)
{
    ZOR_TRACE_WITH(log_mask_debug);
}

void ZOR_TRACE_DEBUG(const WCHAR* format, ...)
{
    ZOR_TRACE_WITH(log_mask_debug);
}

#undef ZOR_TRACE_WITH

} // namespace zor_logging
