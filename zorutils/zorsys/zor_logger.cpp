// The log as an object: records, the file, the debugger stream.
#include "zorutils/zorsys/zor_logger.h"

#include <algorithm>
#include <atomic>

#include "zorutils/platform/clock.h"
#include "zorutils/platform/fault_state.h"
#include "zorutils/platform/interlocked.h"
#include "zorutils/platform/winapi.h"
#include "zorutils/zorsys/zor_logger_internal.h"

namespace zor_logging {

namespace {

typedef CZorStringT<WCHAR> String;
typedef boost::unique_lock<boost::recursive_mutex> Lock;

// Of a thread that handles a fault: whether it has waited for the lock in vain.
LONG lock_given_up = 0;

Lock locked(boost::recursive_mutex& mutex)
{
    using namespace zor::platform;
    if (!handles_fault())
        return Lock(mutex);
    Lock lock(mutex, boost::try_to_lock);
    for (int tries = 0; !lock.owns_lock() && wait_in_fault(tries, lock_given_up); ++tries)
        lock.try_lock();
    return lock;
}

constexpr size_t most_pending_bytes = 1024;
constexpr DWORD most_silent_ms = 5000;
constexpr int most_stream_units = 250;
constexpr unsigned char byte_order_mark[] = {0xFF, 0xFE};

// Where records go that come after the end, without memory of the heap, which nobody would free.
struct LateFile
{
    std::atomic<bool> known{false};
    WCHAR path[1024];
};

LateFile late_file;

void append_late(const void* bytes, unsigned int count)
{
    if (!late_file.known.load(std::memory_order_acquire))
        return;
    const HANDLE file =
        CreateFileW(late_file.path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    SetFilePointer(file, 0, nullptr, FILE_END);
    DWORD written = 0;
    ::WriteFile(file, bytes, count, &written, nullptr);
    CloseHandle(file);
}

} // namespace

void show_on_debugger_stream(const String& line)
{
    for (int start = 0; start < line.GetLength(); start += most_stream_units) {
        String piece = line.Mid(start, most_stream_units);
        for (int i = 0; i < piece.GetLength(); ++i) {
            if (piece[i] == 0)
                piece.SetAt(i, '.');
        }
        OutputDebugStringW(piece.c_str());
    }
}

CZorLogger::CZorLogger()
    : m_file(INVALID_HANDLE_VALUE), m_startTick(0), m_prevTick(0), m_curTick(0), m_isOpen(false),
      m_filter(1)
{
}

CZorLogger::~CZorLogger()
{
    finish();
}

bool CZorLogger::openFile(const WCHAR* path)
{
    bool created = false;
    base::PlatformFileError error = base::PLATFORM_FILE_OK;
    m_file = base::CreatePlatformFile(
        path, base::PLATFORM_FILE_CREATE_ALWAYS | base::PLATFORM_FILE_WRITE, &created, &error);
    m_isOpen = m_file != INVALID_HANDLE_VALUE && created && error == base::PLATFORM_FILE_OK;
    if (m_isOpen) {
        m_startTick = m_prevTick = m_curTick = zor::platform::tick_count();
        m_fileName = path;
        appendBytes(sizeof byte_order_mark, byte_order_mark);
    }
    return m_isOpen;
}

void CZorLogger::finish()
{
    // While a process ends on Windows a thread may be gone with the lock: its record is lost then,
    // and not the end of the process.
    Lock lock(m_lock, boost::try_to_lock);
    if ((filter() & log_mask_always) != 0 && lock.owns_lock())
        writeEntry(log_mask_always, 16, ZOR_W("Logging finished"));
    writePending();
    if (m_isOpen && m_fileName.GetLength() < static_cast<int>(std::size(late_file.path))) {
        std::copy_n(m_fileName.c_str(), m_fileName.GetLength() + 1, late_file.path);
        late_file.known.store(true, std::memory_order_release);
    }
    if (m_file != INVALID_HANDLE_VALUE)
        base::ClosePlatformFile(m_file);
    m_file = INVALID_HANDLE_VALUE;
    m_isOpen = false;
    m_fileName = String();
    m_line = String();
    std::vector<unsigned char>().swap(m_pending);
}

// --- Records.

void CZorLogger::logFormat(DWORD mask, const char* format, va_list arguments)
{
    if (!passes(mask))
        return;
    CZorStringT<char> text;
    text.FormatV(format, arguments);
    logText(mask, text);
}

void CZorLogger::logFormat(DWORD mask, const WCHAR* format, va_list arguments)
{
    if (!passes(mask))
        return;
    String text;
    text.FormatV(format, arguments);
    logText(mask, text);
}

void CZorLogger::logText(DWORD mask, const CZorStringT<char>& text)
{
    if (passes(mask))
        logText(mask, String(text.c_str()));
}

void CZorLogger::logText(DWORD mask, const String& text)
{
    writeEntry(mask, static_cast<unsigned int>(text.GetLength()), text.c_str());
}

void CZorLogger::logText(DWORD mask, const WCHAR* text)
{
    const size_t length = text == nullptr ? 0 : std::char_traits<WCHAR>::length(text);
    writeEntry(mask, static_cast<unsigned int>(length), text);
}

void CZorLogger::writeEntry(DWORD mask, unsigned int length, const WCHAR* text)
{
    if (!passes(mask))
        return;
    const Lock lock = locked(m_lock);
    m_prevTick = m_curTick;
    m_curTick = zor::platform::tick_count();
    const String& line = formatEntry(mask, length, text);
    appendBytes(static_cast<unsigned int>(line.GetLength()) * 2, line.c_str());
    if ((mask & log_mask_stream) != 0)
        showLine();
}

const String& CZorLogger::formatEntry(DWORD mask, unsigned int length, const WCHAR* text)
{
    const DWORD elapsed = m_curTick - m_startTick;
    m_line.Format(ZOR_W("%05u.%03u ;%2d ; "), static_cast<unsigned int>(elapsed / 1000),
                  static_cast<unsigned int>(elapsed % 1000), static_cast<int>(mask));
    // As units, zeroes among them.
    const int head = m_line.GetLength(), whole = head + static_cast<int>(length) + 2;
    WCHAR* const end = std::copy_n(text, length, m_line.GetBuffer(whole) + head);
    end[0] = '\r';
    end[1] = '\n';
    m_line.ReleaseBuffer(whole);
    return m_line;
}

void CZorLogger::appendBytes(unsigned int count, const void* bytes)
{
    if (!m_isOpen) {
        append_late(bytes, count);
        return;
    }
    const auto* const first = static_cast<const unsigned char*>(bytes);
    m_pending.insert(m_pending.end(), first, first + count);
    if (m_pending.size() > most_pending_bytes || m_curTick - m_prevTick > most_silent_ms)
        writePending();
}

void CZorLogger::writePending()
{
    if (m_pending.empty())
        return;
    // A refused write is lost, and so memory stays bounded while the disk is full.
    base::WritePlatformFile(m_file, m_pending.data(), static_cast<unsigned int>(m_pending.size()));
    m_pending.clear();
}

void CZorLogger::showLine()
{
    show_on_debugger_stream(m_line);
}

void CZorLogger::flush()
{
    const Lock lock = locked(m_lock);
    if (!m_isOpen)
        return;
    writePending();
    base::FlushPlatformFile(m_file);
}

CZorStringT<WCHAR> CZorLogger::getFileName()
{
    const Lock lock = locked(m_lock);
    return m_isOpen ? m_fileName : String();
}

DWORD CZorLogger::filter() const
{
    return static_cast<DWORD>(
        zor::platform::interlocked_load(reinterpret_cast<const LONG*>(&m_filter)));
}

void CZorLogger::setFilter(DWORD filter)
{
    zor::platform::interlocked_store(reinterpret_cast<LONG*>(&m_filter), static_cast<LONG>(filter));
}

} // namespace zor_logging
