#include "zorutils/platform/posix/registry_file.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "zorutils/platform/posix/utf8.h"

namespace zor::platform {

namespace {

typedef std::u16string Text;
typedef std::u16string_view TextView;

constexpr DWORD type_binary = 3, type_dword = 4, type_string = 1;

Text in_capitals(TextView name)
{
    Text capitals(name);
    for (char16_t& unit : capitals) {
        const UChar32 capital = u_toupper(unit);
        unit = capital <= 0xFFFF ? static_cast<char16_t>(capital) : unit;
    }
    return capitals;
}

// The first name of a path; the rest stays in `path`.
TextView take_name(TextView& path)
{
    const size_t end = std::min(path.find('\\'), path.size());
    const TextView name = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return name;
}

// --- The file.

struct RootName
{
    const char16_t* name;
    size_t root;
};
constexpr RootName root_names[] = {{u"HKEY_CLASSES_ROOT", 0},     {u"HKEY_CURRENT_USER", 1},
                                   {u"HKEY_LOCAL_MACHINE", 2},    {u"HKEY_USERS", 3},
                                   {u"HKEY_PERFORMANCE_DATA", 4}, {u"HKEY_CURRENT_CONFIG", 5}};

std::optional<Text> decoded(std::string_view bytes)
{
    if (bytes.substr(0, 2) == "\xFF\xFE") {
        if (bytes.size() % 2 != 0)
            return std::nullopt;
        Text text;
        for (size_t i = 2; i < bytes.size(); i += 2)
            text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          static_cast<unsigned char>(bytes[i + 1]) << 8);
        return text;
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF")
        bytes.remove_prefix(3);
    if (bytes.size() > 0x7FFFFFFF)
        return std::nullopt;
    const int size = static_cast<int>(bytes.size());
    // UTF-8 never needs more units than bytes.
    Text text(bytes.size(), 0);
    const int length = size == 0 ? 0 : utf8_to_wide(bytes.data(), size, text.data(), size, true);
    if (length < 0)
        return std::nullopt;
    text.resize(static_cast<size_t>(length));
    return text;
}

int digit_of(char16_t unit)
{
    return unit >= '0' && unit <= '9'   ? unit - '0'
           : unit >= 'a' && unit <= 'f' ? unit - 'a' + 10
           : unit >= 'A' && unit <= 'F' ? unit - 'A' + 10
                                        : -1;
}

// Reads on from a position in the text; every reader tells whether it found what it reads.
class Parser
{
public:
    explicit Parser(TextView text) : m_text(text) {}

    bool parse(Registry& registry)
    {
        if (!take(u"Windows Registry Editor Version 5.00") || !end_of_line())
            return false;
        for (skip_empty(); !at_end(); skip_empty()) {
            if (!(take(u"[") ? key_line(registry) : value_line()))
                return false;
        }
        return true;
    }

private:
    bool at_end() const { return m_text.empty(); }
    char16_t front() const { return m_text.empty() ? u'\0' : m_text.front(); }

    bool take(TextView expected)
    {
        if (m_text.substr(0, expected.size()) != expected)
            return false;
        m_text.remove_prefix(expected.size());
        return true;
    }

    void skip_blanks()
    {
        while (front() == ' ' || front() == '\t')
            m_text.remove_prefix(1);
    }

    bool end_of_line()
    {
        skip_blanks();
        return at_end() || take(u"\r\n") || take(u"\n") || take(u"\r");
    }

    // Empty lines and comments.
    void skip_empty()
    {
        for (;;) {
            skip_blanks();
            if (front() == ';')
                m_text.remove_prefix(std::min(m_text.find_first_of(u"\r\n"), m_text.size()));
            if (at_end() || !end_of_line())
                return;
        }
    }

    // Behind the "[": a key that the following values belong to, or one to remove. A key's name
    // may hold brackets: the last one of the line ends it.
    bool key_line(Registry& registry)
    {
        const bool removes = take(u"-");
        const TextView line = m_text.substr(0, m_text.find_first_of(u"\r\n"));
        const size_t end = line.rfind(']');
        if (end == TextView::npos)
            return false;
        TextView path = line.substr(0, end);
        m_text.remove_prefix(end + 1);
        const Text root = in_capitals(take_name(path));
        const auto* const found =
            std::find_if(std::begin(root_names), std::end(root_names),
                         [&](const RootName& row) { return root == row.name; });
        // A name is never empty: two backslashes in a row are no path.
        if (found == std::end(root_names) || !end_of_line() || path.substr(0, 1) == u"\\" ||
            path.find(u"\\\\") != TextView::npos)
            return false;
        RegistryKey& key = registry.roots[found->root];
        m_removed = removes;
        if (removes)
            key.remove(path);
        m_key = removes ? nullptr : &key.make(path);
        return true;
    }

