#include "zorutils/zortext/text_file.h"

#include <stdlib.h>

#include <algorithm>

#include "zorutils/zortext/text_growth_internal.h"
#include "zorutils/zortext/text_utils.h"

ZOR_DEFINE_LIBRARY_ALLOCATION(CTextFile)

using base::PlatformFile;

namespace {

template <class T>
void hold_at_least(zor_vector<T>& chunk, unsigned int count)
{
    chunk.reserve(count);
    while (chunk.size() < count)
        chunk.push_back(0);
}

bool begins_with(PlatformFile file, const unsigned char* mark, unsigned int length)
{
    if (file == INVALID_HANDLE_VALUE)
        return false;
    base::SeekPlatformFile(file, base::PLATFORM_FILE_FROM_BEGIN, 0);
    unsigned char bytes[4] = {};
    bool same = base::ReadPlatformFile(file, bytes, length) == length;
    for (unsigned int i = 0; same && i < length; ++i)
        same = bytes[i] == mark[i];
    if (!same)
        base::SeekPlatformFile(file, base::PLATFORM_FILE_FROM_BEGIN, 0);
    return same;
}

// Reads the next block of `size` bytes: the bytes in it, with its place in the file in `position`,
// or 0 for the end of the file, which fewer than `smallest` bytes are.
unsigned int next_block(PlatformFile file, unsigned char* block, unsigned int size,
                        unsigned int smallest, INT64& position)
{
    const INT64 here = base::SeekPlatformFile(file, base::PLATFORM_FILE_FROM_CURRENT, 0);
    const unsigned int count = base::ReadPlatformFile(file, block, size);
    // A failed read gives all ones, and ends the file too.
    if (count < smallest || count > size)
        return 0;
    position = here;
    return count;
}

// Takes the run of ordinary characters that begins at `read` into the chunk, as far as the block
// and the chunk go; the caller's steps for single characters do all else.
template <class Symbol, class T>
void take_run(Symbol*& read, const Symbol* end, zor_vector<T>& chunk, unsigned int& count,
              unsigned int limit)
{
    const Symbol* const stop =
        read + std::min<size_t>(static_cast<size_t>(end - read), limit > count ? limit - count : 0);
    Symbol* from = read;
    T* to = chunk.data() + count;
    for (; from != stop && *from != 0 && *from != '\n' && *from != '\r'; ++from)
        *to++ = static_cast<T>(*from);
    count += static_cast<unsigned int>(from - read);
    read = from;
}

// Appends the first `count` characters of the chunk, as a terminated text.
template <class T>
void flush(zor_vector<T>& chunk, unsigned int count, zor_text::CZorStringT<T>& text)
{
    chunk[count] = 0;
    make_room(text, static_cast<int>(count));
    text += chunk.data();
}

} // namespace

CTextFile::CTextFile(int bufferSize)
    : m_validBytes(static_cast<unsigned int>(bufferSize)), m_fileSize(0),
      m_bufferSize(static_cast<unsigned int>(bufferSize)), m_bufferFilePos(0), m_lineStartPos(0),
      m_buffer(new unsigned char[static_cast<size_t>(bufferSize)]), m_readPos(nullptr),
      m_readPosW(nullptr), m_file(INVALID_HANDLE_VALUE), m_chunkCount(0), m_lineWritten(false),
      m_endOfFile(false), m_isUTF8(false), m_isUTF16(false)
{
}

CTextFile::~CTextFile()
{
    delete[] m_buffer;
    if (m_file != INVALID_HANDLE_VALUE)
        base::ClosePlatformFile(m_file);
}

int CTextFile::Open(const WCHAR* path)
{
    base::PlatformFileError error = base::PLATFORM_FILE_OK;
    m_file = base::CreatePlatformFile(path, base::PLATFORM_FILE_OPEN | base::PLATFORM_FILE_READ,
                                      nullptr, &error);
    if (m_file == INVALID_HANDLE_VALUE || error != base::PLATFORM_FILE_OK)
        return 0;
    CheckUnicode();
    base::PlatformFileInfo info;
    if (base::GetPlatformFileInfo(m_file, &info))
        m_fileSize = info.size;
    m_validBytes = m_bufferSize;
    m_bufferFilePos = 0;
    return 1;
}

void CTextFile::Close()
{
    base::ClosePlatformFile(m_file);
    m_file = INVALID_HANDLE_VALUE;
    m_bufferFilePos = 0;
}

void CTextFile::Reset()
{
    m_validBytes = m_bufferSize;
    m_endOfFile = false;
    m_readPos = nullptr;
    m_readPosW = nullptr;
    // Behind a UTF-16 mark; a file without one loses its first character here, and the mark of a
    // UTF-8 file comes back with the first line. Both are on purpose.
    m_bufferFilePos = m_isUTF16 ? 2 : 0;
    base::SeekPlatformFile(m_file, base::PLATFORM_FILE_FROM_BEGIN, m_bufferFilePos);
}

bool CTextFile::IsEndOfFile() const
{
    return m_endOfFile;
}

bool CTextFile::IsUTF8() const
{
    return m_isUTF8;
}

bool CTextFile::IsUTF16() const
{
    return m_isUTF16;
}

// --- Encoding.

bool CTextFile::IsUTF8File(PlatformFile file)
{
    const unsigned char mark[] = {0xEF, 0xBB, 0xBF};
    return begins_with(file, mark, 3);
}

bool CTextFile::IsUTF16File(PlatformFile file)
{
    const unsigned char mark[] = {0xFF, 0xFE};
    return begins_with(file, mark, 2);
}

