// tests/support/text_file_model.h: the rules of text files, written anew over bytes in memory.
//
// A slow and plain second opinion that the tests and the fuzzers compare CTextFile with.
#pragma once

#include <algorithm>
#include <string>

#include "tests/support/text.h"

namespace zor_test {

class TextFileModel
{
public:
    using Line = Text<WCHAR>;

    // Opens `bytes` with blocks of `buffer` bytes.
    TextFileModel(std::string bytes, size_t buffer) : m_bytes(std::move(bytes)), m_buffer(buffer)
    {
        m_is_utf8 = m_bytes.compare(0, 3, "\xEF\xBB\xBF") == 0;
        m_is_utf16 = m_bytes.compare(0, 2, "\xFF\xFE") == 0;
        size_t start = m_is_utf16 ? 2 : 0;
        if (!m_is_utf8 && !m_is_utf16 && m_bytes.size() >= 10 && !has_other_mark()) {
            const bool high = m_bytes[1] || m_bytes[3] || m_bytes[5] || m_bytes[7];
            const bool low = m_bytes[0] || m_bytes[2] || m_bytes[4] || m_bytes[6];
            m_is_utf16 = !high && low;
            start = m_is_utf16 ? 10 : 0;
        }
        begin_at(start);
    }

    void reset() { begin_at(m_is_utf16 ? 2 : 0); }

    bool is_utf8() const { return m_is_utf8; }
    bool is_utf16() const { return m_is_utf16; }
    bool is_end_of_file() const { return m_end; }

    // Whether the end is a lone CR: a reader that skips empty lines never comes past it.
    bool is_endless() const
    {
        return !m_symbols.empty() && m_symbols.back() == '\r' && m_next <= m_symbols.size();
    }

    // False at the end. A lone CR at the end gives empty lines for ever; with `skip` this answers
    // false where the file itself does not answer.
    bool next_line(Line& line, bool skip)
    {
        line.clear();
        bool counts = false;
        for (;;) {
            if (m_next == m_symbols.size()) {
                m_end = true;
                return counts && finish(line);
            }
            const WCHAR c = m_symbols[m_next++];
            if (c != '\n' && c != '\r') {
                counts = true;
                if (c != 0)
                    line += c;
                continue;
            }
            if (c == '\r' && m_next == m_symbols.size()) {
                m_end = true;
                --m_next;
                const bool replaced = m_stray >= 0;
                if (replaced)
                    m_symbols[m_next] = static_cast<WCHAR>(m_stray);
                m_stray = -1;
                if (!counts && skip && !replaced)
                    return false;
            } else if (c == '\r' && m_symbols[m_next] == '\n') {
                ++m_next;
            }
            if (counts || !skip)
                return finish(line);
        }
    }

private:
    bool has_other_mark() const
    {
        const std::string marks[] = {"\xFE\xFF", std::string("\0\0\xFE\xFF", 4), "\xFB\xEE\x28",
                                     "\x0E\xFE\xFF", "\xDD\x73\x66\x73"};
        // UTF-7's mark, whose second byte is not zero, changes nothing here.
        return std::any_of(std::begin(marks), std::end(marks), [&](const std::string& mark) {
            return m_bytes.compare(0, mark.size(), mark) == 0;
        });
    }

    // Every symbol from `start` on. Units come by blocks: half a unit at a block's end is lost, and
    // the next block is as long as what was left of this one.
    void begin_at(size_t start)
    {
        m_symbols.clear();
        m_next = 0;
        m_end = false;
        m_stray = -1;
        start = std::min(start, m_bytes.size());
        if (!m_is_utf16) {
            for (const char c : m_bytes.substr(start))
                m_symbols += static_cast<WCHAR>(static_cast<unsigned char>(c));
            return;
        }
        for (size_t size = m_buffer;;) {
            const std::string block = m_bytes.substr(start, size);
            if (block.size() < 2) {
                // The last read laid it over a block of one unit, which may be a CR stepped back
                // to.
                if (block.size() == 1 && size == 2)
                    m_stray = static_cast<unsigned char>(block[0]);
                return;
            }
            start += block.size();
            size = block.size() & ~size_t{1};
            for (size_t i = 0; i < size; i += 2)
                m_symbols += static_cast<WCHAR>(static_cast<unsigned char>(block[i]) |
                                                static_cast<unsigned char>(block[i + 1]) << 8);
        }
    }

    // Bytes become units by the active code page, line by line.
    bool finish(Line& line) const
    {
        if (m_is_utf16)
            return true;
        std::string narrow;
        for (const WCHAR c : line)
            narrow += static_cast<char>(c);
        const Wide wide(narrow.c_str());
        line.assign(wide.c_str(), wide.length());
        return true;
    }

    std::string m_bytes;
    size_t m_buffer;
    bool m_is_utf8 = false, m_is_utf16 = false, m_end = false;
    int m_stray = -1; // the half unit at the end, where it counts
    Text<WCHAR> m_symbols;
    size_t m_next = 0;
};

} // namespace zor_test
