#include "zorutils/formats/raw_text.h"

#include <string.h>

#include <algorithm>

#include "zorutils/core/bad_allocation.h"
#include "zorutils/fs/platform_file.h"

namespace zor_formats {

namespace {

constexpr int chunk_size = 128;

bool read_byte(base::PlatformFile file, unsigned char& byte)
{
    return base::ReadPlatformFile(file, &byte, 1) == 1;
}

// Consumes the rest of a run of line end characters.
void skip_line_ends(base::PlatformFile file)
{
    unsigned char byte = 0;
    while (read_byte(file, byte)) {
        if (byte != '\r' && byte != '\n') {
            base::SeekPlatformFile(file, base::PLATFORM_FILE_FROM_CURRENT, -1);
            return;
        }
    }
}

// Up to chunk_size units and a zero: the text up to the end of the line, which is an LF, of the
// file or of the chunk. False if there is nothing.
bool read_chunk(base::PlatformFile file, WCHAR* buffer)
{
    int length = 0;
    while (length < chunk_size) {
        unsigned char byte = 0;
        if (!read_byte(file, byte)) {
            if (length == 0)
                return false;
            break;
        }
        if (byte == '\r' || byte == '\n') {
            skip_line_ends(file);
            buffer[length++] = '\n';
            break;
        }
        buffer[length++] = byte;
    }
    buffer[length] = 0;
    return true;
}

} // namespace

void ReadLine(void* file, CZorStringT<WCHAR>& line)
{
    line.Empty();
    for (int start = 0;; start += chunk_size) {
        WCHAR* const chunk = line.GetBuffer(start + chunk_size) + start;
        const bool more = read_chunk(file, chunk);
        if (!more)
            chunk[0] = 0;
        line.ReleaseBuffer(-1);
        const int length = line.GetLength();
        if (!more || length - start < chunk_size || line[length - 1] == '\n')
            break;
    }
    const int last = line.GetLength() - 1;
    if (last >= 0 && line[last] == '\n')
        line.Truncate(last);
    CZorStringT<WCHAR> trimmed = line;
    trimmed.Trim();
    if (trimmed.IsEmpty())
        line.Empty();
}

bool WriteString(FILE* file, const CZorStringT<WCHAR>& text)
{
    const CZorStringT<char> bytes(text.c_str());
    return fwrite(bytes.c_str(), 1, bytes.length(), file) == bytes.length();
}

bool WriteUTF16String(FILE* file, const CZorStringT<WCHAR>& text)
{
    return fwrite(text.c_str(), sizeof(WCHAR), text.length(), file) == text.length();
}

bool WriteUTF16BOM(FILE* file)
{
    return fputc(0xFF, file) != EOF && fputc(0xFE, file) != EOF;
}

void String2ASCII(const WCHAR* source, int sourceLength, char* target, int targetLength)
{
    const int count = std::min(sourceLength, targetLength);
    for (int i = 0; i < count; ++i)
        target[i] = static_cast<char>(source[i]);
    target[count] = 0;
}

CZorStringT<WCHAR> bin_to_str(const unsigned char* bytes, int count)
{
    CZorStringT<WCHAR> text;
    if (count < 1)
        return text;
    constexpr int units_per_byte = 3;
    constexpr int most_bytes = 0x7FFFFFFF / units_per_byte;
    if (count > most_bytes)
        throw ZorBadAllocation();
    static const char digits[] = "0123456789ABCDEF";
    // One blank less than bytes.
    WCHAR* at = text.GetBufferSetLength(count * units_per_byte - 1);
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            *at++ = ' ';
        *at++ = static_cast<WCHAR>(digits[bytes[i] >> 4]);
        *at++ = static_cast<WCHAR>(digits[bytes[i] & 15]);
    }
    return text;
}

void int_to_int(unsigned char* target, int targetSize, bool targetFlag, const unsigned char* source,
                int sourceSize, bool sourceFlag)
{
    const bool ones = !sourceFlag && !targetFlag && source != nullptr && source[0] >= 128;
    const int copied = source == nullptr ? 0 : std::min(targetSize, sourceSize);
    if (copied > 0)
        memmove(target, source, static_cast<size_t>(copied));
    std::fill(target + copied, target + targetSize, static_cast<unsigned char>(ones ? 0xFF : 0));
}

} // namespace zor_formats
