// Lines of settings files, in both encodings.
#include <type_traits>

#include "zorutils/fs/cfile.h"
#include "zorutils/fs/zor_ini_file_internal.h"
#include "zorutils/platform/winapi.h"

namespace zor_settings {

using mandatory_error::ZorErrorCode;

// --- Reading.

template <class T>
bool TZorIniFileReaderImpl<T>::isEof()
{
    return m_pos == nullptr || m_left == 0 || *m_pos == 0;
}

template <class T>
void TZorIniFileReaderImpl<T>::skipLineEnds()
{
    for (; m_left != 0 && (*m_pos == '\r' || *m_pos == '\n'); --m_left)
        ++m_pos;
}

template <class T>
String TZorIniFileReaderImpl<T>::readLine()
{
    skipLineEnds();
    if (isEof())
        return String();
    const T* const start = m_pos;
    for (; m_left != 0 && *m_pos != '\r' && *m_pos != '\n'; --m_left)
        ++m_pos;
    const zor_text::CZorStringT<T> line(start, static_cast<int>(m_pos - start));
    skipLineEnds();
    // Bytes become text by the active code page, up to the first zero among them.
    if constexpr (std::is_same_v<T, char>)
        m_line = String(line.c_str());
    else
        m_line = line;
    return m_line;
}

template class TZorIniFileReaderImpl<char>;
template class TZorIniFileReaderImpl<WCHAR>;

bool CIniFileReader::open(const WCHAR* path)
{
    if (!m_file.Open(path))
        return false;
    unsigned int mark = 0;
    const unsigned char* const bytes = m_file.data();
    m_encoding = zor::text_utils::detect_text_encoding(const_cast<unsigned char*>(bytes),
                                                       m_file.size(), &mark);
    const unsigned int left = m_file.size() - mark;
    if (m_encoding == zor::text_utils::TEXT_ENCODING_UTF16)
        m_lines = std::make_unique<TZorIniFileReaderImpl<WCHAR>>(
            reinterpret_cast<const WCHAR*>(bytes + mark), left / 2);
    else
        m_lines = std::make_unique<TZorIniFileReaderImpl<char>>(
            reinterpret_cast<const char*>(bytes + mark), left);
    return true;
}

// --- Writing.

namespace {

void assign(zor_text::CZorStringT<char>& scratch, const String& text)
{
    scratch = text.c_str(); // by the active code page
}

void assign(String& scratch, const String& text)
{
    scratch = text;
}

} // namespace

template <class T>
TZorIniFileWriterImpl<T>::TZorIniFileWriterImpl() : m_file(INVALID_HANDLE_VALUE), m_eol("\r\n")
{
}

template <class T>
TZorIniFileWriterImpl<T>::~TZorIniFileWriterImpl()
{
    if (m_file != INVALID_HANDLE_VALUE)
        base::ClosePlatformFile(m_file);
}

template <class T>
ZorErrorCode<bool> TZorIniFileWriterImpl<T>::open(const WCHAR* path)
{
    m_file = base::CreatePlatformFile(path,
                                      base::PLATFORM_FILE_CREATE_ALWAYS | base::PLATFORM_FILE_READ |
                                          base::PLATFORM_FILE_WRITE,
                                      nullptr, nullptr);
    return m_file != INVALID_HANDLE_VALUE;
}

template <class T>
bool TZorIniFileWriterImpl<T>::writeScratch()
{
    const auto bytes =
        static_cast<unsigned int>(m_scratch.GetLength()) * static_cast<unsigned int>(sizeof(T));
    // Only a write of nothing counts as failed, on purpose: a refused one is all ones, and callers
    // that must know use the saving by way of a new file.
    return base::WritePlatformFile(m_file, m_scratch.c_str(), bytes) != 0;
}

template <class T>
ZorErrorCode<bool> TZorIniFileWriterImpl<T>::write(const String& text)
{
    assign(m_scratch, text);
    return writeScratch();
}

template <class T>
ZorErrorCode<bool> TZorIniFileWriterImpl<T>::writeLine(const String& text)
{
    assign(m_scratch, text);
    m_scratch += m_eol;
    return writeScratch();
}

template class TZorIniFileWriterImpl<char>;
template class TZorIniFileWriterImpl<WCHAR>;

CIniFileWriter::CIniFileWriter(zor::text_utils::EZorTextEncoding encoding)
{
    if (encoding == zor::text_utils::TEXT_ENCODING_UTF16)
        m_lines = std::make_unique<TZorIniFileWriterImpl<WCHAR>>();
    else
        m_lines = std::make_unique<TZorIniFileWriterImpl<char>>();
}

bool CIniFileWriter::writeSection(const SettingsSection& section)
{
    if (!m_lines->write(ZOR_W("[")) || !m_lines->write(section.m_name) ||
        !m_lines->writeLine(ZOR_W("]")))
        return false;
    for (const auto& [key, value] : section.m_entries) {
        if (!m_lines->write(key) || !m_lines->write(ZOR_W("=")) || !m_lines->writeLine(value))
            return false;
    }
    return m_lines->writeLine(String());
}

bool CIniFileWriter::write(const WCHAR* path, const CThreeTupleStore& store)
{
    if (!m_lines->open(path))
        return false;
    for (const auto& section : store.sections()) {
        if (!writeSection(section.second))
            return false;
    }
    return true;
}

// --- Saving by way of a new file.

namespace {

// The bytes that a whole file of the store has.
INT64 size_of(const CThreeTupleStore& store, zor::text_utils::EZorTextEncoding encoding)
{
    const bool wide = encoding == zor::text_utils::TEXT_ENCODING_UTF16;
    const auto bytes = [wide](const String& text) {
        return wide ? text.GetLength() * INT64{2}
                    : INT64{zor_text::CZorStringT<char>(text.c_str()).GetLength()};
    };
    const INT64 unit = wide ? 2 : 1;
    INT64 size = 0;
    for (const auto& section : store.sections()) {
        size += bytes(section.second.m_name) + 6 * unit; // "[", "]", its line end and an empty line
        for (const auto& [key, value] : section.second.m_entries)
            size += bytes(key) + bytes(value) + 3 * unit; // "=" and the line end
    }
    return size;
}

// Whether the file is as long as it must be, and on the disk.
bool reaches_disk(const WCHAR* path, INT64 size)
{
    const base::PlatformFile file = base::CreatePlatformFile(
        path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ | base::PLATFORM_FILE_WRITE,
        nullptr, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    base::PlatformFileInfo info;
    const bool whole = base::GetPlatformFileInfo(file, &info) && info.size == size &&
                       base::FlushPlatformFile(file);
    return base::ClosePlatformFile(file) && whole;
}

} // namespace

ZorErrorCode<bool> saveSettingsAsIni(const WCHAR* path, const CThreeTupleStore& store,
                                     zor::text_utils::EZorTextEncoding encoding)
{
    String aside = path;
    aside += ZOR_W(".new");
    const bool saved = writeSettingsAsIni(aside.c_str(), store, encoding) &&
                       reaches_disk(aside.c_str(), size_of(store, encoding)) &&
                       MoveFileExW(aside.c_str(), path, MOVEFILE_REPLACE_EXISTING);
    if (!saved)
        DeleteFileW(aside.c_str());
    return saved;
}

} // namespace zor_settings
