// zorutils/zortext/text_file.h: a text file, read line by line.
//
//     CTextFile file;
//     zor_text::CZorStringT<WCHAR> line;
//     if (file.Open(path))
//         while (file.GetNextLine(line, true))
//             use(line);
//
// A file is UTF-16 little-endian, or bytes of the active code page; there is no UTF-8 decoding, and
// IsUTF8 is a report alone. LF, CR LF and a lone CR each end one line. Lines may have any length.
//
// Errors: Open reports by its result; a read error is the end of the file. A failed allocation is
// std::bad_alloc. Threads: one object belongs to one thread at a time.
#pragma once

#include "zorutils/core/zor_api.h"
#include "zorutils/core/zor_vector.h"
#include "zorutils/fs/platform_file.h"
#include "zorutils/zorsys/library_allocation.h"
#include "zorutils/zortext/zor_string.h"

// What getSymbol and getSymbolW give at the end of the file: neither a byte nor a unit.
constexpr int TEXT_FILE_END_SYMBOL = static_cast<int>(0xFFFF0000u);

class ZOR_API CTextFile
{
public:
    // `bufferSize` is the size of a block read from the file, in bytes.
    explicit CTextFile(int bufferSize = 512);
    virtual ~CTextFile();
    CTextFile(const CTextFile&) = delete;
    CTextFile& operator=(const CTextFile&) = delete;

    ZOR_LIBRARY_ALLOCATION

    // 1 if the file was opened. A file that was open before is not closed, and a second Open needs
    // a Reset to drop the old block. A UTF-16 file without a mark begins with its sixth character:
    // hosts rely on it.
    int Open(const WCHAR* path);

    // There is no test for an unopened file; the flags stay.
    void Close();

    // Back to the first character.
    void Reset();

    // The next line without its line end: 1, or 0 at the end of the file. With `skipEmpty` empty
    // lines are passed over. A file that ends in a lone CR never comes to its end here: look at
    // IsEndOfFile behind each line, and do not skip empty lines in it.
    DWORD GetNextLine(zor_text::CZorStringT<WCHAR>& line, bool skipEmpty);

    bool IsEndOfFile() const;
    bool IsUTF8() const;
    bool IsUTF16() const;

    // Whether the file begins with the mark; it is left behind it, or at its start if not. False
    // for the invalid handle.
    static bool IsUTF8File(base::PlatformFile file);
    static bool IsUTF16File(base::PlatformFile file);

protected:
    void CheckUnicode();
    DWORD ReadUTF16Line(zor_text::CZorStringT<WCHAR>& line, bool skipEmpty);
    int getSymbol();
    int getSymbolW();
    void ungetSymbol();
    void ungetSymbolW();
    // Collect characters and flush them into m_line, or into `line`. A zero only flushes.
    void putSymbol(char c);
    void putSymbolW(zor_text::CZorStringT<WCHAR>& line, WCHAR c);
    bool WasLineWriting() const;

    zor_vector<char> m_lineChunk;
    zor_vector<WCHAR> m_lineChunkW;
    unsigned int m_validBytes; // in the block, and the size of the next read
    INT64 m_fileSize;
    unsigned int m_bufferSize;
    INT64 m_bufferFilePos; // of the block's first byte
    INT64 m_lineStartPos;  // of the last line of a byte file
    unsigned char* m_buffer;
    unsigned char* m_readPos; // null: the block must be filled
    WCHAR* m_readPosW;
    base::PlatformFile m_file;
    zor_text::CZorStringT<char> m_line;
    unsigned int m_chunkCount;
    bool m_lineWritten; // a chunk of the line was flushed
    bool m_endOfFile;
    bool m_isUTF8;
    bool m_isUTF16;
};
