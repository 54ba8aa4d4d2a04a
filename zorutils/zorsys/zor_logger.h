// zorutils/zorsys/zor_logger.h: the log of the process.
//
//     zor_logging::ZOR_TRACE_ALWAYS("job %s opened, %d points", name.c_str(), count);
//     zor_logging::LOGMESSAGE(4, ZOR_W("only with the filter opened: %s"), path.c_str());
//
// There is one log, made on first use in the user's data folder (fs/app_dirs.h) or else the folder
// for temporary files: <program><n>.log.txt, UTF-16 with a mark and CR LF. The last ten runs are
// kept. A line is
//
//     00012.345 ; 7 ; text of the record
//
// the seconds since the log was opened and the mask of its level. Records are gathered and written
// when more than 1024 bytes wait or more than 5000 ms have passed since the record before;
// zor_flush_log forces them to the disk, and so do the checks of zor_check.h. Every record also
// goes to the debugger stream, and goes there alone where no file can be made. After the log was
// closed, at the end of the process, each record is added to the file at once.
//
// Which records pass: those whose mask shares a bit with the filter, which begins as 1. Masks are 7
// (always) and 6 (debugging), so debugging records appear with a filter of 2 or 4, by
// SetLogFilter(7), or by ZOR_LOG_FILTER=7 in the environment when the log is made, for support
// staff.
//
// Errors: none is told; what cannot be written is lost. A failed allocation is std::bad_alloc.
// Threads: any, also for the first use. Records are whole, and in the same order in the file and on
// the stream.
#pragma once

#include <stdarg.h>

#include <boost/thread/recursive_mutex.hpp>
#include <type_traits>
#include <vector>

#include "zorutils/core/zor_api.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/zorsys/zor_check.h"
#include "zorutils/zortext/zor_string.h"

namespace zor_logging {

using zor_text::CZorStringT;

// What a record carries, and the filter lets through.
enum LogMask : DWORD
{
    log_mask_debug = 6,
    log_mask_always = 7,
    log_mask_stream = 4, // the bit that asks for a copy on the debugger stream
};

class ZOR_API CZorLogger
{
public:
    CZorLogger();
    // Writes "Logging finished" and what waits, and closes the file.
    ~CZorLogger();
    CZorLogger(const CZorLogger&) = delete;
    CZorLogger& operator=(const CZorLogger&) = delete;

    // Makes the file, over an older one, and starts the clock. False leaves the log without a file
    // for good.
    bool openFile(const WCHAR* path);

    // A record from a format of the string's Format family, or from a text as it stands.
    void logFormat(DWORD mask, const char* format, va_list arguments);
    void logFormat(DWORD mask, const WCHAR* format, va_list arguments);
    void logText(DWORD mask, const CZorStringT<char>& text);
    void logText(DWORD mask, const CZorStringT<WCHAR>& text);
    void logText(DWORD mask, const WCHAR* text);

    // The way of every record; `length` in 16-bit units, zero units among them.
    void writeEntry(DWORD mask, unsigned int length, const WCHAR* text);

    // Forces to the disk what waits, and flushes the file even if nothing does.
    void flush();

    // The path of the open file, or an empty text.
    CZorStringT<WCHAR> getFileName();

    // Any thread.
    DWORD filter() const;
    void setFilter(DWORD filter);

    // Ends the log as the destructor does; what comes later is added to the file record by record.
    void finish();

private:
    const CZorStringT<WCHAR>& formatEntry(DWORD mask, unsigned int length, const WCHAR* text);
    void appendBytes(unsigned int count, const void* bytes);
    void writePending();
    void showLine();
    bool passes(DWORD mask) const { return (mask & filter()) != 0; }

    base::PlatformFile m_file;
    CZorStringT<WCHAR> m_fileName;
    boost::recursive_mutex m_lock;
    CZorStringT<WCHAR> m_line;                // kept for its memory
    std::vector<CZorStringT<WCHAR>> m_unused; // nothing here fills it
    DWORD m_startTick;                        // milliseconds, as the next two
    DWORD m_prevTick;
    DWORD m_curTick;
    bool m_isOpen;
    DWORD m_filter;
    std::vector<unsigned char> m_pending;
};

// The log of the process, made on the first call.
ZOR_API CZorLogger& getMainLogger();
ZOR_API CZorStringT<WCHAR> getZorMainLogFileName();

// Which records pass from now on: bits of the masks. 1 at first.
ZOR_API void SetLogFilter(DWORD filter);

// A record of level 0 to 3 always, of every other level when debugging.
ZOR_API void LOGMESSAGE(LONG level, const char* format, ...);
ZOR_API void LOGMESSAGE(LONG level, const WCHAR* format, ...);

ZOR_API void ZOR_TRACE_ALWAYS(const char* format, ...);
ZOR_API void ZOR_TRACE_ALWAYS(const WCHAR* format, ...);
ZOR_API void ZOR_TRACE_DEBUG(const char* format, ...);
ZOR_API void ZOR_TRACE_DEBUG(const WCHAR* format, ...);

// A format in a string.
template <class T, class... Arguments>
void ZOR_TRACE_ALWAYS(const CZorStringT<T>& format, Arguments... arguments)
{
    ZOR_TRACE_ALWAYS(format.c_str(), arguments...);
}
template <class T, class... Arguments>
void ZOR_TRACE_DEBUG(const CZorStringT<T>& format, Arguments... arguments)
{
    ZOR_TRACE_DEBUG(format.c_str(), arguments...);
}

// One record: the title, and `size` bytes of the active code page as text, zeroes among them.
ZOR_API void ZOR_TRACE_BIN_ALWAYS(const char* title, const unsigned char* data, unsigned int size);

// Forces the log to the disk.
ZOR_API void zor_flush_log();

} // namespace zor_logging
