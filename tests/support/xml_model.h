// tests/support/xml_model.h: the rules of the token reader, written anew over the model of text
// files.
//
// As recursive as the rules are told, so for short documents alone.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "tests/support/text_file_model.h"

namespace zor_test {

class XmlModel
{
public:
    using String = Text<WCHAR>;

    struct Token
    {
        String tag, attributes, value;
        bool operator==(const Token& other) const
        {
            return tag == other.tag && attributes == other.attributes && value == other.value;
        }
    };

    explicit XmlModel(std::string bytes) : m_file(std::move(bytes), 512)
    {
        String line;
        m_file.next_line(line, true);
        if (line.find(lit<WCHAR>("xml version=")) == String::npos)
            m_file.reset();
        m_is_xml = line.find(lit<WCHAR>("xml")) != String::npos;
    }

    bool is_xml() const { return m_is_xml; }
    const TextFileModel& file() const { return m_file; }

    bool read_token(Token& token)
    {
        String text;
        if (m_tokens.empty()) {
            String line;
            do {
                if (!line.empty())
                    text += line + lit<WCHAR>(" ");
                m_file.next_line(line, true);
                line = trimmed(line);
                if (line.empty() && m_file.is_end_of_file())
                    return false;
            } while (line.find('>') == String::npos);
            cut(line);
            if (m_tokens.empty())
                m_tokens.push_back(line);
        }
        text += m_tokens.front();
        m_tokens.pop_front();
        token = taken_apart(text);
        if (token.tag.empty())
            token.tag = m_last_tag;
        else
            m_last_tag = token.tag;
        token = {imported(token.tag), imported(token.attributes), imported(token.value)};
        return token.tag.compare(0, 3, lit<WCHAR>("!--")) == 0 ? read_past_comment(token) : true;
    }

    bool read_past_comment(Token& token)
    {
        do
            if (!read_token(token))
                return false;
        while (token.value != lit<WCHAR>("-->"));
        return read_token(token);
    }

    static String read_attribute(const String& attributes, const String& name)
    {
        const String wanted = name + lit<WCHAR>("=");
        for (size_t hit = 0; (hit = attributes.find(wanted, hit)) != String::npos; ++hit) {
            if (hit > 0 && attributes[hit - 1] != ' ')
                continue;
            const size_t first = attributes.find('"', hit);
            if (first == String::npos)
                return String();
            const size_t second = attributes.find('"', first + 1);
            return second == String::npos
                       ? String()
                       : imported(attributes.substr(first + 1, second - first - 1));
        }
        return String();
    }

    static std::vector<String> split_values(const String& value, WCHAR separator)
    {
        const String text = trimmed(value.substr(0, value.find('<')));
        std::vector<String> items;
        for (size_t position = 0; position <= text.size();) {
            const size_t end = std::min(text.find(separator, position), text.size());
            items.push_back(cleaned(text.substr(position, end - position)));
            position = end + 1;
        }
        return items;
    }

private:
    static String trimmed(const String& text)
    {
        Wide wide(text.c_str(), static_cast<int>(text.size()));
        wide.TrimLeft();
        wide.TrimRight();
        return String(wide.c_str(), wide.length());
    }

    static String cleaned(const String& text)
    {
        String out;
        for (const WCHAR c : trimmed(text))
            if (c != '\r' && c != '\n')
                out += c;
        return out;
    }

    static String imported(String text)
    {
        const std::pair<String, WCHAR> rows[] = {{lit<WCHAR>("&amp;"), '&'},
                                                 {lit<WCHAR>("&lt;"), '<'},
                                                 {lit<WCHAR>("&gt;"), '>'},
                                                 {lit<WCHAR>("&apos;"), '\''},
                                                 {lit<WCHAR>("&quot;"), '"'}};
        for (const auto& row : rows)
            for (size_t hit = 0; (hit = text.find(row.first, hit)) != String::npos; ++hit)
                text.replace(hit, row.first.size(), 1, row.second);
        return text;
    }

    static int find(const String& text, char c, int from = 0)
    {
        const size_t hit = text.find(static_cast<WCHAR>(c), static_cast<size_t>(from));
        return hit == String::npos ? -1 : static_cast<int>(hit);
    }

    // `count` characters from `first`, both brought into range.
    static String mid(const String& text, int first, int count)
    {
        return count <= 0 ? String()
                          : text.substr(static_cast<size_t>(std::max(first, 0)),
                                        static_cast<size_t>(count));
    }

    static Token taken_apart(const String& text)
    {
        if (text.empty() || text[0] != '<')
            return {String(), String(), text};
        const int blank = find(text, ' '), close = find(text, '>');
        Token token;
        if (close > blank && blank >= 0) {
            token.tag = mid(text, 1, blank - 1);
            token.attributes = mid(text, blank, close - blank);
        } else if (close > blank) {
            token.tag = mid(text, 1, close - 1);
            token.attributes = mid(text, 0, close + 1);
        } else {
            token.tag = mid(text, 1, close - 1);
        }
        token.value = text.substr(static_cast<size_t>(close + 1));
        return token;
    }

    void cut(const String& line)
    {
        int position = 0, last_mark = -1;
        while (position < static_cast<int>(line.size())) {
            const int open = find(line, '<', position);
            String token;
            if (open > last_mark + 1) {
                token = mid(line, last_mark + 1, open - last_mark - 1);
                last_mark = open;
            } else {
                const int close = find(line, '>', position);
                last_mark = close;
                if (open >= 0 && close > 0) {
                    token = mid(line, open, close - open + 1);
                    position = close + 1;
                } else {
                    token = line.substr(static_cast<size_t>(position));
                    position = static_cast<int>(line.size());
                }
            }
            token = cleaned(token);
            if (!token.empty())
                m_tokens.push_back(token);
        }
    }

    TextFileModel m_file;
    bool m_is_xml;
    std::deque<String> m_tokens;
    String m_last_tag;
};

} // namespace zor_test