    bool value_line()
    {
        Text name;
        if (m_key == nullptr && !m_removed)
            return false;
        if (!take(u"@") && !quoted(name))
            return false;
        skip_blanks();
        if (!take(u"="))
            return false;
        skip_blanks();
        RegistryValue value;
        const bool removes = take(u"-");
        if (!removes && !data(value))
            return false;
        if (!end_of_line())
            return false;
        if (m_key == nullptr)
            return true;
        if (removes) {
            m_key->remove_value(name);
            return true;
        }
        RegistryValue& kept = m_key->make_value(name);
        kept.type = value.type;
        kept.data = std::move(value.data);
        return true;
    }

    bool data(RegistryValue& value)
    {
        if (front() == '"') {
            Text text;
            if (!quoted(text))
                return false;
            value.type = type_string;
            text += u'\0';
            for (const char16_t unit : text) {
                value.data.push_back(static_cast<BYTE>(unit & 0xFF));
                value.data.push_back(static_cast<BYTE>(unit >> 8));
            }
            return true;
        }
        DWORD number = 0;
        if (take(u"dword:")) {
            value.type = type_dword;
            if (!hexadecimal(8, number))
                return false;
            for (int shift = 0; shift < 32; shift += 8)
                value.data.push_back(static_cast<BYTE>(number >> shift));
            return true;
        }
        value.type = type_binary;
        if (take(u"hex("))
            return hexadecimal(8, value.type) && take(u"):") && bytes(value.data);
        return take(u"hex:") && bytes(value.data);
    }

    // A text in quotes, over line ends too.
    bool quoted(Text& text)
    {
        if (!take(u"\""))
            return false;
        while (!at_end()) {
            const char16_t unit = front();
            m_text.remove_prefix(1);
            if (unit == '"')
                return true;
            if (unit != '\\') {
                text += unit;
                continue;
            }
            const char16_t escaped = front();
            if (escaped != '\\' && escaped != '"')
                return false;
            text += escaped;
            m_text.remove_prefix(1);
        }
        return false;
    }

    bool hexadecimal(size_t most_digits, DWORD& number)
    {
        size_t digits = 0;
        for (number = 0; digits < most_digits && digit_of(front()) >= 0; ++digits) {
            number = number << 4 | static_cast<DWORD>(digit_of(front()));
            m_text.remove_prefix(1);
        }
        return digits > 0;
    }

    // Bytes between commas; a backslash goes on in the next line.
    bool bytes(std::vector<BYTE>& data)
    {
        skip_blanks();
        if (at_end() || front() == '\r' || front() == '\n')
            return true;
        for (;;) {
            DWORD byte = 0;
            if (!hexadecimal(2, byte))
                return false;
            data.push_back(static_cast<BYTE>(byte));
            skip_blanks();
            if (!take(u","))
                return true;
            skip_blanks();
            if (take(u"\\") && (!end_of_line() || at_end()))
                return false;
            skip_blanks();
        }
    }

    TextView m_text;
    RegistryKey* m_key = nullptr;
    bool m_removed = false; // the values that follow belong to a removed key
};

} // namespace

const RegistryKey* RegistryKey::find(TextView path) const
{
    const RegistryKey* key = this;
    while (!path.empty() && key != nullptr) {
        const auto found = key->keys.find(in_capitals(take_name(path)));
        key = found == key->keys.end() ? nullptr : found->second.key.get();
    }
    return key;
}

const RegistryValue* RegistryKey::find_value(TextView name) const
{
    const Text wanted = in_capitals(name);
    const auto found = std::find_if(values.begin(), values.end(), [&](const RegistryValue& value) {
        return in_capitals(value.name) == wanted;
    });
    return found == values.end() ? nullptr : &*found;
}

RegistryKey& RegistryKey::make(TextView path)
{
    RegistryKey* key = this;
    while (!path.empty()) {
        const TextView name = take_name(path);
        Named& next = key->keys[in_capitals(name)];
        if (next.key == nullptr)
            next = {Text(name), std::make_unique<RegistryKey>()};
        key = next.key.get();
    }
    return *key;
}

RegistryValue& RegistryKey::make_value(TextView name)
{
    if (const RegistryValue* const found = find_value(name))
        return const_cast<RegistryValue&>(*found);
    values.push_back({Text(name), 0, {}});
    return values.back();
}

void RegistryKey::remove(TextView path)
{
    RegistryKey* key = this;
    while (key != nullptr && !path.empty()) {
        const auto found = key->keys.find(in_capitals(take_name(path)));
        if (found == key->keys.end())
            return;
        if (path.empty())
            key->keys.erase(found);
        else
            key = found->second.key.get();
    }
}

void RegistryKey::remove_value(TextView name)
{
    if (const RegistryValue* const found = find_value(name))
        values.erase(values.begin() + (found - values.data()));
}

std::unique_ptr<Registry> parse_registry(std::string_view bytes)
{
    const std::optional<Text> text = decoded(bytes);
    auto registry = std::make_unique<Registry>();
    return text && Parser(*text).parse(*registry) ? std::move(registry) : nullptr;
}

} // namespace zor::platform