void CTextFile::CheckUnicode()
{
    m_isUTF8 = IsUTF8File(m_file);
    // In every case: it seeks to the start, so a UTF-8 file is read from in front of its mark.
    m_isUTF16 = IsUTF16File(m_file);
    if (m_isUTF8 || m_isUTF16)
        return;
    constexpr unsigned int sample = 10;
    unsigned char bytes[sample];
    unsigned int mark = 0;
    if (base::ReadPlatformFile(m_file, bytes, sample) == sample &&
        zor::text_utils::detect_text_encoding(bytes, sample, &mark) ==
            zor::text_utils::TEXT_ENCODING_UTF16) {
        m_isUTF16 = true;
        // The mark is 0 long here, so the file stays behind the sample: the text begins with its
        // sixth character, on purpose.
        base::SeekPlatformFile(m_file, base::PLATFORM_FILE_FROM_CURRENT, -static_cast<INT64>(mark));
    } else {
        base::SeekPlatformFile(m_file, base::PLATFORM_FILE_FROM_BEGIN, 0);
    }
}

// --- Symbols.

int CTextFile::getSymbol()
{
    if (m_readPos == nullptr || m_readPos == m_buffer + m_validBytes) {
        // The size of the read is the last valid count, on purpose, not the capacity.
        const unsigned int count = next_block(m_file, m_buffer, m_validBytes, 1, m_bufferFilePos);
        if (count == 0) {
            m_endOfFile = true;
            return TEXT_FILE_END_SYMBOL;
        }
        m_validBytes = count;
        m_readPos = m_buffer;
    }
    return *m_readPos++;
}

int CTextFile::getSymbolW()
{
    if (m_readPosW == nullptr || m_readPosW == reinterpret_cast<WCHAR*>(m_buffer + m_validBytes)) {
        const unsigned int count = next_block(m_file, m_buffer, m_validBytes, 2, m_bufferFilePos);
        if (count == 0) {
            m_endOfFile = true;
            return TEXT_FILE_END_SYMBOL;
        }
        // Half a unit at the end of the file is dropped.
        m_validBytes = count & ~1u;
        m_readPosW = reinterpret_cast<WCHAR*>(m_buffer);
    }
    return *m_readPosW++;
}

void CTextFile::ungetSymbol()
{
    --m_readPos;
}

void CTextFile::ungetSymbolW()
{
    --m_readPosW;
}

// --- Chunks.

void CTextFile::putSymbol(char c)
{
    if (c == 0 || m_chunkCount >= m_bufferSize) {
        flush(m_lineChunk, m_chunkCount, m_line);
        m_chunkCount = 0;
        m_lineWritten = true;
        if (c == 0)
            return;
    }
    m_lineChunk[m_chunkCount++] = c;
}

void CTextFile::putSymbolW(zor_text::CZorStringT<WCHAR>& line, WCHAR c)
{
    if (c == 0 || m_chunkCount >= m_bufferSize / 2) {
        flush(m_lineChunkW, m_chunkCount, line);
        m_chunkCount = 0;
        m_lineWritten = true;
        if (c == 0)
            return;
    }
    m_lineChunkW[m_chunkCount++] = c;
}

bool CTextFile::WasLineWriting() const
{
    return m_chunkCount != 0 || m_lineWritten;
}

// --- Lines.

DWORD CTextFile::GetNextLine(zor_text::CZorStringT<WCHAR>& line, bool skipEmpty)
{
    if (m_isUTF16)
        return ReadUTF16Line(line, skipEmpty);
    line.Empty();
    hold_at_least(m_lineChunk, m_bufferSize + 1);
    m_chunkCount = 0;
    m_lineWritten = false;
    m_lineStartPos = m_readPos == nullptr ? 0 : m_bufferFilePos + (m_readPos - m_buffer);
    m_line.Empty();
    for (;;) {
        const int symbol = getSymbol();
        if (symbol == TEXT_FILE_END_SYMBOL) {
            if (!WasLineWriting())
                return 0;
            break;
        }
        if (symbol != '\n' && symbol != '\r') {
            putSymbol(static_cast<char>(symbol));
            take_run(m_readPos, m_buffer + m_validBytes, m_lineChunk, m_chunkCount, m_bufferSize);
            continue;
        }
        // At the end of the file this steps back on to the CR, which the next call meets again.
        if (symbol == '\r' && getSymbol() != '\n')
            ungetSymbol();
        if (WasLineWriting())
            break;
        if (!skipEmpty)
            return 1;
    }
    putSymbol(0);
    line += zor_text::CZorStringT<WCHAR>(m_line.c_str());
    return 1;
}

DWORD CTextFile::ReadUTF16Line(zor_text::CZorStringT<WCHAR>& line, bool skipEmpty)
{
    line.Empty();
    hold_at_least(m_lineChunkW, m_bufferSize / 2 + 1);
    m_chunkCount = 0;
    m_lineWritten = false;
    for (;;) {
        const int symbol = getSymbolW();
        if (symbol == TEXT_FILE_END_SYMBOL) {
            if (!WasLineWriting())
                return 0;
            break;
        }
        if (symbol != '\n' && symbol != '\r') {
            putSymbolW(line, static_cast<WCHAR>(symbol));
            take_run(m_readPosW, reinterpret_cast<const WCHAR*>(m_buffer + m_validBytes),
                     m_lineChunkW, m_chunkCount, m_bufferSize / 2);
            continue;
        }
        if (symbol == '\r' && getSymbolW() != '\n')
            ungetSymbolW();
        if (WasLineWriting())
            break;
        if (!skipEmpty)
            return 1;
    }
    putSymbolW(line, 0);
    return 1;
}
